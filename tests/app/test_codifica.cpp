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
    // A seed below 16 is written with one digit; the decoder reads two.
    const QString corto = CodificaConSeme(kChiavePassword, "abc", 9);
    EXPECT_EQ(corto.size(), 7);
    EXPECT_NE(Codifica("D", kChiavePassword, corto), "abc");

    // A character the code page lacks comes back as "?", as a typed one is compared.
    const QString polacco = QString::fromUtf8("Łódź€");
    EXPECT_EQ(Codifica("D", kChiavePassword, CodificaConSeme(kChiavePassword, polacco, 100)), TestoAnsi(polacco));
    EXPECT_EQ(TestoAnsi(polacco), QString::fromUtf8("?ód?€"));
}
