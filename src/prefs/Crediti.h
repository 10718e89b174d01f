#pragma once
// The credits of the about window: lines that rise through an area, coming up out
// of black, at full brightness in the middle, fading to black at the top.
#include <vector>

namespace prefs {

struct Rgb {
    int rosso = 0, verde = 0, blu = 0;
    bool operator==(const Rgb&) const = default;
};

// Colour of a line whose top stands `top` below the top of an area `altezza` high:
// by its distance from the nearer edge, over half the height, times 50, 150, 255.
// Outside the area it is black.
Rgb ColoreCredito(int top, int altezza);

// Positions in twips. Each tick a line that has just left the area at the top goes
// below it, takes the colour of where it stands and rises by one.
class Crediti {
public:
    Crediti(int righe, int altezzaRiga, int altezzaArea, int primoTop);

    void Passo();
    int Righe() const { return static_cast<int>(top_.size()); }
    int Top(int riga) const { return top_.at(riga); }
    Rgb Colore(int riga) const { return colore_.at(riga); }

private:
    std::vector<int> top_;
    std::vector<Rgb> colore_;
    int altezzaRiga_;
    int altezzaArea_;
};

} // namespace prefs
