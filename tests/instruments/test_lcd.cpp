// The displays where geometry is the behaviour: pixels at chosen points of the segment table.
#include "instruments/LcdGeometry.h"
#include "instruments/mcLCD.h"
#include "platform/PictureSurface.h"

#include <QtMath>

#include <gtest/gtest.h>

namespace {

// A cell's pixel, relative to the cell's top left (the display starts at 2, 2).
struct Display {
    explicit Display(int width, int height) : surface(width, height) { lcd.NewLCD(&surface); }
    QColor at(int cell, int dx, int dy) const
    {
        const int W = lcd.DigitWidth();
        return surface.Image().pixelColor(2 + cell * (W + 5) + dx, 2 + dy);
    }
    platform::PictureSurface surface;
    mcLCD lcd;
};

} // namespace

TEST(Lcd, DigitsLightAndGhostTheirSegments)
{
    Display d(260, 27); // H = 21, W = 13, m = 6, n = 10; 12 blank cells for an empty text
    ASSERT_EQ(d.lcd.DigitHeight(), 21);
    ASSERT_EQ(d.lcd.DigitWidth(), 13);
    d.lcd.Caption("8607");
    // Eight blank cells before the four digits.
    const int c8 = 8, c6 = 9, c0 = 10, c7 = 11;
    const QPoint top(3, 0), middle(3, 10), lowerLeft(0, 15), upperRight(12, 5);
    EXPECT_EQ(d.at(c8, middle.x(), middle.y()), mcLCD::kAcceso);
    // A 6 with its top bar painted dark again, and no right upper bar lit.
    EXPECT_EQ(d.at(c6, top.x(), top.y()), mcLCD::kSpento);
    EXPECT_EQ(d.at(c6, upperRight.x(), upperRight.y()), mcLCD::kSpento);
    EXPECT_EQ(d.at(c6, lowerLeft.x(), lowerLeft.y()), mcLCD::kAcceso);
    // A 0 ghosts its middle bar; a 7 leaves it background.
    EXPECT_EQ(d.at(c0, middle.x(), middle.y()), mcLCD::kSpento);
    EXPECT_EQ(d.at(c7, middle.x(), middle.y()), mcLCD::kSfondo);
    EXPECT_EQ(d.at(c7, lowerLeft.x(), lowerLeft.y()), mcLCD::kSpento);
    // Between cells lies background, and the blank cells are all ghost.
    EXPECT_EQ(d.at(0, 15, 5), mcLCD::kSfondo);
    EXPECT_EQ(d.at(0, top.x(), top.y()), mcLCD::kSpento);
    EXPECT_EQ(d.surface.accessibleName(), "8607");
}

TEST(Lcd, PointsAndMinus)
{
    // The calculator's surface: H = 15, W = 10, nine cells, so "-12,5" leaves four blank cells.
    Display d(136, 21);
    d.lcd.Caption("-12,5");
    const int W = 10, H = 15;
    // The minus lights only its middle bar.
    EXPECT_EQ(d.at(4, 3, H / 2), mcLCD::kAcceso);
    EXPECT_EQ(d.at(4, 3, 0), mcLCD::kSpento);
    // The comma takes a whole cell: ghost digit with a lit point at its foot.
    const lcd::Box p = lcd::PointBox(0, 0, W, H);
    EXPECT_EQ(d.at(7, static_cast<int>(std::round((p.x1 + p.x2) / 2)), H), mcLCD::kAcceso);
    EXPECT_EQ(d.at(7, 3, 0), mcLCD::kSpento);
    EXPECT_EQ(d.at(8, W - 1, H - 2), mcLCD::kAcceso); // the 5's right lower bar in the last cell

    // A text too long runs off the edge.
    d.lcd.Caption("1234567890123");
    EXPECT_EQ(d.at(0, W - 1, 3), mcLCD::kAcceso);
}

TEST(Strum, NeedlesEndWhereTheScaleSays)
{
    using strum::Kind;
    const double d = 3.14 / 180; // the instruments' own pi
    struct Ago {
        Kind kind;
        int v, w, h;
        QLineF line;
    };
    const Ago aghi[] = {
        // Center: 270 degrees; 0 lower left, 500 up, 1000 lower right; r = round(100 / 2 - 6) = 44.
        {Kind::Center, 0, 100, 100, {50, 50, 50 - 44 * std::cos(-45 * d), 50 - 44 * std::sin(-45 * d)}},
        {Kind::Center, 1000, 100, 100, {50, 50, 50 - 44 * std::cos(225 * d), 50 - 44 * std::sin(225 * d)}},
        // Bottom: a quarter dial from the left to the top, r = round(100 - 20) = 80.
        {Kind::Bottom, 0, 100, 60, {90, 54, 90 - 80, 54}},
        // BottomCenter: 120 degrees from 30 to 150, r = round(60 - 12) = 48.
        {Kind::BottomCenter, 500, 100, 60, {50, 54, 50 - 48 * std::cos(90 * d), 54 - 48 * std::sin(90 * d)}},
        // Meters: bars at a tenth from the edges, and beyond the scale beyond them.
        {Kind::VertMeter, 1000, 100, 60, {100, 6, 0, 6}},
        {Kind::HorMeter, 0, 100, 60, {10, 60, 10, 0}},
        {Kind::HorMeter, 1500, 100, 60, {130, 60, 130, 0}},
        // 101 x 75: pivots take the whole-number quotient, ends the real one; radii round to even.
        {Kind::Center, 500, 101, 75, {50, 37, 50 - 44 * std::cos(90 * d), 37 - 44 * std::sin(90 * d)}}, // round(44.5)
        {Kind::Bottom, 0, 101, 75, {101 - 10, 75 - 7, 101 - 10.1 - 81, 75 - 7.5}},                        // round(80.8)
        {Kind::BottomCenter, 500, 101, 75, {50, 68, 50.5 - 60 * std::cos(90 * d), 67.5 - 60 * std::sin(90 * d)}},
    };
    for (const Ago& a : aghi) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(a.kind) << " at " << a.v << " on " << a.w << " x " << a.h);
        const QLineF got = strum::NeedleLine(a.kind, a.v, a.w, a.h);
        EXPECT_EQ(got.p1(), a.line.p1());
        EXPECT_NEAR(got.x2(), a.line.x2(), 1e-9);
        EXPECT_NEAR(got.y2(), a.line.y2(), 1e-9);
    }

    // On a surface: cleared, one line in the fore colour, the value as its name.
    platform::PictureSurface s(100, 100);
    s.SetForeColor(Qt::red);
    Strum strum;
    strum.NewLCD(&s);
    strum.Center(500);
    EXPECT_EQ(s.Image().pixelColor(50, 6), QColor(Qt::red));
    EXPECT_EQ(s.Image().pixelColor(20, 80), QColor(Qt::white));
    EXPECT_EQ(s.accessibleName(), "500");
    strum.HorMeter(0);
    EXPECT_EQ(s.Image().pixelColor(50, 6), QColor(Qt::white));
    EXPECT_EQ(s.Image().pixelColor(10, 50), QColor(Qt::red));
}
