#include "instruments/ClockGeometry.h"

#include <cmath>

namespace orologio {

namespace {
QPointF suCerchio(int r, double fattore, double gradi)
{
    const double a = gradi * kGradi;
    return {fattore * r * std::sin(a) + r, fattore * r * std::cos(a) + r};
}
} // namespace

double AngoloMinuti(QTime t) { return 6.0 * t.minute() - 180.0; }

double AngoloOre(QTime t)
{
    // Half a degree a minute, rounded half to even.
    return 30.0 * t.hour() - 180.0 + std::nearbyint(AngoloMinuti(t) / 12.0 + 15.0);
}

Quadrante Disegna(int r, QTime t)
{
    Quadrante q;
    const double M = AngoloMinuti(t);
    const double H = AngoloOre(t);
    for (int i = 0; i <= 354; i += 6)
        q.punti.push_back(suCerchio(r, 1.0, i));
    for (int i = 0; i <= 354; i += 30)
        q.tacche.emplace_back(suCerchio(r, 0.95, i), suCerchio(r, 1.0, i));
    const QPointF centro(r, r);
    // sin of the negated angle and cos of the angle: clockwise, 12 at the top.
    q.oraria = QLineF(centro, QPointF(0.7 * r * std::sin(-H * kGradi) + r, 0.7 * r * std::cos(H * kGradi) + r));
    q.minuti = QLineF(centro, QPointF(0.9 * r * std::sin(-M * kGradi) + r, 0.9 * r * std::cos(M * kGradi) + r));
    q.mozzo = centro;
    return q;
}

QTime OraDelFuso(QTime locale, int ore) { return locale.addSecs(ore * 3600); }

} // namespace orologio
