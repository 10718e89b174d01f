#pragma once
#include <QDate>
#include <QString>

#include <functional>

namespace store {
class Database;
}

namespace ledger {

// A plain message box: OK button, no icon.
using PlainBox = std::function<void(const QString& text)>;

// Rebuilds Portafoglio and OperazioniChiuse of dbExe and the counters of
// Errori in dbSet by replaying every trade of Eseguiti in date order.
// Stops with a message at a sale of a security not held or of more than is held.
// Computes in memory and writes the result in one batch; a ledger whose statements
// would fail, or might store otherwise, goes through the statement replay instead:
// false then.
bool RicalcolaPortafoglio(store::Database& dbExe, store::Database& dbSet, const PlainBox& box);

// The same replay a statement per step, as the journal has always run it: the
// reference the in-memory replay is held to, and its way out.
void RicalcolaPortafoglioPerIstruzioni(store::Database& dbExe, store::Database& dbSet, const PlainBox& box);

// The two messages of a stopping sale.
QString MessaggioNonPosseduto(const QString& cod, const QDate& data);
QString MessaggioSoloDisponibili(const QString& cod, double posseduti);

} // namespace ledger
