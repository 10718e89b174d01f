#pragma once
// Generated ledgers for the benchmarks: realistic buys, partial and full
// sales and error tags over a fixed number of codes, never overselling.
#include "store/Database.h"

#include <QTemporaryDir>

namespace bench {

struct GeneratedLedger {
    QTemporaryDir dir;
    store::Database dbSet;
    store::Database dbExe;
};

// A program folder with the delivered files and a portfolio of `trades` trades.
void MakeLedger(GeneratedLedger& ledger, int trades, int codes = 100, unsigned seed = 20261122);

} // namespace bench
