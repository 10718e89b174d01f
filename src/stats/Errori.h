#pragma once
// The error tags of the trades: counters and missed gains rebuilt in Errori,
// and what the error statistics show of them.
#include "platform/Numbers.h"

#include <QString>
#include <QVector>

namespace store {
class Database;
class Recordset;
} // namespace store

namespace stats {

// floor(qta x the distance between the price and the optimal price), whichever side is higher.
double MancatoGuadagno(double qta, double prezzo, double prezzoOttimale);

struct ConteggioErrori {
    QString codiceNessunErrore; // Cod of the catalogue's first row
    num::Figure totaleErrori;   // trades with an error
    num::Figure numEseguiti;    // every trade read
    num::Figure totaleMancati;  // sum of the missed gains, unset until the first error
};

// Rebuilds Contatore and Importo of Errori on dbSet from the trades of `eseguiti`.
// `catalogo` is the form's cursor on the catalogue, opened before the call and reopened
// on each error's row. An error's Importo is taken from that cursor before it is reopened,
// so it is the previous error's row as it stood before the previous update: only
// totaleMancati is the true sum. Nothing is done when there are no trades.
ConteggioErrori ContaErrori(store::Database& dbSet, store::Recordset& eseguiti, store::Recordset& catalogo);

// Descrizione of the cursor's first row when its `campo` is above 0, else empty.
QString PrimoSopraZero(const store::Recordset& rs, const QString& campo);

// One chart row per catalogue code but the no-error one: the share of the error among
// all errors and of the money lost, unrounded.
struct RigaGraficoErrori {
    QString descrizione;
    double ricorrenza = 0;
    double mancato = 0;
};
// Walks the cursor from its first row; totals of 0 count as 1.
QVector<RigaGraficoErrori> GraficoErrori(store::Recordset& rs, const QString& codiceNessunErrore, double totaleErrori,
                                         double totaleMancati);

} // namespace stats
