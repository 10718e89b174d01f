#include "platform/Casuale.h"

#include <chrono>

namespace platform {

void Casuale::Randomize()
{
    const auto ticks = std::chrono::system_clock::now().time_since_epoch().count();
    Randomize(static_cast<std::uint32_t>(ticks ^ (ticks >> 32)));
}

void Casuale::Randomize(std::uint32_t seed) { motore_.seed(seed); }

double Casuale::Rnd()
{
    // 53 random bits: never 1.0, which generate_canonical can return.
    const std::uint64_t alto = motore_() >> 5;
    const std::uint64_t basso = motore_() >> 6;
    return static_cast<double>((alto << 26) | basso) / 9007199254740992.0;
}

Casuale& Generatore()
{
    static Casuale generatore;
    return generatore;
}

} // namespace platform
