#pragma once
// Our drawings (SVG) as pictures of a given size, sharp on any screen.
#include <QPixmap>
#include <QString>

namespace platform {

QPixmap ImmagineSvg(const QString& path, QSize size, qreal devicePixelRatio);

} // namespace platform
