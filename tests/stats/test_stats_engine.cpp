// The statistics passes without a window: runs, frequency tables and the rebuilt
// error counters. Their limits are proven on the windows, with the files checked.
#include "stats/Errori.h"
#include "stats/Report.h"
#include "stats/Serie.h"
#include "support/Fixture.h"

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

QList<double> lunghezze(const stats::Serie& s)
{
    QList<double> out;
    for (int i = 1; i <= s.numSerie; ++i)
        out << s.lunghezza[i];
    return out;
}

} // namespace

TEST(Serie, ARunIsRecordedOnlyWhenTheOtherSideArrives)
{
    // The last run stays open: +1, +2, -1 records the run of 2 alone.
    stats::Serie s = stats::ContaSerie({1, 2, -1});
    EXPECT_EQ(lunghezze(s), QList<double>{2});
    EXPECT_EQ(s.valore[1], 3);

    // A zero after wins closes them, and leaves no losing run of its own.
    s = stats::ContaSerie({5, 0, 3, -1});
    EXPECT_EQ(lunghezze(s), (QList<double>{1, 1}));
    EXPECT_EQ(s.valore[2], 3);

    // Inside a losing run a zero adds to its length: -2, 0, -3 is a run of -3 worth -5.
    s = stats::ContaSerie({-2, 0, -3, 4});
    EXPECT_EQ(lunghezze(s), QList<double>{-3});
    EXPECT_EQ(s.valore[1], -5);

    // All on one side: nothing recorded.
    EXPECT_EQ(stats::ContaSerie({1, 2, 3}).numSerie, 0);
    EXPECT_EQ(stats::ContaSerie({0, -1, 0}).numSerie, 0);
}

TEST(Serie, FrequenciesSortAndShares)
{
    const stats::Serie s = stats::ContaSerie({1, -1, 1, 1, -1, -1, 1, 1, 1, -1, -1, 1, -1, 1, 1, 5});
    // Runs 1, -1, 2, -2, 3, -2, 1, -1, then the 2 left open.
    EXPECT_EQ(lunghezze(s), (QList<double>{1, -1, 2, -2, 3, -2, 1, -1}));
    stats::FrequenzeMDD f = stats::ContaFrequenze<100>(s.lunghezza, s.numSerie);
    EXPECT_EQ(f.numDistinti, 5);
    stats::Ordina(f);
    QList<double> valori, conteggi;
    for (int i = 1; i <= f.numDistinti; ++i)
        valori << f.righe[i].valore, conteggi << f.righe[i].conteggio;
    EXPECT_EQ(valori, (QList<double>{3, 2, 1, -1, -2})); // 2 and -2 are two rows
    EXPECT_EQ(conteggi, (QList<double>{1, 1, 2, 2, 2}));

    const stats::TabellaGrafico g = stats::Grafico(f, s.numSerie);
    EXPECT_EQ(*g[1].y, 12.5); // 100 * 1 / 8
    EXPECT_EQ(*g[3].y, 25);   // 100 * 2 / 8

    // Shares round half to even: 100 * 1 / 32 = 3.125 -> 3.12; 100 / 3 -> 33.33.
    num::FixedTable<double, 0, 1000> t;
    for (int i = 1; i <= 32; ++i)
        t[i] = i == 1 ? 1.0 : 7.0;
    stats::FrequenzeRisk r = stats::ContaFrequenze<1000>(t, 32);
    stats::Ordina(r);
    EXPECT_EQ(*stats::Grafico(r, 32)[2].y, 3.12);
    EXPECT_EQ(*stats::Grafico(r, 3)[2].y, 33.33);
}

TEST(Report, WholeFiguresAreFlooredAndWrittenAsAnyNumber)
{
    EXPECT_EQ(stats::TestoIntero(-0.5), "-1"); // floor, not truncation
    // 16 digits: the default text keeps 15 and takes the exponent form, past any integer too.
    EXPECT_EQ(stats::TestoIntero(1234567890123456.7), "1,23456789012346E+15");
    EXPECT_EQ(stats::TestoIntero(1e20), "1E+20");
}

