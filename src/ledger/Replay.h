#pragma once
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
void RicalcolaPortafoglio(store::Database& dbExe, store::Database& dbSet, const PlainBox& box);

} // namespace ledger
