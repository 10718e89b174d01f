#include "prefs/Crediti.h"

#include <algorithm>
#include <cmath>

namespace prefs {

namespace {
int parte(double f, int piena) { return std::clamp(static_cast<int>(std::nearbyint(f * piena)), 0, 255); }
} // namespace

Rgb ColoreCredito(int top, int altezza)
{
    const double meta = altezza / 2.0;
    const double distanza = top < meta ? top : altezza - top;
    const double f = meta > 0 ? distanza / meta : 0;
    return {parte(f, 50), parte(f, 150), parte(f, 255)};
}

Crediti::Crediti(int righe, int altezzaRiga, int altezzaArea, int primoTop)
    : colore_(static_cast<std::size_t>(righe)), altezzaRiga_(altezzaRiga), altezzaArea_(altezzaArea)
{
    for (int i = 0; i < righe; ++i)
        top_.push_back(primoTop + i * altezzaRiga);
}

void Crediti::Passo()
{
    for (std::size_t i = 0; i < top_.size(); ++i) {
        if (top_[i] == -altezzaRiga_)
            top_[i] = altezzaArea_;
        colore_[i] = ColoreCredito(top_[i], altezzaArea_);
        --top_[i];
    }
}

} // namespace prefs
