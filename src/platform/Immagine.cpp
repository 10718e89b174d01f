#include "platform/Immagine.h"

#include <QPainter>
#include <QSvgRenderer>

namespace platform {

QPixmap ImmagineSvg(const QString& path, QSize size, qreal devicePixelRatio)
{
    QPixmap pix(size * devicePixelRatio);
    pix.setDevicePixelRatio(devicePixelRatio);
    pix.fill(Qt::transparent);
    QSvgRenderer renderer(path);
    QPainter p(&pix);
    p.setRenderHint(QPainter::Antialiasing);
    renderer.render(&p, QRectF(QPointF(0, 0), QSizeF(size)));
    return pix;
}

} // namespace platform
