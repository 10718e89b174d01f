#pragma once
// The cash side of the portfolio window: liquidity and its share of the capital base.
#include <cstdint>

namespace stats {

// ((utile + capitale) - valore) + contoNetto, in that order.
double Liquidita(double utileNetto, double capitaleIniziale, double valorePortafoglio, double contoNetto);

// The liquidity's share of the capital base in tenths of a percent, floored, for the
// dial; 0 when there is no liquidity. A value past 16 bits is an overflow failure.
std::int16_t QuotaLiquidita(double liquidita, double contoNetto, double utileNetto, double capitaleIniziale);

} // namespace stats