TEST(Errori, MissedGainIsTheFlooredDistanceEitherSide)
{
    EXPECT_EQ(stats::MancatoGuadagno(7, 10.25, 10), 1);  // floor(7 * 0.25) = floor(1.75)
    EXPECT_EQ(stats::MancatoGuadagno(3, 10, 10.25), 0);  // floor(3 * 0.25) = floor(0.75)
    EXPECT_EQ(stats::MancatoGuadagno(100, 12, 12), 0);
    EXPECT_EQ(stats::MancatoGuadagno(1000, 2.5, 4), 1500);
}

// An error's Importo comes from the cursor left by the previous error, opened before
// the previous update: the amounts below come out of that order and of no other.
TEST(Errori, AmountsFollowTheCursorOfThePreviousError)
{
    ProgramFolder folder;
    store::Database set, exe;
    set.Open(folder.File("DataSet.qvd"));
    exe.Open(folder.NewPortfolio());
    // What the last portfolio shown left behind; the reset must not reach the first read.
    set.Execute("UPDATE Errori SET Contatore = 9, Importo = 99");
    set.Execute("UPDATE Errori SET Importo = 7.5 WHERE Cod = 'NE'");
    AddTrade(exe, "13/01/2003", "Buy", "T", "A", 100, 10, "NE");
    exe.Execute("UPDATE Eseguiti SET PrezzoOttimale = 9 WHERE Cod = 'A'"); // a clean trade costs nothing
    auto errore = [&exe](const char* cod, const char* err, double qta, double prezzo, double ottimale) {
        AddTrade(exe, "14/01/2003", "Buy", "T", cod, qta, prezzo, err);
        exe.Execute(QStringLiteral("UPDATE Eseguiti SET PrezzoOttimale = %1 WHERE Cod = '%2'").arg(ottimale).arg(cod));
    };
    errore("G", "EA", 3, 10, 20);
    exe.Execute("UPDATE Eseguiti SET Errore = NULL WHERE Cod = 'G'"); // no code at all counts as clean
    errore("B", "EA", 10, 10, 11);    // gain 10
    errore("C", "EA", 20, 10, 11);    // gain 20
    errore("D", "ER", 5, 11, 10);     // gain 5
    errore("E", "EA", 100, 10, 10);   // gain 0
    store::Recordset eseguiti = exe.OpenRecordset(QStringLiteral("SELECT * FROM Eseguiti"));
    store::Recordset catalogo = set.OpenRecordset(QStringLiteral("SELECT  * FROM Errori"));
    const stats::ConteggioErrori c = stats::ContaErrori(set, eseguiti, catalogo);

    // EA first: NE's 7.5 as the cursor saw it before the reset + 10 = 17.5 (a point in the statement).
    // EA second: EA as it stood before the first update (0) + 20 = 20.
    // ER: EA as it stood before the second update (17.5) + 5 = 22.5.
    // EA third: ER before its update (0) + 0 = 0.
    EXPECT_EQ(Rows(set, "SELECT Cod, Contatore, Importo FROM Errori WHERE Contatore > 0 OR Importo <> 0 ORDER BY Cod"),
              (QStringList{"EA|3|0", "ER|1|22,5"}));
    EXPECT_EQ(c.codiceNessunErrore, "NE");
    EXPECT_EQ(c.totaleErrori, 4);
    EXPECT_EQ(c.numEseguiti, 6);
    EXPECT_EQ(c.totaleMancati, 10 + 20 + 5 + 0); // the one true sum

    // No trades: nothing read, nothing written, the figures unset.
    exe.Execute("DELETE * FROM Eseguiti");
    eseguiti = exe.OpenRecordset(QStringLiteral("SELECT * FROM Eseguiti"));
    const stats::ConteggioErrori vuoto = stats::ContaErrori(set, eseguiti, catalogo);
    EXPECT_FALSE(vuoto.totaleErrori.has_value());
    EXPECT_FALSE(vuoto.numEseguiti.has_value());
}
