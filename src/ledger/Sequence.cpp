#include "ledger/Sequence.h"

#include "platform/Numbers.h"
#include "store/Database.h"

#include <QStringList>

#include <algorithm>

namespace ledger {

namespace {

// The same as upper-casing and comparing with "BUY": no other letter upper-cases to these.
bool acquisto(const QString& tipo) { return tipo.compare(QLatin1String("BUY"), Qt::CaseInsensitive) == 0; }

// A sale from a slot that holds `quantita`: false, the slot untouched, when it sells more.
bool vendi(double& quantita, double qta)
{
    if (qta == quantita)
        quantita = 0;
    else if (qta < quantita)
        quantita = quantita - qta;
    else
        return false;
    return true;
}

QString nonInPortafoglio(const QString& cod, const QString& data) { return cod + " non e' in portafoglio in data: " + data; }
QString disponibiliSolo(const QString& cod, double quantita)
{
    return cod + " disponibili solo " + num::Text(quantita) + " pezzi";
}

const QString kEseguitiInOrdine = QStringLiteral("SELECT *  FROM Eseguiti ORDER BY Data");

} // namespace

QString ControlloSequenza(store::Database& dbExe)
{
    // Slot 0 stays empty; slots are never given back, a sold-out code keeps its slot at 0.
    // The bound of the table is the journal's limit of codes.
    num::FixedTable<double, 0, kMaxCodici> quantita;
    long long usati = 0;
    // Where each code sits: a code takes a slot only when no slot holds it, so at most
    // one slot matches and the look-up finds what a walk over every slot would.
    QHash<QString, long long> slot{{QString(), 0}};

    // Read in place as it walks: the import runs this once per row over the whole table.
    store::ForwardOnly t = dbExe.OpenForwardOnly(kEseguitiInOrdine);
    const int fCod = t.Index(QStringLiteral("Cod")), fQta = t.Index(QStringLiteral("Qta")),
              fTipo = t.Index(QStringLiteral("Tipo")), fData = t.Index(QStringLiteral("Data"));
    QString cod, tipo;
    while (!t.Eof()) {
        t.Text(fCod, &cod);
        t.Text(fTipo, &tipo);
        const double qta = t.Number(fQta);
        const auto trovato = slot.constFind(cod); // exact text, case included
        if (acquisto(tipo)) {
            if (trovato != slot.constEnd()) {
                quantita[*trovato] = qta + quantita[*trovato];
            } else {
                ++usati;
                quantita[usati] = qta;
                slot.insert(cod, usati);
            }
        } else {
            if (trovato == slot.constEnd())
                return nonInPortafoglio(cod, t.Text(fData));
            if (!vendi(quantita[*trovato], qta))
                return disponibiliSolo(cod, quantita[*trovato]);
        }
        t.MoveNext();
    }
    return {};
}

namespace {

// A date as the table sorts it: yyyy-mm-dd text; none (null) before any.
std::pair<bool, QString> chiaveData(const QVariant& data)
{
    return {!data.isNull(), data.typeId() == QMetaType::QDate ? data.toDate().toString(Qt::ISODate) : data.toString()};
}

} // namespace

SequenzaInMemoria::SequenzaInMemoria(store::Database& dbExe)
{
    store::ForwardOnly t = dbExe.OpenForwardOnly(kEseguitiInOrdine);
    const int fId = t.Index(QStringLiteral("ID")), fCod = t.Index(QStringLiteral("Cod")),
              fQta = t.Index(QStringLiteral("Qta")), fTipo = t.Index(QStringLiteral("Tipo")),
              fData = t.Index(QStringLiteral("Data"));
    for (; !t.Eof(); t.MoveNext()) {
        const auto [conData, data] = chiaveData(t.Field(fData));
        Voce v{{conData, data, static_cast<long long>(t.Number(fId))}, acquisto(t.Text(fTipo)), t.Number(fQta), t.Text(fData)};
        ultimo_.id = std::max(ultimo_.id, v.chiave.id);
        // Already in walk order: appended, and each code walked once at the end.
        codici_[t.Text(fCod)].voci.push_back(std::move(v));
    }
    const QStringList codici = codici_.keys();
    for (const QString& cod : codici)
        ricalcola(cod);
}

void SequenzaInMemoria::AggiungiUltimo(store::Database& dbExe)
{
    store::ForwardOnly t = dbExe.OpenForwardOnly(
        QStringLiteral("SELECT ID, Data, Tipo, Cod, Qta FROM Eseguiti WHERE ID = (SELECT Max(ID) FROM Eseguiti)"));
    if (t.Eof())
        throw platform::Failure("Nessun eseguito inserito");
    const auto [conData, data] = chiaveData(t.Field(1));
    Voce v{{conData, data, static_cast<long long>(t.Number(0))}, acquisto(t.Text(2)), t.Number(4), t.Text(1)};
    ultimo_ = {t.Text(3), v.chiave, v.chiave.id};
    std::vector<Voce>& voci = codici_[ultimo_.cod].voci;
    // Its ID is the highest: it goes after every trade of its date.
    const auto dove = std::upper_bound(voci.begin(), voci.end(), v.chiave,
                                       [](const Chiave& k, const Voce& x) { return k < x.chiave; });
    voci.insert(dove, std::move(v));
    ricalcola(ultimo_.cod);
}

void SequenzaInMemoria::TogliUltimo()
{
    std::vector<Voce>& voci = codici_[ultimo_.cod].voci;
    const auto it = std::find_if(voci.begin(), voci.end(), [this](const Voce& v) { return v.chiave == ultimo_.chiave; });
    if (it == voci.end())
        throw platform::Failure("Nessun eseguito da togliere");
    voci.erase(it);
    ricalcola(ultimo_.cod);
}

void SequenzaInMemoria::ricalcola(const QString& cod)
{
    Codice& c = codici_[cod];
    if (c.guasto)
        guasti_.erase({*c.guasto, cod});
    if (c.primoAcquisto)
        primiAcquisti_.erase(*c.primoAcquisto);
    c.guasto.reset();
    c.primoAcquisto.reset();
    c.messaggio.clear();

    // The blank code matches the slot that is there from the start.
    bool slot = cod.isEmpty();
    double quantita = 0;
    for (const Voce& v : c.voci) {
        if (v.acquisto) {
            if (slot) {
                quantita = v.qta + quantita;
            } else {
                slot = true;
                quantita = v.qta;
                c.primoAcquisto = v.chiave;
            }
        } else if (!slot || !vendi(quantita, v.qta)) {
            // The walk over the table ends here at the latest: what comes after can't count.
            c.guasto = v.chiave;
            c.messaggio = slot ? disponibiliSolo(cod, quantita) : nonInPortafoglio(cod, v.testoData);
            break;
        }
    }
    if (c.guasto)
        guasti_.insert({*c.guasto, cod});
    if (c.primoAcquisto)
        primiAcquisti_.insert(*c.primoAcquisto);
}

QString SequenzaInMemoria::Controlla() const
{
    const auto guasto = guasti_.cbegin();
    if (primiAcquisti_.size() > static_cast<std::size_t>(kMaxCodici)) {
        const Chiave& oltre = *std::next(primiAcquisti_.cbegin(), kMaxCodici);
        // The walk reaches the buy that takes a slot past the table's bound.
        if (guasto == guasti_.cend() || oltre < guasto->first)
            throw platform::IndexOutOfRange(kMaxCodici + 1);
    }
    if (guasto == guasti_.cend())
        return {};
    return codici_.constFind(guasto->second)->messaggio;
}

} // namespace ledger
