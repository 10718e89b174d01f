// What the preference windows compute without a window.
#include "app/Codifica.h"
#include "instruments/ClockGeometry.h"
#include "platform/Casuale.h"
#include "prefs/Consigli.h"

#include <QtMath>

#include <gtest/gtest.h>

#include <set>

TEST(SharedRandom, TwoStartsShowTheSameRulesUntilAPasswordIsScrambled)
{
    platform::Casuale primo, secondo;
    std::set<int> visti;
    for (int i = 0; i < 20; ++i) {
        const int n = prefs::ScostamentoConsiglio(primo);
        EXPECT_EQ(n, prefs::ScostamentoConsiglio(secondo));
        EXPECT_TRUE(n >= 0 && n < 120) << n;
        visti.insert(n);
    }
    EXPECT_GT(visti.size(), 10u);

    // Unscrambling leaves the shared generator where it was...
    platform::Casuale copia = platform::Generatore();
    EXPECT_EQ(Codifica("D", kChiavePassword, "5ADB"), "0");
    EXPECT_EQ(copia.Rnd(), platform::Generatore().Rnd());
    // ...scrambling seeds it from the clock, so the tips go another way.
    copia = platform::Generatore();
    Codifica("E", kChiavePassword, "segreto");
    std::vector<double> dopo, prima;
    for (int i = 0; i < 4; ++i) {
        dopo.push_back(platform::Generatore().Rnd());
        prima.push_back(copia.Rnd());
    }
    EXPECT_NE(dopo, prima);
}

TEST(ClockGeometry, HoursMinutesAndTheDialsMarks)
{
    const int r = 24;
    auto ora = [r](int h, int m) { return orologio::Disegna(r, QTime(h, m)).oraria.p2() - QPointF(r, r); };
    auto near = [](QPointF a, QPointF b) { return std::hypot(a.x() - b.x(), a.y() - b.y()) < 1e-3; };
    const double h = 0.7 * r;
    // 3:00: H = 90 - 180 + round(-180 / 12 + 15) = -90, tip to the right; y grows downward.
    EXPECT_TRUE(near(ora(3, 0), QPointF(h, 0)));
    EXPECT_TRUE(near(ora(6, 0), QPointF(0, h)));  // H = 0: down
    EXPECT_TRUE(near(ora(9, 0), QPointF(-h, 0))); // H = 90: left
    EXPECT_TRUE(near(ora(15, 0), ora(3, 0)));
    // 9:30: H = 270 - 180 + round(0 / 12 + 15) = 105, 15 degrees above the 9, halfway to the 10.
    const QPointF meta = ora(9, 30);
    EXPECT_NEAR(qRadiansToDegrees(std::atan2(-meta.y(), -meta.x())), 15.0, 1e-3);
    // Half a degree a minute, rounded half to even: 1 min -> 0.5 -> 0, 3 -> 1.5 -> 2, 5 -> 2.5 -> 2.
    EXPECT_EQ(orologio::AngoloOre(QTime(9, 1)), 90);
    EXPECT_EQ(orologio::AngoloOre(QTime(9, 3)), 92);
    EXPECT_EQ(orologio::AngoloOre(QTime(9, 5)), 92);

    const orologio::Quadrante q = orologio::Disegna(r, QTime(10, 30));
    EXPECT_TRUE(near(q.minuti.p2(), QPointF(r, r + 0.9 * r))); // :30 straight down
    ASSERT_EQ(q.punti.size(), 60u); // and no second hand at all
    ASSERT_EQ(q.tacche.size(), 12u);
    for (const QPointF& p : q.punti)
        EXPECT_NEAR(std::hypot(p.x() - r, p.y() - r), r, 1e-3);
    EXPECT_TRUE(near(q.tacche[3].p2(), QPointF(2 * r, r))); // 90 degrees: the mark at 3 o'clock

    // Fixed offsets on the machine's clock, wrapping round midnight.
    EXPECT_EQ(orologio::OraDelFuso(QTime(2, 0), -6), QTime(20, 0));
    EXPECT_EQ(orologio::OraDelFuso(QTime(20, 30, 15), 8), QTime(4, 30, 15));
}
