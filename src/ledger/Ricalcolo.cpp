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
            const int chiave = chiaveDi(t.cod);
            if (acquisto(t.tipo))
                compra(t, chiave, c);
            else if (!vendi(t, chiave, c))
                break;
            conta(t.errore);
        }
        for (std::size_t i = 0; i < righe_.size(); ++i)
            if (vive_[i])
                out_.portafoglio.push_back(righe_[i]);
        for (std::size_t i = 0; i < errori_.size(); ++i)
            if (conteggi_[i] > 0)
                out_.contatori.insert(errori_[i], conteggi_[i]);
        return std::move(out_);
    }

private:
    // The look-ups of a text are made once per distinct text, not once per trade.
    bool acquisto(const QString& tipo)
    {
        auto it = acquisti_.constFind(tipo);
        if (it == acquisti_.constEnd())
            it = acquisti_.insert(tipo, tipo.toUpper() == QLatin1String("BUY"));
        return *it;
    }

    int chiaveDi(const QString& cod)
    {
        auto it = chiavi_.constFind(cod);
        if (it == chiavi_.constEnd()) {
            const QString key = NocaseKey(cod);
            auto k = perChiave_.constFind(key);
            if (k == perChiave_.constEnd()) {
                k = perChiave_.insert(key, static_cast<int>(aperte_.size()));
                aperte_.push_back(-1);
            }
            it = chiavi_.insert(cod, *k);
        }
        return *it;
    }

    double commissione(const Eseguito& t)
    {
        auto s = sistemi_.constFind(t.system);
        if (s == sistemi_.constEnd()) {
            const auto trovato = libro_.sistemi.constFind(NocaseKey(t.system));
            s = sistemi_.insert(t.system, trovato == libro_.sistemi.constEnd() ? nullptr : &*trovato);
        }
        if (!*s)
            return 0.0;
        const double c = t.qta * t.prezzo * (*s)->commissioni / 1000;
        return c < (*s)->minimo ? (*s)->minimo : c;
    }

    void conta(const QString& errore)
    {
        auto it = erroreDi_.constFind(errore);
        if (it == erroreDi_.constEnd()) {
            const QString key = NocaseKey(errore);
            int slot = -1;
            if (libro_.errori.contains(key)) {
                slot = static_cast<int>(std::find(errori_.begin(), errori_.end(), key) - errori_.begin());
                if (slot == static_cast<int>(errori_.size())) {
                    errori_.push_back(key);
                    conteggi_.push_back(0);
                }
            }
            it = erroreDi_.insert(errore, slot);
        }
        if (*it >= 0)
            ++conteggi_[static_cast<std::size_t>(*it)];
    }

    void compra(const Eseguito& t, int chiave, double c)
    {
        int& aperta = aperte_[static_cast<std::size_t>(chiave)];
        if (aperta < 0) {
            // A new row takes the rowid after the highest one left, as the engine gives it.
            const long long rowid = righe_.empty() ? 1 : righe_.back().rowid + 1;
            aperta = static_cast<int>(righe_.size());
            righe_.push_back({rowid, t.system, t.cod, t.titolo, scritto(t.qta), scritto(num::Round(t.prezzo, 4)),
                              scritto(t.importo), scritto(c)});
            vive_.push_back(true);
            return;
        }
        Posizione& p = righe_[static_cast<std::size_t>(aperta)];
        const double q = p.qta + t.qta;
        const double carico = dividi(t.qta * t.prezzo + p.qta * p.pzoCarico, q);
        // The commission stays that of the opening buy.
        p.importo = scritto(carico * q);
        p.pzoCarico = scritto(num::Round(carico, 4));
        p.qta = scritto(q);
    }

    // False when the sale stops the replay.
    bool vendi(const Eseguito& t, int chiave, double c)
    {
        int& aperta = aperte_[static_cast<std::size_t>(chiave)];
        if (aperta < 0) {
            out_.messaggio = MessaggioNonPosseduto(t.cod, t.data);
            return false;
        }
        Posizione& p = righe_[static_cast<std::size_t>(aperta)];
        const double gp = t.qta * t.prezzo - t.qta * p.pzoCarico;
        const double percentuale = dividi(t.prezzo - p.pzoCarico, p.pzoCarico) * 100;
        const double quota = dividi(p.commissioni * t.qta, p.qta);
        out_.chiuse.push_back({static_cast<long long>(out_.chiuse.size()) + 1, t.data, num::Weekday(t.data), t.system,
                               t.cod, t.titolo, scritto(p.pzoCarico), scritto(t.qta), scritto(num::Round(t.prezzo, 4)),
                               scritto(num::Round(gp, 4)), scritto(num::Round(percentuale, 2)), scritto(c + quota)});
        if (t.qta == p.qta) {
            chiudi(aperta);
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

    void chiudi(int& aperta)
    {
        vive_[static_cast<std::size_t>(aperta)] = false;
        aperta = -1;
        while (!vive_.empty() && !vive_.back()) {
            vive_.pop_back();
            righe_.pop_back();
        }
    }

    const Libro& libro_;
    Ricalcolo out_;
    std::vector<Posizione> righe_; // every row inserted and not yet deleted from the end
    std::vector<bool> vive_;
    std::vector<int> aperte_; // by key: the row of the open position, -1 for none
    QHash<QString, int> perChiave_, chiavi_;
    QHash<QString, bool> acquisti_;
    QHash<QString, const Sistema*> sistemi_;
    QHash<QString, int> erroreDi_;
    std::vector<QString> errori_;
    std::vector<double> conteggi_;
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
    // The double nearest to a decimal of at most 15 digits, 6 of them decimals: its
    // 15-digit text is that decimal, which reads back as the same double.
    const double micro = std::round(value * 1e6);
    if (mag >= 1e-4 && std::fabs(micro) < 1e15 && micro / 1e6 == value)
        return value;
    // Otherwise the way num::SqlText writes it, without a QString where that is plain.
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
