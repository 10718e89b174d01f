#pragma once
// The printed scale under a dial instrument: the picture a surface keeps below
// the needle that Strum draws.
#include "instruments/LcdGeometry.h"

#include <QColor>
#include <QImage>
#include <QList>
#include <QPair>
#include <QSize>
#include <QString>

namespace strum {

// An arc along the needle's sweep with a mark every 50 and a longer one every 250,
// and a text at each of the given values. For Center, Bottom and BottomCenter;
// the two meters get the plain background.
QImage Quadrante(Kind kind, QSize size, const QColor& back, const QColor& marks,
                 const QList<QPair<int, QString>>& texts = {});

} // namespace strum
