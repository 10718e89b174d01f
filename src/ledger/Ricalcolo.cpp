#include "ledger/Ricalcolo.h"

#include "ledger/Replay.h"
#include "platform/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace ledger {

namespace {

// A step whose stored result the statement replay may not reach.
struct Incerto {};

// What a statement can carry between quotes and compare as the engine does.
bool testoSicuro(const QString& text)
{
    return std::none_of(text.begin(), text.end(), [](QChar c) {
        return c == QLatin1Char('\'') || c.unicode() == 0 || c == QChar::ReplacementCharacter;
    });
}

bool eseguitoSicuro(const Eseguito& t)
{
    return t.data.isValid() && t.data.year() >= 1000 && t.data.year() <= 9999 && testoSicuro(t.system)
        && testoSicuro(t.cod) && testoSicuro(t.titolo) && testoSicuro(t.errore) && std::isfinite(t.qta)
        && std::isfinite(t.prezzo) && std::isfinite(t.importo);
}

double scritto(double value)
{
    if (const std::optional<double> v = ValoreScritto(value))
        return *v;
    throw Incerto{};
}

double dividi(double dividend, double divisor)
{
    if (divisor == 0.0)
        throw Incerto{};
    return dividend / divisor;
}

class Replay {
public:
    explicit Replay(const Libro& libro) : libro_(libro) {}

    Ricalcolo Run()
    {
        for (const Eseguito& t : libro_.eseguiti) {
            const double c = commissione(t);
            const QString chiave = NocaseKey(t.cod);
            if (t.tipo.toUpper() == QLatin1String("BUY"))
                compra(t, chiave, c);
            else if (!vendi(t, chiave, c))
                break;
            if (const QString errore = NocaseKey(t.errore); libro_.errori.contains(errore))
                ++out_.contatori[errore];
        }
        for (std::size_t i = 0; i < righe_.size(); ++i)
            if (vive_[i])
                out_.portafoglio.push_back(righe_[i]);
        return std::move(out_);
    }

private:
    double commissione(const Eseguito& t) const
    {
        const auto s = libro_.sistemi.constFind(NocaseKey(t.system));
        if (s == libro_.sistemi.constEnd())
            return 0.0;
        const double c = t.qta * t.prezzo * s->commissioni / 1000;
        return c < s->minimo ? s->minimo : c;
    }

    void compra(const Eseguito& t, const QString& chiave, double c)
    {
        const auto aperta = aperte_.constFind(chiave);
        if (aperta == aperte_.constEnd()) {
            // A new row takes the rowid after the highest one left, as the engine gives it.
            const long long rowid = righe_.empty() ? 1 : righe_.back().rowid + 1;
            aperte_.insert(chiave, righe_.size());
            righe_.push_back({rowid, t.system, t.cod, t.titolo, scritto(t.qta), scritto(num::Round(t.prezzo, 4)),
                              scritto(t.importo), scritto(c)});
            vive_.push_back(true);
            return;
        }
        Posizione& p = righe_[*aperta];
        const double q = p.qta + t.qta;
        const double carico = dividi(t.qta * t.prezzo + p.qta * p.pzoCarico, q);
        // The commission stays that of the opening buy.
        p.importo = scritto(carico * q);
        p.pzoCarico = scritto(num::Round(carico, 4));
        p.qta = scritto(q);
    }

    // False when the sale stops the replay.
    bool vendi(const Eseguito& t, const QString& chiave, double c)
    {
        const auto aperta = aperte_.constFind(chiave);
        if (aperta == aperte_.constEnd()) {
            out_.messaggio = MessaggioNonPosseduto(t.cod, t.data);
            return false;
        }
        const std::size_t riga = *aperta;
        Posizione& p = righe_[riga];
        const double gp = t.qta * t.prezzo - t.qta * p.pzoCarico;
        const double percentuale = dividi(t.prezzo - p.pzoCarico, p.pzoCarico) * 100;
        const double quota = dividi(p.commissioni * t.qta, p.qta);
        out_.chiuse.push_back({t.data, num::Weekday(t.data), t.system, t.cod, t.titolo, scritto(p.pzoCarico),
                               scritto(t.qta), scritto(num::Round(t.prezzo, 4)), scritto(num::Round(gp, 4)),
                               scritto(num::Round(percentuale, 2)), scritto(c + quota)});
        if (t.qta == p.qta) {
            chiudi(chiave, riga);
        } else if (t.qta < p.qta) {
            const double resto = p.qta - t.qta;
            p.importo = scritto(num::Round(p.pzoCarico * resto, 1));
            p.commissioni = scritto(p.commissioni - quota);
            p.qta = scritto(resto);
        } else {
            out_.messaggio = MessaggioSoloDisponibili(t.cod, p.qta);
            return false;
        }
        return true;
    }

    void chiudi(const QString& chiave, std::size_t riga)
    {
        aperte_.remove(chiave);
        vive_[riga] = false;
        while (!vive_.empty() && !vive_.back()) {
            vive_.pop_back();
            righe_.pop_back();
        }
    }

    const Libro& libro_;
    Ricalcolo out_;
    std::vector<Posizione> righe_; // every row inserted and not yet deleted from the end
    std::vector<bool> vive_;
    QHash<QString, std::size_t> aperte_;
};

} // namespace

QString NocaseKey(const QString& text)
{
    QString key = text;
    for (QChar& c : key)
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            c = QChar(c.unicode() + ('a' - 'A'));
    return key;
}

std::optional<double> ValoreScritto(double value)
{
    if (!std::isfinite(value))
        return std::nullopt;
    const double mag = std::fabs(value);
    if (value == 0.0)
        return 0.0;
    if (mag < 1e15 && value == std::trunc(value))
        return value; // written as a whole number
    // The common case the way num::SqlText writes it, without a QString.
    char buf[64];
    char* end = buf;
    if (mag >= 1e-10 && mag < 1e15) {
        end = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::general, 15).ptr;
        if (std::find(buf, end, 'e') != end)
            end = buf;
    }
    if (end == buf) {
        const QByteArray text = num::SqlText(value).toLatin1();
        end = std::copy(text.begin(), text.end(), buf);
    }
    double stored = 0.0;
    if (std::from_chars(buf, end, stored).ec != std::errc())
        return std::nullopt;
    return stored;
}

std::optional<Ricalcolo> Ricalcola(const Libro& libro)
{
    if (!std::all_of(libro.eseguiti.begin(), libro.eseguiti.end(), eseguitoSicuro))
        return std::nullopt;
    for (const Sistema& s : libro.sistemi)
        if (!std::isfinite(s.commissioni) || !std::isfinite(s.minimo))
            return std::nullopt;
    try {
        return Replay(libro).Run();
    } catch (const Incerto&) {
        return std::nullopt;
    }
}

} // namespace ledger
