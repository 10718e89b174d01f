#include "prefs/Consigli.h"

#include <cmath>

namespace prefs {

int ScostamentoConsiglio(platform::Casuale& generatore)
{
    return static_cast<int>(std::floor(generatore.Rnd() * kRigheConsiglio));
}

} // namespace prefs
