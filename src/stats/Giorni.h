#pragma once
// The money result of the closed operations by day of the week, Monday to Friday.
#include "platform/Numbers.h"

#include <QStringList>

#include <array>

namespace store {
class Recordset;
}

namespace stats {

// "Lunedi" to "Venerdi".
const QStringList& NomiGiorni();

// Sums of SommaGP by weekday of Data, Monday first; weekend dates add nothing,
// and a day with no row stays unset (which is not 0).
using SommeGiorni = std::array<num::Figure, 5>;
SommeGiorni SommePerGiorno(store::Recordset& rs);

} // namespace stats
