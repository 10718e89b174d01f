#pragma once
// The geometry of the segmented display: which segments a character lights,
// and the lines of each segment in a cell of width W and height H.
#include <QChar>
#include <QLineF>

#include <vector>

namespace lcd {

// The segments a character paints. For digits and "-" the display first lights
// `lit` and then darkens `dark`; other characters paint `lit` in the colour left
// by the previous character and set no colour of their own.
struct Glyph {
    bool setsColours = false;
    std::vector<int> lit;
    std::vector<int> dark;
};
Glyph GlyphOf(QChar c);

// The ten segments of an unlit digit (the dark ghost).
const std::vector<int>& GhostSegments();

// Lines of one segment, relative to the cell's top left; empty for an unknown number.
std::vector<QLineF> SegmentLines(int segment, int W, int H);

// The decimal point of a cell at (x, y): a filled box between two corners.
struct Box {
    double x1, y1, x2, y2;
};
Box PointBox(int x, int y, int W, int H);

// Digit size from a surface's inner height: H = round(height - 6), W = H / 2 + 3.
int DigitHeight(int innerHeight);
int DigitWidth(int digitHeight);

} // namespace lcd

namespace strum {

enum class Kind { Center, Bottom, BottomCenter, VertMeter, HorMeter };
// The one line an instrument draws for value v on a surface SW x SH pixels.
QLineF NeedleLine(Kind kind, int v, int SW, int SH);

} // namespace strum
