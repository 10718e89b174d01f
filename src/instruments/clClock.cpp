#include "instruments/clClock.h"

#include "instruments/ClockGeometry.h"
#include "platform/Failure.h"
#include "platform/PictureSurface.h"

#include <cmath>

void clClock::PaintHands(platform::PictureSurface* s)
{
    if (!s)
        throw platform::Failure("Variabile oggetto non impostata");
    // To the second: the milliseconds are no part of what a dial shows.
    const QTime T(OraClock_.hour(), OraClock_.minute(), OraClock_.second());
    if (T == UltimaOra_)
        return;
    s->Cls();
    const orologio::Quadrante q = orologio::Disegna(diameter, T);
    auto punto = [s](const QPointF& p) { s->PSet(static_cast<int>(std::lround(p.x())), static_cast<int>(std::lround(p.y()))); };
    s->SetDrawWidth(1);
    for (const QPointF& p : q.punti)
        punto(p);
    s->SetDrawWidth(2);
    for (const QLineF& l : q.tacche)
        s->Line(l);
    s->SetDrawWidth(3);
    s->Line(q.oraria);
    s->SetDrawWidth(2);
    s->Line(q.minuti);
    s->SetDrawWidth(6);
    punto(q.mozzo);
    s->SetDrawWidth(1);
    UltimaOra_ = T;
    s->setAccessibleName(T.toString(QStringLiteral("HH:mm")));
}
