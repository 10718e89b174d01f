#pragma once
// The program's one random generator. It starts from a fixed state, so every run
// draws the same numbers until something seeds it from the clock.
#include <cstdint>
#include <random>

namespace platform {

class Casuale {
public:
    Casuale() = default; // the fixed start state

    // Seeds from the clock.
    void Randomize();
    void Randomize(std::uint32_t seed);
    // Uniform in [0, 1).
    double Rnd();

private:
    std::mt19937 motore_;
};

// The generator the whole program shares: the password's scrambling seeds it,
// the tips draw from it.
Casuale& Generatore();

} // namespace platform
