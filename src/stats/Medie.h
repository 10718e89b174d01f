#pragma once
// The figures of the averages window: the balance pass, plus the capital
// invested and the best and worst operation.
#include "platform/Numbers.h"
#include "stats/Report.h"

namespace store {
class Recordset;
}

namespace stats {

struct FigureMedie {
    Bilancio bilancio;
    num::Figure capitaleInvestito;  // sum of qta x Prezzo
    num::Figure massimoGuadagno;    // unset until a gp above 0 comes
    num::Figure massimaPerdita;     // unset until a gp below 0 comes
};

// Walks the cursor from its first row to its end.
FigureMedie CalcolaFigureMedie(store::Recordset& rs);

} // namespace stats
