#pragma once
// The geometry of an analog dial of radius r centred at (r, r), for a time of day.
#include <QLineF>
#include <QPointF>
#include <QTime>

#include <vector>

namespace orologio {

// Degrees to radians, with the dial's own constant.
constexpr double kGradi = 0.0174532922;

// Angles of the hands in degrees, 12 o'clock at -180.
double AngoloMinuti(QTime t);
double AngoloOre(QTime t);

struct Quadrante {
    std::vector<QPointF> punti; // sixty minute dots, drawn 1 wide
    std::vector<QLineF> tacche; // twelve hour marks, 2 wide
    QLineF oraria;              // hour hand, 3 wide
    QLineF minuti;              // minute hand, 2 wide
    QPointF mozzo;              // the hub, a point 6 wide
};
Quadrante Disegna(int r, QTime t);

// The time of day shown by a clock that is `ore` hours off the machine's clock,
// wrapping round midnight.
QTime OraDelFuso(QTime locale, int ore);

} // namespace orologio
