#include "instruments/LcdGeometry.h"

#include "platform/Numbers.h"

#include <QHash>

#include <cmath>

namespace lcd {

namespace {

Glyph digit(std::vector<int> lit, std::vector<int> dark) { return {true, std::move(lit), std::move(dark)}; }
Glyph letter(std::vector<int> segments) { return {false, std::move(segments), {}}; }

const QHash<QChar, Glyph>& glyphs()
{
    static const QHash<QChar, Glyph> table = {
        {'0', digit({11, 12, 2, 3, 41, 42, 5, 6}, {71, 72})},
        {'1', digit({2, 3}, {11, 12, 5, 6, 41, 42, 71, 72})},
        {'2', digit({11, 12, 2, 71, 72, 5, 41, 42}, {3, 6})},
        {'3', digit({11, 12, 2, 71, 72, 3, 41, 42}, {5, 6})},
        {'4', digit({2, 3, 71, 72, 6}, {41, 42, 11, 12, 5})},
        {'5', digit({11, 12, 6, 71, 72, 3, 41, 42}, {2, 5})},
        // Lit top bar painted dark again: a 6 shows with a dark top.
        {'6', digit({11, 12, 6, 71, 72, 3, 41, 42, 5}, {11, 12, 2})},
        // The middle bar is left unpainted: no ghost there.
        {'7', digit({11, 12, 2, 3}, {5, 6, 41, 42})},
        {'8', digit({11, 12, 2, 3, 41, 42, 5, 6, 71, 72}, {})},
        {'9', digit({11, 12, 2, 3, 41, 42, 6, 71, 72}, {5})},
        {'-', digit({71, 72}, {2, 3, 5, 6, 11, 12, 41, 42})},
        {'A', letter({11, 12, 2, 3, 5, 6, 71, 72})},
        {'B', letter({11, 12, 2, 3, 41, 42, 72, 81, 82})},
        {'C', letter({11, 12, 5, 6, 41, 42})},
        {'D', letter({11, 12, 2, 3, 41, 42, 81, 82})},
        {'E', letter({11, 12, 41, 42, 5, 6, 71})},
        {'F', letter({11, 12, 5, 6, 71})},
        {'G', letter({11, 12, 3, 41, 42, 5, 6, 72})},
        {'H', letter({2, 3, 5, 6, 71, 72})},
        {'I', letter({81, 82})},
        {'J', letter({2, 3, 41, 42, 5})},
        {'K', letter({5, 6, 71, 92, 94})},
        {'L', letter({41, 42, 5, 6})},
        {'M', letter({2, 3, 5, 6, 91, 92})},
        {'N', letter({2, 3, 5, 6, 91, 94})},
        {'O', letter({11, 12, 2, 3, 41, 42, 5, 6})},
        {'P', letter({11, 12, 2, 5, 6, 71, 72})},
        {'Q', letter({11, 12, 2, 3, 41, 42, 5, 6, 94})},
        {'R', letter({11, 12, 2, 5, 6, 71, 72, 94})},
        {'S', letter({11, 12, 3, 41, 42, 6, 71, 72})},
        {'T', letter({11, 12, 81, 82})},
        {'U', letter({2, 3, 41, 42, 5, 6})},
        {'V', letter({5, 6, 92, 93})},
        {'W', letter({2, 3, 5, 6, 93, 94})},
        {'X', letter({91, 92, 93, 94})},
        {'Y', letter({82, 91, 92})},
        {'Z', letter({11, 12, 41, 42, 92, 93})},
        {'b', letter({3, 5, 6, 41, 42, 71, 72})},
        {'c', letter({5, 41, 42, 71, 72})},
        {'d', letter({2, 3, 5, 41, 42, 71, 72})},
        {'h', letter({5, 3, 6, 71, 72})},
        {'i', letter({82})},
        {'l', letter({81, 82})},
        {'n', letter({71, 72, 3, 5})},
        {'o', letter({41, 42, 71, 72, 3, 5})},
        {'r', letter({71, 72, 5})},
        {'t', letter({71, 6, 41, 42, 5})},
        {'u', letter({5, 41, 42, 3})},
        {'/', letter({92, 93})},
        {'\\', letter({91, 94})},
        {'+', letter({71, 72, 81, 82})},
        {'*', letter({71, 72, 81, 82, 91, 92, 93, 94})},
    };
    return table;
}

QLineF line(double x1, double y1, double x2, double y2) { return QLineF(x1, y1, x2, y2); }

} // namespace

Glyph GlyphOf(QChar c) { return glyphs().value(c); }

const std::vector<int>& GhostSegments()
{
    static const std::vector<int> ghost = {11, 12, 2, 3, 41, 42, 5, 6, 71, 72};
    return ghost;
}

std::vector<QLineF> SegmentLines(int segment, int W, int H)
{
    const int m = W / 2;
    const int n = H / 2;
    switch (segment) {
    case 11: return {line(1, 0, m - 1, 0), line(2, 1, m, 1), line(3, 2, m - 1, 2)};
    case 12: return {line(m + 1, 0, W - 1, 0), line(m, 1, W - 2, 1), line(m + 1, 2, W - 3, 2)};
    case 2: return {line(W - 1, 1, W - 1, n - 1), line(W - 2, 2, W - 2, n), line(W - 3, 3, W - 3, n - 1)};
    case 3: return {line(W - 1, n + 2, W - 1, H), line(W - 2, n + 1, W - 2, H - 1), line(W - 3, n + 2, W - 3, H - 2)};
    case 41: return {line(3, H - 2, m - 1, H - 2), line(2, H - 1, m, H - 1), line(1, H, m - 1, H)};
    case 42: return {line(m + 1, H - 2, W - 3, H - 2), line(m, H - 1, W - 2, H - 1), line(m + 1, H, W - 1, H)};
    case 5: return {line(0, n + 2, 0, H), line(1, n + 1, 1, H - 1), line(2, n + 2, 2, H - 2)};
    case 6: return {line(0, 1, 0, n - 1), line(1, 2, 1, n), line(2, 3, 2, n - 1)};
    case 71: return {line(3, n - 1, m - 1, n - 1), line(2, n, m, n), line(3, n + 1, m - 1, n + 1)};
    case 72: return {line(m + 1, n - 1, W - 3, n - 1), line(m, n, W - 2, n), line(m + 1, n + 1, W - 3, n + 1)};
    case 81: return {line(m - 1, 3, m - 1, n - 1), line(m, 2, m, n), line(m + 1, 3, m + 1, n - 1)};
    case 82: return {line(m - 1, n + 3, m - 1, H - 1), line(m, n + 2, m, H), line(m + 1, n + 3, m + 1, H - 1)};
    case 91:
    case 92:
    case 93:
    case 94: {
        std::vector<QLineF> lines;
        for (int k = 0; k <= 4; ++k) {
            if (segment == 91)
                lines.push_back(line(3, 2 + k, m - 3, n - 6 + k));
            else if (segment == 92)
                lines.push_back(line(m + 3, n - 6 + k, W - 3, 2 + k));
            else if (segment == 93)
                lines.push_back(line(3, H - 2 - k, m - 3, n + 6 - k));
            else
                lines.push_back(line(m + 3, n + 6 - k, W - 3, H - 2 - k));
        }
        return lines;
    }
    default: return {};
    }
}

Box PointBox(int x, int y, int W, int H)
{
    const double h14 = H / 14.0;
    return {x + W / 2 - h14, static_cast<double>(y + H), static_cast<double>(x + W / 2), y + H - h14};
}

int DigitHeight(int innerHeight) { return static_cast<int>(num::Round(innerHeight - 6.0)); }
int DigitWidth(int digitHeight) { return digitHeight / 2 + 3; }

} // namespace lcd

