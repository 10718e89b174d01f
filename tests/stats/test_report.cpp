// The report on a golden ledger, every label against the hand arithmetic.
#include "platform/Chart.h"
#include "stats/Report.h"
#include "support/Programma.h"

using namespace testing_support;

namespace {

class ReportTest : public ProgramTest {
protected:
    void SetUp() override
    {
        Avvia(true);
        Module1::dbSet.Execute("INSERT INTO System (Cod, Descrizione, Commissioni, CommissioniMin) VALUES ('T2','prova',2,5)");
        Module1::dbSet.Execute("UPDATE Settaggi SET CapitalGain = 12.5");
    }
    QWidget* report() { return frame->MostraFinestra("frmReport"); }
    QString labs(std::initializer_list<const char*> names) { return Etichette(report(), names); }
    platform::Chart* chart(const char* n) { return report()->findChild<platform::Chart*>(n); }
    void chiusa(double gp, double perc, double comm)
    {
        Module1::dbExe.Execute("INSERT INTO OperazioniChiuse (Data, giornoDiSettimana, Cod, GP, GPPercentuale, Commissioni) VALUES ('10/01/2003',6,'X',"
                               + num::SqlText(gp) + "," + num::SqlText(perc) + "," + num::SqlText(comm) + ")");
    }
};

} // namespace

TEST_F(ReportTest, GoldenLedgerThroughReplayAndReport)
{
    auto& exe = Module1::dbExe;
    AddTrade(exe, "13/01/2003", "Buy", "T2", "ENI", 100, 10);
    AddTrade(exe, "15/01/2003", "Buy", "T2", "ENI", 100, 12);
    AddTrade(exe, "17/01/2003", "Sell", "T2", "ENI", 50, 13);  // gp 100, 18.18%, comm 6.25
    AddTrade(exe, "20/01/2003", "Sell", "T2", "ENI", 150, 9);  // gp -300, -18.18%, comm 8.75
    AddTrade(exe, "21/01/2003", "Buy", "T2", "TIM", 1000, 2);
    AddTrade(exe, "22/01/2003", "Sell", "T2", "TIM", 1000, 2); // gp 0, 0%, comm 5 + 5
    frame->ControlloMenu();

    // Commissions 6.25 + 8.75 + 10 = 25; no tax on a gross -200; total (-200 - 25) - 0.
    EXPECT_EQ(labs({"lab_Gain", "lab_Lose", "lab_Commissioni", "lab_CapitalGain", "lab_TotaleGP"}), "100|300|25|0|-225");
    // floor(100 * 1/3) each, and they don't add up to 100.
    EXPECT_EQ(labs({"lab_OpGain", "lab_OpGainP", "lab_OpLoseP", "lab_OpPariP", "lab_NumOperazioni"}), "1|33%|33%|33%|3");
    EXPECT_EQ(labs({"lab_PercGain", "lab_PercLose", "lab_PercTotale", "lab_PercMedia"}), "18,18%|-18,18%|0|0");
    EXPECT_EQ(Module1::UtileNetto(), -225.0);

    platform::Chart* bil = chart("msc_Bilancio");
    // The capital gain read back from lab_CapitalGain.
    EXPECT_EQ(bil->DataAt(1, 1) + "|" + bil->DataAt(1, 4) + "|" + chart("msc_Operazioni")->DataAt(1, 3) + "|"
                  + chart("msc_OperazioniPercentuali")->DataAt(1, 2), "100|0|1|18,18");

    // The style switch redraws all three without losing their data.
    QTest::mouseClick(report()->findChild<QRadioButton*>("Option1(0)"), Qt::LeftButton);
    EXPECT_EQ(bil->ChartType() * 100 + chart("msc_OperazioniPercentuali")->ChartType(), 1414);
    EXPECT_EQ(bil->DataAt(1, 2), "300");
}

TEST_F(ReportTest, TaxOnTheGrossTestAndFlooredFigures)
{
    EXPECT_EQ(stats::CapitalGain(0, 130, 12.5), 0); // a gross of nothing pays nothing
    chiusa(150, 5, 65);
    chiusa(-50, -6, 65);
    chiusa(0, 0, 0);
    chiusa(0, 0, 0);
    // Gross 100, commissions 130, 12.5%: floor(|(100 - 130) * 12.5 / 100|) = floor(3.75) = 3.
    // (100 - 130) - 3; 5 - 6; floor(-1 / 4): -0.25 floors to -1.
    EXPECT_EQ(labs({"lab_CapitalGain", "lab_TotaleGP", "lab_PercTotale", "lab_PercMedia", "lab_OpPariP"}), "3|-33|-1|-1|50%");
    EXPECT_EQ(Module1::UtileNetto(), -33.0);

    // An emptied table leaves the window as it was.
    Module1::dbExe.Execute("DELETE * FROM OperazioniChiuse");
    QMetaObject::invokeMethod(report(), "Main");
    EXPECT_EQ(labs({"lab_TotaleGP"}), "-33");
    EXPECT_FALSE(Module1::UtileNetto().has_value());
    chiusa(10, 1, 1);
    Module1::sFilePortafoglio.clear();
    EXPECT_FALSE(Module1::UtileNetto().has_value()); // no portfolio named
}
