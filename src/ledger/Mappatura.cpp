#include "ledger/Mappatura.h"

#include "platform/Numbers.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace ledger {

namespace {

// The rows the guesses look at.
constexpr qsizetype kRigheEsaminate = 200;

Mappatura modello(const char* nome, QChar decimale, FormatoData formato,
                  std::initializer_list<std::pair<Campo, const char*>> colonne,
                  std::initializer_list<std::pair<Parole, const char*>> parole, bool recentiPrima = false)
{
    Mappatura m;
    m.recentiPrima = recentiPrima;
    m.nome = QString::fromUtf8(nome);
    m.decimale = decimale;
    m.formatoData = formato;
    for (const auto& [campo, testo] : colonne)
        m.colonna(campo) = QString::fromUtf8(testo);
    for (const auto& [lista, testo] : parole)
        m.lista(lista) = QString::fromUtf8(testo);
    return m;
}

bool uguali(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

// A text that goes into a statement between single quotes keeps its apostrophes as typographic ones.
QString senzaApostrofi(QString s) { return s.replace(u'\'', u'\u2019'); }

// Where each field's column stands in the header row; -1 for none.
std::array<qsizetype, kCampi> indici(const QStringList& intestazione, const Mappatura& m)
{
    std::array<qsizetype, kCampi> idx;
    for (int c = 0; c < kCampi; ++c) {
        const QString& nome = m.colonne[static_cast<std::size_t>(c)].trimmed();
        idx[static_cast<std::size_t>(c)] = -1;
        if (nome.isEmpty())
            continue;
        for (qsizetype i = 0; i < intestazione.size(); ++i)
            if (uguali(intestazione[i].trimmed(), nome)) {
                idx[static_cast<std::size_t>(c)] = i;
                break;
            }
    }
    return idx;
}

// The row of a table that a mapping reads its columns from.
QStringList rigaIntestazione(const platform::Tabella& righe, const Mappatura& m)
{
    const qsizetype i = m.rigaIntestazione - 1;
    return i >= 0 && i < righe.size() ? righe[i] : QStringList();
}

// The words of a list as typed: separated by ";", blanks around them dropped.
QStringList parole(const QString& lista)
{
    QStringList out;
    for (const QString& p : lista.split(u';', Qt::SkipEmptyParts))
        if (!p.trimmed().isEmpty())
            out << p.trimmed();
    return out;
}

bool inLista(const QStringList& parole, const QString& tipo, const QString& tipoESegno)
{
    return std::any_of(parole.begin(), parole.end(), [&](const QString& p) {
        return uguali(p, tipo) || (!tipoESegno.isNull() && uguali(p, tipoESegno));
    });
}

// One row read: a trade, a movement or the reason it is neither.
struct Lettura {
    std::optional<EseguitoImportato> eseguito;
    std::optional<MovimentoImportato> movimento;
    QString motivo;
    int ora = -1;
};

class Lettore {
public:
    Lettore(const Mappatura& m, const QStringList& intestazione, const QString& system)
        : m_(m), idx_(indici(intestazione, m)), system_(senzaApostrofi(system))
    {
        for (int p = 0; p < kParole; ++p)
            parole_[static_cast<std::size_t>(p)] = parole(m.parole[static_cast<std::size_t>(p)]);
    }

    bool haOra() const { return mappata(Campo::Ora); }
    // Without a type column the quantity's sign decides only in a file that has negative quantities.
    void GuardaQuantita(const platform::Tabella& righe, qsizetype da)
    {
        for (qsizetype i = da; i < righe.size() && !qtaConSegno_; ++i) {
            const std::optional<double> q = numero(righe[i], Campo::Qta);
            qtaConSegno_ = q && *q < 0;
        }
    }

    Lettura Leggi(const QStringList& celle, int riga) const
    {
        Lettura r;
        if (std::all_of(celle.begin(), celle.end(), [](const QString& c) { return c.trimmed().isEmpty(); })) {
            r.motivo = QStringLiteral("riga vuota");
            return r;
        }
        const QString tipo = valore(celle, Campo::Tipo);
        const std::optional<double> qta = numero(celle, Campo::Qta);
        const std::optional<double> importo = numero(celle, Campo::Importo);

        // What the row is: by the type column's words, else by the sign of quantity or amount.
        QString eseguito, movimento;
        if (mappata(Campo::Tipo)) {
            const QString segno = valore(celle, Campo::Segno);
            const bool conSegno = mappata(Campo::Segno);
            const QString tipoESegno = conSegno ? tipo + u' ' + segno : QString();
            auto e = [&](Parole p) { return inLista(parole_[static_cast<std::size_t>(p)], tipo, tipoESegno); };
            if (e(Parole::Acquisto))
                eseguito = QStringLiteral("Buy");
            else if (e(Parole::Vendita))
                eseguito = QStringLiteral("Sell");
            else if (e(Parole::Versamento))
                movimento = QStringLiteral("Versamento");
            else if (e(Parole::Prelievo))
                movimento = QStringLiteral("Prelievo");
            else if (e(Parole::Dividendi))
                movimento = QStringLiteral("Dividendi");
            else if (e(Parole::Costi))
                movimento = QStringLiteral("Costi di gestione");
            else {
                const QString completo = conSegno && !segno.isEmpty() ? tipo + u' ' + segno : tipo;
                r.motivo = completo.isEmpty() ? QStringLiteral("tipo vuoto")
                                              : QStringLiteral("tipo non riconosciuto: %1").arg(completo);
                return r;
            }
        } else if (qtaConSegno_ && qta && *qta != 0) {
            eseguito = *qta > 0 ? QStringLiteral("Buy") : QStringLiteral("Sell");
        } else if (importo && *importo != 0) {
            eseguito = *importo < 0 ? QStringLiteral("Buy") : QStringLiteral("Sell");
        } else {
            r.motivo = QStringLiteral("né tipo né segno di quantità o importo");
            return r;
        }

        const DataOra quando = LeggiDataOra(valore(celle, Campo::Data), m_.formatoData);
        if (!quando.data.isValid()) {
            r.motivo = QStringLiteral("data non leggibile: %1").arg(valore(celle, Campo::Data));
            return r;
        }
        r.ora = mappata(Campo::Ora) ? LeggiOra(valore(celle, Campo::Ora)) : quando.ora;
        const QString titolo = senzaApostrofi(valore(celle, Campo::Titolo));

        if (!movimento.isEmpty()) {
            if (!importo || *importo == 0) {
                r.motivo = QStringLiteral("importo non leggibile: %1").arg(valore(celle, Campo::Importo));
                return r;
            }
            MovimentoImportato mov;
            mov.data = quando.data;
            mov.tipo = movimento;
            mov.importo = *importo; // its sign is weighed once the whole file is read
            // The row's own words when it has no description.
            mov.descrizione = !titolo.isEmpty() ? titolo : !tipo.isEmpty() ? senzaApostrofi(tipo) : QStringLiteral(".");
            mov.riga = riga;
            r.movimento = mov;
            return r;
        }

        const QString cod = senzaApostrofi(valore(celle, Campo::Cod));
        if (cod.isEmpty()) {
            r.motivo = QStringLiteral("codice mancante");
            return r;
        }
        if (!qta || *qta == 0) {
            r.motivo = QStringLiteral("quantità non leggibile: %1").arg(valore(celle, Campo::Qta));
            return r;
        }
        const double pezzi = std::fabs(*qta);
        double prezzo = 0;
        if (mappata(Campo::Prezzo)) {
            const std::optional<double> p = numero(celle, Campo::Prezzo);
            if (!p) {
                r.motivo = QStringLiteral("prezzo non leggibile: %1").arg(valore(celle, Campo::Prezzo));
                return r;
            }
            prezzo = std::fabs(*p);
        } else if (importo) {
            prezzo = std::fabs(*importo) / pezzi;
        } else {
            r.motivo = QStringLiteral("importo non leggibile: %1").arg(valore(celle, Campo::Importo));
            return r;
        }
        if (mappata(Campo::Cambio)) {
            const std::optional<double> cambio = numero(celle, Campo::Cambio);
            if (!cambio || *cambio <= 0) {
                r.motivo = QStringLiteral("cambio non leggibile: %1").arg(valore(celle, Campo::Cambio));
                return r;
            }
            prezzo /= *cambio;
        }
        if (!std::isfinite(prezzo)) {
            r.motivo = QStringLiteral("prezzo non leggibile");
            return r;
        }
        prezzo = num::Round(prezzo, 4);
        // The replay can't load a position at no price.
        if (prezzo == 0) {
            r.motivo = QStringLiteral("prezzo zero");
            return r;
        }
        EseguitoImportato e;
        e.data = quando.data;
        e.tipo = eseguito;
        e.system = system_;
        e.cod = cod;
        e.titolo = titolo.isEmpty() ? QStringLiteral("ND") : titolo;
        e.qta = pezzi;
        e.prezzo = prezzo;
        e.prezzoOttimale = prezzo;
        e.riga = riga;
        r.eseguito = e;
        return r;
    }

    QString valore(const QStringList& celle, Campo c) const
    {
        const qsizetype i = idx_[static_cast<std::size_t>(c)];
        return i >= 0 && i < celle.size() ? celle[i].trimmed() : QString();
    }

private:
    bool mappata(Campo c) const { return idx_[static_cast<std::size_t>(c)] >= 0; }
    std::optional<double> numero(const QStringList& celle, Campo c) const
    {
        if (!mappata(c))
            return std::nullopt;
        const std::optional<double> v = LeggiNumero(valore(celle, c), m_.decimale);
        return v && std::isfinite(*v) ? v : std::nullopt;
    }

    const Mappatura& m_;
    std::array<qsizetype, kCampi> idx_;
    std::array<QStringList, kParole> parole_;
    QString system_;
    bool qtaConSegno_ = false;
};

bool entra(const QString& movimento) { return movimento == u"Versamento" || movimento == u"Dividendi"; }

QString opposto(const QString& movimento)
{
    if (movimento == u"Versamento")
        return QStringLiteral("Prelievo");
    if (movimento == u"Prelievo")
        return QStringLiteral("Versamento");
    if (movimento == u"Dividendi")
        return QStringLiteral("Costi di gestione");
    return QStringLiteral("Dividendi");
}

// In a file whose movements carry signs, cash that moved against the row's kind (a tax given
// back, a dividend taken back) is booked as the opposite kind, so that the balance moves as
// the broker's cash did. Where every amount is positive the kind alone decides.
void pesaSegni(QList<MovimentoImportato>& movimenti)
{
    const bool conSegno = std::any_of(movimenti.begin(), movimenti.end(), [](const auto& m) { return m.importo < 0; });
    for (MovimentoImportato& m : movimenti) {
        if (conSegno && (m.importo < 0) == entra(m.tipo))
            m.tipo = opposto(m.tipo);
        m.importo = std::fabs(m.importo);
    }
}

// Where a row goes in among the others.
struct Posto {
    QDate data;
    int ora;
    qsizetype ordine; // the file's order, or its reverse
};

template <typename T>
void ordina(QList<T>& righe, QList<Posto>& posti)
{
    QList<qsizetype> perm(righe.size());
    for (qsizetype i = 0; i < perm.size(); ++i)
        perm[i] = i;
    std::stable_sort(perm.begin(), perm.end(), [&](qsizetype a, qsizetype b) {
        const Posto& x = posti[a];
        const Posto& y = posti[b];
        if (x.data != y.data)
            return x.data < y.data;
        if (x.ora != y.ora)
            return x.ora < y.ora;
        return x.ordine < y.ordine;
    });
    QList<T> ordinate;
    ordinate.reserve(righe.size());
    for (const qsizetype i : perm)
        ordinate.append(righe[i]);
    righe = ordinate;
}

bool numeroSenzaData(const QString& cella)
{
    // Dates and times show '/', ':' or a '-' after a digit; amounts don't.
    if (!platform::SembraValore(cella) || cella.contains(u'/') || cella.contains(u':'))
        return false;
    const qsizetype meno = cella.lastIndexOf(u'-');
    return meno <= 0 || !cella[meno - 1].isDigit();
}

} // namespace

QList<Mappatura> ModelliPredefiniti()
{
    return {
        modello("Directa", u'.', FormatoData::GgMmAaaa,
                {{Campo::Data, "Data operazione"}, {Campo::Tipo, "Tipo operazione"}, {Campo::Cod, "Ticker"},
                 {Campo::Titolo, "Descrizione"}, {Campo::Qta, "Quantità"}, {Campo::Importo, "Importo euro"}},
                {{Parole::Acquisto, "Acquisto"}, {Parole::Vendita, "Vendita"}, {Parole::Versamento, "Conferimento con bonifico"},
                 {Parole::Dividendi, "Provento etf;Cedola obb.;Coupon certif."},
                 {Parole::Costi, "Rit.provento etf;Rit.cedola obb.;Ritenuta su plusvalenza"}},
                true),
        modello("Fineco", u',', FormatoData::GgMmAaaa,
                {{Campo::Data, "Operazione"}, {Campo::Tipo, "Descrizione"}, {Campo::Segno, "Segno"}, {Campo::Cod, "Isin"},
                 {Campo::Titolo, "Titolo"}, {Campo::Qta, "Quantita"}, {Campo::Importo, "Controvalore"}},
                {{Parole::Acquisto, "Compravendita titoli A"}, {Parole::Vendita, "Compravendita titoli V"},
                 {Parole::Dividendi, "Dividendo;Stacco Cedole"}}),
        modello("Interactive Brokers", u'.', FormatoData::AaaaMmGgUnito,
                {{Campo::Data, "TradeDate"}, {Campo::Tipo, "Buy/Sell"}, {Campo::Cod, "ISIN"}, {Campo::Qta, "Quantity"},
                 {Campo::Prezzo, "TradePrice"}, {Campo::Importo, "TradeMoney"}},
                {{Parole::Acquisto, "BUY"}, {Parole::Vendita, "SELL"}}),
    };
}

QStringList Intestazione(const QStringList& riga)
{
    QStringList celle;
    for (const QString& c : riga)
        celle.append(c.trimmed());
    while (!celle.isEmpty() && celle.back().isEmpty())
        celle.removeLast();
    return celle;
}

std::optional<Riconoscimento> RiconosciModello(const platform::Tabella& righe, const QList<Mappatura>& salvati)
{
    const qsizetype n = std::min(righe.size(), kRigheEsaminate);
    auto trovato = [&](Mappatura m, qsizetype i) {
        m.intestazione = Intestazione(righe[i]);
        m.rigaIntestazione = static_cast<int>(i + 1);
        return Riconoscimento{m, i};
    };
    // The user's own model for this very header first.
    for (qsizetype i = 0; i < n; ++i) {
        const QStringList intestazione = Intestazione(righe[i]);
        if (intestazione.size() < 2)
            continue;
        for (const Mappatura& m : salvati)
            if (m.intestazione.size() == intestazione.size()
                && std::equal(intestazione.begin(), intestazione.end(), m.intestazione.begin(), uguali))
                return trovato(m, i);
    }
    const QList<Mappatura> predefiniti = ModelliPredefiniti();
    for (qsizetype i = 0; i < n; ++i) {
        const QStringList intestazione = Intestazione(righe[i]);
        for (const Mappatura& m : predefiniti) {
            const auto idx = indici(intestazione, m);
            bool tutte = true;
            for (int c = 0; c < kCampi; ++c)
                tutte = tutte && (m.colonne[static_cast<std::size_t>(c)].isEmpty() || idx[static_cast<std::size_t>(c)] >= 0);
            if (tutte)
                return trovato(m, i);
        }
    }
    return std::nullopt;
}

void IndovinaFormati(const platform::Tabella& righe, Mappatura& m, bool foglio)
{
    const auto idx = indici(rigaIntestazione(righe, m), m);
    const qsizetype fine = std::min(righe.size(), m.rigaIntestazione + kRigheEsaminate);
    QStringList numeri, date;
    bool numeriMappati = false;
    for (const Campo c : {Campo::Qta, Campo::Prezzo, Campo::Importo, Campo::Cambio})
        numeriMappati = numeriMappati || idx[static_cast<std::size_t>(c)] >= 0;
    const qsizetype colData = idx[static_cast<std::size_t>(Campo::Data)];
    for (qsizetype r = m.rigaIntestazione; r < fine; ++r) {
        const QStringList& celle = righe[r];
        for (qsizetype i = 0; i < celle.size(); ++i) {
            const QString cella = celle[i].trimmed();
            if (i == colData)
                date.append(cella);
            const bool numerica = numeriMappati
                ? std::any_of(idx.begin() + static_cast<int>(Campo::Qta), idx.end(), [i](qsizetype x) { return x == i; })
                : numeroSenzaData(cella);
            if (numerica)
                numeri.append(cella);
        }
    }
    if (const std::optional<QChar> d = IndovinaDecimale(numeri))
        m.decimale = *d;
    else if (foglio)
        m.decimale = u'.'; // a sheet's number cells come as text with a point ("1520.123")
    if (const std::optional<FormatoData> f = IndovinaFormatoData(date))
        m.formatoData = *f;
}

Staging Applica(const platform::Tabella& righe, const Mappatura& m, const QString& system)
{
    Staging s;
    Lettore lettore(m, rigaIntestazione(righe, m), system);
    lettore.GuardaQuantita(righe, std::max(m.rigaIntestazione, 1));
    QList<Posto> postiEseguiti, postiMovimenti;
    QList<QDate> date; // in the file's order, for its direction
    bool ore = lettore.haOra();
    for (qsizetype i = std::max(m.rigaIntestazione, 1); i < righe.size(); ++i) {
        const int riga = static_cast<int>(i + 1);
        const Lettura l = lettore.Leggi(righe[i], riga);
        if (l.eseguito) {
            s.eseguiti.append(*l.eseguito);
            postiEseguiti.append({l.eseguito->data, l.ora, i});
        } else if (l.movimento) {
            s.movimenti.append(*l.movimento);
            postiMovimenti.append({l.movimento->data, l.ora, i});
        } else {
            s.scartate.append({riga, l.motivo});
            continue;
        }
        date.append(l.eseguito ? l.eseguito->data : l.movimento->data);
        ore = ore || l.ora >= 0;
    }
    // Within a day: by time when the file gives one, else in the file's direction.
    qsizetype scendono = 0, salgono = 0;
    for (qsizetype i = 1; i < date.size(); ++i) {
        scendono += date[i] < date[i - 1];
        salgono += date[i] > date[i - 1];
    }
    const bool rovescia = !ore && (scendono > salgono || (scendono == 0 && salgono == 0 && m.recentiPrima));
    for (QList<Posto>* posti : {&postiEseguiti, &postiMovimenti})
        for (Posto& p : *posti) {
            if (!ore)
                p.ora = 0;
            if (rovescia)
                p.ordine = -p.ordine;
        }
    ordina(s.eseguiti, postiEseguiti);
    ordina(s.movimenti, postiMovimenti);
    pesaSegni(s.movimenti);
    return s;
}

platform::Tabella TabellaDaFoglio(const QList<QVariantList>& righe)
{
    platform::Tabella t;
    t.reserve(righe.size());
    for (const QVariantList& riga : righe) {
        QStringList celle;
        celle.reserve(riga.size());
        for (const QVariant& v : riga) {
            switch (v.typeId()) {
            case QMetaType::Double:
            case QMetaType::Float:
            case QMetaType::Int:
            case QMetaType::LongLong:
                celle.append(QString::number(v.toDouble(), 'f', QLocale::FloatingPointShortest));
                break;
            case QMetaType::Bool:
                celle.append(v.toBool() ? QStringLiteral("VERO") : QStringLiteral("FALSO"));
                break;
            case QMetaType::QDate:
                celle.append(v.toDate().toString(QStringLiteral("yyyy-MM-dd")));
                break;
            case QMetaType::QDateTime:
                celle.append(v.toDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
                break;
            default:
                celle.append(v.isNull() ? QString() : v.toString());
            }
        }
        t.append(celle);
    }
    return t;
}

} // namespace ledger
