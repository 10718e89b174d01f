// The world clocks: the frame's clock bar and the painting of one dial.
#include "instruments/ClockGeometry.h"
#include "instruments/clClock.h"
#include "platform/PictureSurface.h"
#include "support/Programma.h"

#include <QTimer>

using namespace testing_support;

TEST_F(ProgramTest, ClockBarShowsFiveCitiesWithTheirOffsetsInTheSchemeColour)
{
    Avvia();
    // Milano, New York, Tokyo, Londra, HongKong.
    const char* nomi[5] = {"picClock", "picClock2", "picClock3", "picClock4", "picClock5"};
    const int ore[5] = {0, -6, 8, -1, 7};
    auto* timer = frame->findChild<QTimer*>("Timer2");
    ASSERT_TRUE(timer && timer->isActive());
    // Read between two looks at the machine's clock, so a minute turning over is no failure.
    auto shown = [&]() {
        QStringList s;
        for (const char* n : nomi)
            s << frame->findChild<QWidget*>(n)->accessibleName();
        return s;
    };
    auto expected = [&](QTime t) {
        QStringList s;
        for (int h : ore)
            s << orologio::OraDelFuso(t, h).toString("HH:mm");
        return s;
    };
    const QTime prima = QTime::currentTime();
    ASSERT_TRUE(QMetaObject::invokeMethod(timer, "timeout", Qt::DirectConnection)); // one tick, now
    const QStringList visti = shown();
    EXPECT_TRUE(visti == expected(prima) || visti == expected(QTime::currentTime())) << visti.join(' ').toStdString();
    // The hands in the colour of the scheme: Colori.ClockLancette = 2051961 = 0x1F4F79.
    EXPECT_EQ(frame->findChild<platform::PictureSurface*>("picClock")->ForeColor(), QColor(0x1F, 0x4F, 0x79));
}

TEST(ClockPainting, HandsDotsAndNoRepaintOfTheSameSecond)
{
    platform::PictureSurface s(49, 49);
    s.SetBackColor(Qt::white);
    s.SetForeColor(Qt::black);
    clClock clock;
    clock.diameter = 24; // round(49 / 2), a tie to even
    clock.SetClockTime(QTime(3, 0, 0));
    clock.PaintHands(&s);
    EXPECT_EQ(s.accessibleName(), "03:00");
    const QImage& img = s.Image();
    auto ink = [&img](int x, int y) { return img.pixelColor(x, y) != Qt::white; };
    // Hour hand to the right (0.7 x 24 = 16.8 px), minute hand up (0.9 x 24 = 21.6 px), nothing left or down.
    EXPECT_TRUE(ink(24 + 14, 24));
    EXPECT_TRUE(ink(24, 24 - 19));
    EXPECT_FALSE(ink(24 - 14, 24));
    EXPECT_FALSE(ink(24, 24 + 14));
    EXPECT_TRUE(ink(24, 48)); // the dot at the bottom of the dial (i = 0: sin 0, cos 0)

    // The same time to the second paints nothing; the next second does.
    s.Cls();
    clock.SetClockTime(QTime(3, 0, 0, 500));
    clock.PaintHands(&s);
    EXPECT_FALSE(ink(24 + 14, 24));
    clock.SetClockTime(QTime(21, 0, 1));
    clock.PaintHands(&s);
    EXPECT_TRUE(ink(24 - 14, 24)); // 9 o'clock in the evening: left
    EXPECT_EQ(s.accessibleName(), "21:00");

    // A quarter past, the minute hand right; a quarter to, left (the hour hand is too short to reach).
    for (const auto& [ora, destra] : {std::pair{QTime(12, 15), true}, std::pair{QTime(12, 45), false}}) {
        s.Cls();
        clock.SetClockTime(ora);
        clock.PaintHands(&s);
        EXPECT_EQ(ink(24 + 19, 24), destra) << ora.toString().toStdString();
        EXPECT_EQ(ink(24 - 19, 24), !destra) << ora.toString().toStdString();
    }
}
