#include "ledger/Sequence.h"

#include "platform/Numbers.h"
#include "store/Database.h"

#include <QHash>

namespace ledger {

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
    store::ForwardOnly t = dbExe.OpenForwardOnly(QStringLiteral("SELECT *  FROM Eseguiti ORDER BY Data"));
    const int fCod = t.Index(QStringLiteral("Cod")), fQta = t.Index(QStringLiteral("Qta")),
              fTipo = t.Index(QStringLiteral("Tipo")), fData = t.Index(QStringLiteral("Data"));
    QString cod, tipo;
    while (!t.Eof()) {
        t.Text(fCod, &cod);
        t.Text(fTipo, &tipo);
        const double qta = t.Number(fQta);
        const auto trovato = slot.constFind(cod); // exact text, case included
        // The same as upper-casing and comparing with "BUY": no other letter upper-cases to these.
        if (tipo.compare(QLatin1String("BUY"), Qt::CaseInsensitive) == 0) {
            if (trovato != slot.constEnd()) {
                quantita[*trovato] = qta + quantita[*trovato];
            } else {
                ++usati;
                quantita[usati] = qta;
                slot.insert(cod, usati);
            }
        } else {
            if (trovato == slot.constEnd())
                return cod + " non e' in portafoglio in data: " + t.Text(fData);
            const long long i = *trovato;
            if (qta == quantita[i])
                quantita[i] = 0;
            else if (qta < quantita[i])
                quantita[i] = quantita[i] - qta;
            else
                return cod + " disponibili solo " + num::Text(quantita[i]) + " pezzi";
        }
        t.MoveNext();
    }
    return {};
}

} // namespace ledger
