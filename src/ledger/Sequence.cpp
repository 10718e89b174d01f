#include "ledger/Sequence.h"

#include "platform/Numbers.h"
#include "store/Database.h"

namespace ledger {

QString ControlloSequenza(store::Database& dbExe)
{
    // Slot 0 stays empty; slots are never given back, a sold-out code keeps its slot at 0.
    num::FixedTable<QString, 0, kMaxCodici> codici;
    num::FixedTable<double, 0, kMaxCodici> quantita;
    long long usati = 0;

    store::Recordset t = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM Eseguiti ORDER BY Data"));
    while (!t.Eof()) {
        const QString cod = t.Text(QStringLiteral("Cod"));
        const double qta = t.Number(QStringLiteral("Qta"));
        bool trovato = false;
        if (t.Text(QStringLiteral("Tipo")).toUpper() == QLatin1String("BUY")) {
            for (long long i = 0; i <= usati; ++i) {
                if (cod == codici[i]) { // exact text, case included
                    trovato = true;
                    quantita[i] = qta + quantita[i];
                    codici[i] = cod;
                }
            }
            if (!trovato) {
                ++usati;
                codici[usati] = cod;
                quantita[usati] = qta;
            }
        } else {
            for (long long i = 0; i <= usati; ++i) {
                if (cod != codici[i])
                    continue;
                trovato = true;
                if (qta == quantita[i])
                    quantita[i] = 0;
                else if (qta < quantita[i])
                    quantita[i] = quantita[i] - qta;
                else
                    return cod + " disponibili solo " + num::Text(quantita[i]) + " pezzi";
            }
            if (!trovato)
                return cod + " non e' in portafoglio in data: " + t.Text(QStringLiteral("Data"));
        }
        t.MoveNext();
    }
    return {};
}

} // namespace ledger
