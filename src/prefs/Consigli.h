#pragma once
// Which golden rule the tips window shows.
#include "platform/Casuale.h"

namespace prefs {

// The tips window jumps this many rows at most, whatever the table holds.
constexpr int kRigheConsiglio = 120;

// Rows to move forward from the first rule: the whole part of Rnd x 120.
int ScostamentoConsiglio(platform::Casuale& generatore);

} // namespace prefs
