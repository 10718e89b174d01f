#include "instruments/Quadrante.h"

#include <QFont>
#include <QPainter>
#include <QPolygonF>

namespace strum {

namespace {
// A point on the needle's line for value v, at `reach` times its length from the pivot.
QPointF lungo(Kind kind, int v, QSize size, double reach)
{
    const QLineF needle = NeedleLine(kind, v, size.width(), size.height());
    return needle.pointAt(reach);
}
} // namespace

QImage Quadrante(Kind kind, QSize size, const QColor& back, const QColor& marks, const QList<QPair<int, QString>>& texts)
{
    QImage face(size, QImage::Format_RGB32);
    face.fill(back);
    if (kind != Kind::Center && kind != Kind::Bottom && kind != Kind::BottomCenter)
        return face;
    QPainter p(&face);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(marks, 1.2));
    QPolygonF arco;
    for (int v = 0; v <= 1000; v += 10)
        arco << lungo(kind, v, size, 1.03);
    p.drawPolyline(arco);
    for (int v = 0; v <= 1000; v += 50) {
        const bool lunga = v % 250 == 0;
        p.setPen(QPen(marks, lunga ? 1.6 : 1.0));
        p.drawLine(lungo(kind, v, size, 1.03), lungo(kind, v, size, lunga ? 1.13 : 1.08));
    }
    QFont f = p.font();
    f.setPixelSize(std::max(8, size.height() / 9));
    p.setFont(f);
    p.setPen(marks);
    for (const auto& [v, text] : texts) {
        const QPointF at = lungo(kind, v, size, 0.8);
        const QRectF box(at.x() - 30, at.y() - 10, 60, 20);
        p.drawText(box, Qt::AlignCenter, text);
    }
    const QPointF pivot = NeedleLine(kind, 0, size.width(), size.height()).p1();
    p.setBrush(marks);
    p.drawEllipse(pivot, 3.5, 3.5);
    return face;
}

} // namespace strum