namespace strum {

namespace {
constexpr double kPi = 3.14; // as the instruments have always computed it
int idiv(double a, int b) { return static_cast<int>(num::Round(a)) / b; }
} // namespace

QLineF NeedleLine(Kind kind, int v, int SW, int SH)
{
    switch (kind) {
    case Kind::Center: {
        const double r = num::Round(SW / 2.0 - 6);
        const double a = ((v / 1000.0) * 270 - 45) * kPi / 180;
        return QLineF(idiv(SW, 2), idiv(SH, 2), idiv(SW, 2) - r * std::cos(a), idiv(SH, 2) - r * std::sin(a));
    }
    case Kind::Bottom: {
        const double r = num::Round(SW - 2 * (SW / 10.0));
        const double a = ((v / 1000.0) * 90) * kPi / 180;
        return QLineF(SW - idiv(SW, 10), SH - idiv(SH, 10), SW - SW / 10.0 - r * std::cos(a),
                      SH - SH / 10.0 - r * std::sin(a));
    }
    case Kind::BottomCenter: {
        const double r = num::Round(SH - 2 * (SH / 10.0));
        const double a = ((v / 1000.0) * 120 + 30) * kPi / 180;
        return QLineF(idiv(SW, 2), SH - idiv(SH, 10), SW / 2.0 - r * std::cos(a), SH - SH / 10.0 - r * std::sin(a));
    }
    case Kind::VertMeter: {
        const double w = num::Round(SW);
        const double y = (std::abs(v - 1000) / 1000.0) * (SH - 2 * (SH / 10.0)) + SH / 10.0;
        return QLineF(SW, y, SW - w, y);
    }
    case Kind::HorMeter: {
        const double h = num::Round(SH);
        const double x = (v / 1000.0) * (SW - 2 * (SW / 10.0)) + SW / 10.0;
        return QLineF(x, SH, x, SH - h);
    }
    }
    return {};
}

} // namespace strum
