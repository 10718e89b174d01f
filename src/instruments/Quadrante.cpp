#include "instruments/Quadrante.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace strum {

namespace {
// A point on the needle's line for value v, at `reach` times its length from the pivot.
QPointF lungo(const Scala& s, int v, QSize size, double reach)
{
    return NeedleLine(s.kind, v, size.width(), size.height()).pointAt(reach);
}
} // namespace

QImage Quadrante(const Scala& s, QSize size)
{
    QImage face(size, QImage::Format_ARGB32_Premultiplied);
    face.fill(s.back);
    if (s.kind != Kind::Center && s.kind != Kind::Bottom && s.kind != Kind::BottomCenter)
        return face;
    QPainter p(&face);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(170, 178, 190), 1));
    p.drawRoundedRect(QRectF(0.5, 0.5, size.width() - 1, size.height() - 1), 6, 6);

    // Coloured bands just inside the tip of the needle.
    int da = 0;
    for (const auto& [a, colore] : s.bands) {
        QPainterPath band;
        band.moveTo(lungo(s, da, size, 0.9));
        for (int v = da; v <= a; v += 10)
            band.lineTo(lungo(s, v, size, 0.9));
        for (int v = a; v >= da; v -= 10)
            band.lineTo(lungo(s, v, size, 0.99));
        band.closeSubpath();
        p.fillPath(band, colore);
        da = a;
    }

    QFont f = p.font();
    f.setPixelSize(std::max(8, size.height() / 12));
    p.setFont(f);
    for (int v = 0, i = 0; v <= 1000; v += s.step, ++i) {
        const bool grande = i % s.labelEvery == 0;
        p.setPen(QPen(s.ink, grande ? 1.6 : 1));
        p.drawLine(lungo(s, v, size, grande ? 0.8 : 0.86), lungo(s, v, size, 0.99));
        if (grande && s.label) {
            // Centred under its mark, but kept inside the face: the last mark of a
            // quarter dial stands near the edge.
            const QString testo = s.label(v);
            const QPointF c = lungo(s, v, size, 0.62);
            const qreal w = p.fontMetrics().horizontalAdvance(testo) + 2;
            QRectF box(c.x() - w / 2, c.y() - 8, w, 16);
            box.moveRight(std::min(box.right(), size.width() - 6.0));
            box.moveLeft(std::max(box.left(), 6.0));
            p.drawText(box, Qt::AlignCenter, testo);
        }
    }
    // The hub of the needle.
    p.setPen(Qt::NoPen);
    p.setBrush(s.ink);
    p.drawEllipse(NeedleLine(s.kind, 0, size.width(), size.height()).p1(), 3, 3);
    return face;
}

} // namespace strum
