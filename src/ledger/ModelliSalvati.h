#pragma once
// The user's own mappings, kept by name in DataSet.qvd.
#include "ledger/Mappatura.h"

namespace store {
class Database;
}

namespace ledger {

// The saved mappings, the latest saved first.
QList<Mappatura> CaricaModelli(store::Database& dbSet);
// Saves a mapping under its name, in place of one of the same name (without case).
void SalvaModello(store::Database& dbSet, const Mappatura& m);

} // namespace ledger
