#include "stats/DialMedie.h"

#include "instruments/LcdGeometry.h"

#include <QPainter>
#include <QPainterPath>

namespace stats {

namespace {

struct Scala {
    strum::Kind kind;
    int step;       // value between two marks
    int labelEvery; // a number on every n-th mark
    double labelScale;
    QString suffix;
    // Bands from value to value, in order, with their colours.
    QList<QPair<int, QColor>> bands;
};

// A point on the needle's path at a fraction of its length.
QPointF punto(const Scala& s, int v, int w, int h, double k)
{
    const QLineF l = strum::NeedleLine(s.kind, v, w, h);
    return l.p1() + (l.p2() - l.p1()) * k;
}

QImage disegna(const Scala& s, int w, int h)
{
    QImage img(w, h, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(170, 178, 190), 1));
    p.drawRoundedRect(QRectF(0.5, 0.5, w - 1, h - 1), 6, 6);

    // Coloured bands just inside the tip of the needle.
    int da = 0;
    for (const auto& [a, colore] : s.bands) {
        QPainterPath band;
        band.moveTo(punto(s, da, w, h, 0.9));
        for (int v = da; v <= a; v += 10)
            band.lineTo(punto(s, v, w, h, 0.9));
        for (int v = a; v >= da; v -= 10)
            band.lineTo(punto(s, v, w, h, 0.99));
        band.closeSubpath();
        p.fillPath(band, colore);
        da = a;
    }

    QFont f = p.font();
    f.setPixelSize(std::max(8, h / 12));
    p.setFont(f);
    for (int v = 0, i = 0; v <= 1000; v += s.step, ++i) {
        const bool grande = i % s.labelEvery == 0;
        p.setPen(QPen(QColor(60, 66, 76), grande ? 1.6 : 1));
        p.drawLine(punto(s, v, w, h, grande ? 0.8 : 0.86), punto(s, v, w, h, 0.99));
        if (grande) {
            const QPointF c = punto(s, v, w, h, 0.62);
            const QString t = QString::number(v / s.labelScale) + s.suffix;
            p.drawText(QRectF(c.x() - 20, c.y() - 8, 40, 16), Qt::AlignCenter, t);
        }
    }
    // The hub of the needle.
    const QPointF perno = strum::NeedleLine(s.kind, 0, w, h).p1();
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(60, 66, 76));
    p.drawEllipse(perno, 3, 3);
    return img;
}

} // namespace

QImage QuadranteCentro(int width, int height)
{
    // Few winners out of ten in red, many in green.
    return disegna({strum::Kind::Center, 100, 2, 100, QString(),
                    {{400, QColor(226, 98, 88)}, {600, QColor(236, 190, 70)}, {1000, QColor(92, 178, 98)}}},
                   width, height);
}

QImage QuadranteAngolo(int width, int height)
{
    // A result owed to one operation is luck: the higher, the redder.
    return disegna({strum::Kind::Bottom, 125, 2, 10, QStringLiteral("%"),
                    {{300, QColor(92, 178, 98)}, {600, QColor(236, 190, 70)}, {1000, QColor(226, 98, 88)}}},
                   width, height);
}

} // namespace stats
