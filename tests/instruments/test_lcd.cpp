// The displays where geometry is the behaviour: pixels at chosen points of the segment table.
#include "instruments/LcdGeometry.h"
#include "instruments/Quadrante.h"
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
    EXPECT_EQ(d.at(c8, top.x(), top.y()), mcLCD::kAcceso);
    EXPECT_EQ(d.at(c8, middle.x(), middle.y()), mcLCD::kAcceso);
    // A 6 with its top bar painted dark again, and no right upper bar lit.
    EXPECT_EQ(d.at(c6, top.x(), top.y()), mcLCD::kSpento);
    EXPECT_EQ(d.at(c6, upperRight.x(), upperRight.y()), mcLCD::kSpento);
    EXPECT_EQ(d.at(c6, lowerLeft.x(), lowerLeft.y()), mcLCD::kAcceso);
    // A 0 ghosts its middle bar; a 7 leaves it background.
    EXPECT_EQ(d.at(c0, middle.x(), middle.y()), mcLCD::kSpento);
    EXPECT_EQ(d.at(c7, middle.x(), middle.y()), mcLCD::kSfondo);
    EXPECT_EQ(d.at(c7, top.x(), top.y()), mcLCD::kAcceso);
    EXPECT_EQ(d.at(c7, lowerLeft.x(), lowerLeft.y()), mcLCD::kSpento);
    // Between cells lies background, and the blank cells are all ghost.
    EXPECT_EQ(d.at(0, 15, 5), mcLCD::kSfondo);
    EXPECT_EQ(d.at(0, top.x(), top.y()), mcLCD::kSpento);
    EXPECT_EQ(d.surface.accessibleName(), "8607");
}

TEST(Lcd, PointsMinusLettersAndUnknownCharacters)
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

    // Letters keep the colour the previous character left: after a digit they are dark.
    Display e(260, 27);
    e.lcd.Caption("1T?"); // nine blank cells, then 1, T, ?
    EXPECT_EQ(e.at(10, 3, 0), mcLCD::kSpento);   // T's top bar, dark after the 1
    EXPECT_EQ(e.at(11, 3, 0), mcLCD::kSfondo);   // ? draws nothing, not even a ghost
    e.lcd.Caption("T");
    EXPECT_EQ(e.at(11, 3, 0), mcLCD::kTesto);    // at the start: the text colour

    // An empty caption is all ghost; a text too long runs off the edge.
    Display f(136, 21);
    f.lcd.Caption(QString());
    for (int cell = 0; cell < 9; ++cell)
        EXPECT_EQ(f.at(cell, 3, 0), mcLCD::kSpento) << cell;
    f.lcd.Caption("1234567890123");
    EXPECT_EQ(f.at(0, W - 1, 3), mcLCD::kAcceso);
}

