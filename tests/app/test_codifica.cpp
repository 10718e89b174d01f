#include "app/Codifica.h"

#include <gtest/gtest.h>

TEST(Codifica, ScramblesWithASeedAndUnscramblesBack)
{
    // Seed 0x5A: ('0' + 90) mod 255 = 138, XOR 'Q' (81) = 219 = DB.
    EXPECT_EQ(CodificaConSeme(kChiavePassword, "0", 0x5A), "5ADB");
    EXPECT_EQ(Codifica("D", kChiavePassword, "5ADB"), "0");

    // The euro and the typographic quotes are one byte each in the code page, so they come back.
    for (const QString& pwd : {QString("segreto"), QString("Con Spazi e l'apostrofo"), QString(""),
                               QString::fromUtf8("Più di 5€ “netti” – è così")}) {
        for (int seed : {16, 100, 255}) {
            const QString coded = CodificaConSeme(kChiavePassword, pwd, seed);
            EXPECT_EQ(coded.size(), 2 + 2 * pwd.size());
            EXPECT_FALSE(coded.contains('\'')); // hex and blanks only
            EXPECT_EQ(Codifica("D", kChiavePassword, coded), pwd) << seed;
        }
    }
    // Random seeds: the same text scrambles differently but always decodes, seed below 16 aside.
    int decoded = 0;
    for (int i = 0; i < 200; ++i) {
        const QString coded = Codifica("E", kChiavePassword, "Password1");
        if (Codifica("D", kChiavePassword, coded) == "Password1")
            ++decoded;
    }
    EXPECT_GT(decoded, 150);

    // A character the code page lacks comes back as "?", as a typed one is compared.
    const QString polacco = QString::fromUtf8("Łódź€");
    EXPECT_EQ(Codifica("D", kChiavePassword, CodificaConSeme(kChiavePassword, polacco, 100)), TestoAnsi(polacco));
    EXPECT_EQ(TestoAnsi(polacco), QString::fromUtf8("?ód?€"));
}

TEST(Codifica, SmallSeedsDoNotDecodeAndValuesBelowSixteenGetABlank)
{
    // A seed below 16 is written with one digit; the decoder reads two.
    const QString coded = CodificaConSeme(kChiavePassword, "abc", 9);
    EXPECT_TRUE(coded.startsWith('9'));
    EXPECT_EQ(coded.size(), 7);
    EXPECT_NE(Codifica("D", kChiavePassword, coded), "abc");

    // Some seed makes a pair fall below 16: it is written with a leading blank and still decodes.
    bool sawBlank = false;
    for (int seed = 16; seed < 256 && !sawBlank; ++seed) {
        const QString c = CodificaConSeme(kChiavePassword, "xyz", seed);
        for (int i = 2; i < c.size(); i += 2)
            if (c[i] == ' ')
                sawBlank = true;
        EXPECT_EQ(Codifica("D", kChiavePassword, c), "xyz");
    }
    EXPECT_TRUE(sawBlank);
}
