#pragma once
// The printed scale under a dial instrument: the picture a surface keeps below
// the needle that Strum draws, so marks and needle share one geometry.
#include "instruments/LcdGeometry.h"

#include <QColor>
#include <QImage>
#include <QList>
#include <QPair>
#include <QSize>
#include <QString>

#include <functional>

namespace strum {

struct Scala {
    Kind kind = Kind::Center;
    int step = 50;       // value between two marks
    int labelEvery = 5;  // a text on every n-th mark, counted from 0
    std::function<QString(int value)> label; // the text of a labelled mark; none when unset
    QList<QPair<int, QColor>> bands;         // coloured bands up to each value, in order
    QColor back = Qt::transparent;
    QColor ink = QColor(60, 66, 76);
};

// The face for Center, Bottom and BottomCenter; the two meters get the plain background.
QImage Quadrante(const Scala& scala, QSize size);

} // namespace strum
