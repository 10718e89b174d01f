#include "stats/Portafoglio.h"

#include "platform/Numbers.h"

namespace stats {

double Liquidita(double utileNetto, double capitaleIniziale, double valorePortafoglio, double contoNetto)
{
    return ((utileNetto + capitaleIniziale) - valorePortafoglio) + contoNetto;
}

std::int16_t QuotaLiquidita(double liquidita, double contoNetto, double utileNetto, double capitaleIniziale)
{
    if (!(liquidita > 0))
        return 0;
    const double base = contoNetto + utileNetto + capitaleIniziale;
    return num::ToInt16(num::Floor(10 * num::Divide(liquidita * 100, base)));
}

} // namespace stats