TEST(Strum, NeedlesEndWhereTheScaleSays)
{
    const double d2r = 3.14 / 180;
    // Center: a 270-degree dial; 0 lower left, 500 up, 1000 lower right.
    const QLineF c0 = strum::NeedleLine(strum::Kind::Center, 0, 100, 100);
    EXPECT_EQ(c0.p1(), QPointF(50, 50));
    EXPECT_NEAR(c0.x2(), 50 - 44 * std::cos(-45 * d2r), 1e-9);
    EXPECT_NEAR(c0.y2(), 50 - 44 * std::sin(-45 * d2r), 1e-9);
    const QLineF c500 = strum::NeedleLine(strum::Kind::Center, 500, 100, 100);
    EXPECT_NEAR(c500.x2(), 50, 0.1);
    EXPECT_NEAR(c500.y2(), 6, 0.01);
    const QLineF c1000 = strum::NeedleLine(strum::Kind::Center, 1000, 100, 100);
    EXPECT_GT(c1000.x2(), 80);
    EXPECT_GT(c1000.y2(), 80);
    // Bottom: a quarter dial from the left to the top, pivot near the lower right corner.
    const QLineF b0 = strum::NeedleLine(strum::Kind::Bottom, 0, 100, 60);
    EXPECT_EQ(b0.p1(), QPointF(90, 54));
    EXPECT_NEAR(b0.x2(), 90 - 80, 1e-9);
    EXPECT_NEAR(strum::NeedleLine(strum::Kind::Bottom, 1000, 100, 60).y2(), 54 - 80, 0.01);
    // BottomCenter: 120 degrees, from 30 to 150.
    const QLineF bc500 = strum::NeedleLine(strum::Kind::BottomCenter, 500, 100, 60);
    EXPECT_EQ(bc500.p1(), QPointF(50, 54));
    EXPECT_NEAR(bc500.x2(), 50, 0.1);
    EXPECT_NEAR(bc500.y2(), 54 - 48, 0.01);
    EXPECT_NEAR(strum::NeedleLine(strum::Kind::BottomCenter, 0, 100, 60).x2(), 50 - 48 * std::cos(30 * d2r), 1e-9);
    // Meters: bars at a tenth from the edges, and beyond the scale beyond them.
    EXPECT_DOUBLE_EQ(strum::NeedleLine(strum::Kind::VertMeter, 1000, 100, 60).y1(), 6);
    EXPECT_DOUBLE_EQ(strum::NeedleLine(strum::Kind::VertMeter, 0, 100, 60).y1(), 54);
    EXPECT_DOUBLE_EQ(strum::NeedleLine(strum::Kind::VertMeter, 500, 100, 60).y1(), 30);
    EXPECT_DOUBLE_EQ(strum::NeedleLine(strum::Kind::HorMeter, 0, 100, 60).x1(), 10);
    EXPECT_DOUBLE_EQ(strum::NeedleLine(strum::Kind::HorMeter, 1000, 100, 60).x1(), 90);
    EXPECT_DOUBLE_EQ(strum::NeedleLine(strum::Kind::HorMeter, 1500, 100, 60).x1(), 130);

    // An odd surface, 101 x 75: pivots take the whole-number quotient (\), ends the real one (/).
    const QLineF oc = strum::NeedleLine(strum::Kind::Center, 500, 101, 75);
    EXPECT_EQ(oc.p1(), QPointF(50, 37)); // 101 \ 2, 75 \ 2
    EXPECT_NEAR(oc.x2(), 50 - 44 * std::cos(90 * d2r), 1e-9); // r = round(50.5 - 6) = 44, to even
    const QLineF ob = strum::NeedleLine(strum::Kind::Bottom, 0, 101, 75);
    EXPECT_EQ(ob.p1(), QPointF(101 - 10, 75 - 7));              // 101 \ 10, 75 \ 10
    EXPECT_NEAR(ob.x2(), 101 - 10.1 - 81, 1e-9);                 // r = round(101 - 20.2) = 81
    EXPECT_NEAR(ob.y2(), 75 - 7.5, 1e-9);
    const QLineF obc = strum::NeedleLine(strum::Kind::BottomCenter, 500, 101, 75);
    EXPECT_EQ(obc.p1(), QPointF(50, 75 - 7));
    EXPECT_NEAR(obc.x2(), 50.5 - 60 * std::cos(90 * d2r), 1e-9); // r = round(75 - 15) = 60
    EXPECT_NEAR(obc.y2(), 75 - 7.5 - 60 * std::sin(90 * d2r), 1e-9);

    // The printed face keeps its labels clear of its border: the last one of a quarter
    // dial stands near the right edge, where nothing but the border may be.
    strum::Scala scala;
    scala.kind = strum::Kind::Bottom;
    scala.step = 500;
    scala.labelEvery = 1;
    scala.label = [](int v) -> QString { return QString::number(v / 10) + '%'; };
    const QImage faccia = strum::Quadrante(scala, QSize(112, 112));
    for (int x = 107; x < 111; ++x)
        for (int y = 8; y < 104; ++y)
            EXPECT_EQ(faccia.pixelColor(x, y).alpha(), 0) << x << ", " << y;

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
