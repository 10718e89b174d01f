// What the preference windows compute without a window.
#include "app/Codifica.h"
#include "platform/Casuale.h"
#include "prefs/Consigli.h"

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
