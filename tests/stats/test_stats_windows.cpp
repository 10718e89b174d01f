// The draw-down, risk, averages and weekday windows on small hand-made ledgers,
// read where a user reads them: labels, grids, chart readers, dials.
#include "platform/Chart.h"
#include "platform/FailureReport.h"
#include "platform/FlexGrid.h"
#include "platform/Numbers.h"
#include "platform/PictureSurface.h"
#include "support/Programma.h"

#include <QChart>
#include <QTimer>
#include <QXYSeries>

using namespace testing_support;

namespace {

class StatsWindowsTest : public ProgramTest {
protected:
    void SetUp() override { Avvia(true); }

    // A closed operation written straight into the table the windows read.
    void chiusa(double perc, double gp = 0, const char* data = "13/01/2003", double qta = 0, double prezzo = 0)
    {
        Module1::dbExe.Execute(QStringLiteral("INSERT INTO OperazioniChiuse (Data, GP, GPPercentuale, Qta, Prezzo) VALUES "
                                              "('%1',%2,%3,%4,%5)")
                                   .arg(data, num::SqlText(gp), num::SqlText(perc), num::SqlText(qta), num::SqlText(prezzo)));
    }
    void svuota() { Module1::dbExe.Execute("DELETE * FROM OperazioniChiuse"); }
    QWidget* apri(const char* name) { return frame->MostraFinestra(QString::fromLatin1(name)); }
    template <class T> T* in(QWidget* w, const char* name) { return w->findChild<T*>(QString::fromLatin1(name)); }
    QString dial(QWidget* w, const char* name) { return in<platform::PictureSurface>(w, name)->accessibleName(); }
    void refresh(QWidget* w) { QMetaObject::invokeMethod(w, "Main", Qt::DirectConnection); }
    // Rows 1.. of a grid, cells joined by '|'; the header row apart.
    QStringList righe(platform::FlexGrid* g)
    {
        QStringList out;
        for (int r = 1; r < g->Rows(); ++r)
            out << g->TextMatrix(r, 0) + '|' + g->TextMatrix(r, 1);
        return out;
    }
    QStringList colonna(platform::Chart* c, int column)
    {
        QStringList out;
        for (int r = 1; r <= c->RowCount(); ++r)
            out << c->DataAt(r, column);
        return out;
    }
    void chiudi(const char* name)
    {
        platform::Forms::Unload(QString::fromLatin1(name));
        FlushDeletes();
    }
    QWidget* riapri(const char* name)
    {
        chiudi(name);
        return apri(name);
    }
    // Every byte of both databases and their logs.
    QByteArray impronta()
    {
        QByteArray all;
        for (const char* f : {"DataSet.qvd", "DataSet.qvd-wal", "DataExe.qvd", "DataExe.qvd-wal"})
            all += FileBytes(path(f)) + '#';
        return all;
    }
};

} // namespace

TEST_F(StatsWindowsTest, DrawDownGridIsNeverClearedAndARefreshForgetsTheStyle)
{
    // Runs 1, -1, 2, -3, the last win open; their sums (2,5 -0,5 3,25 -7) are another series.
    for (double p : {2.5, -0.5, 3.0, 0.25, -4.0, 0.0, -3.0, 7.0})
        chiusa(p);
    QCoreApplication::processEvents(); // the frame has settled, as before any user's click
    QWidget* w = apri("frmMDD");
    auto* grid = in<platform::FlexGrid>(w, "MSFlexGrid_MDD");
    auto* serie = in<platform::Chart>(w, "msc_SeqPosNeg");
    auto* freq = in<platform::Chart>(w, "msc_FrequenzaMDD");
    // Longest win first, down to the longest loss; the share of 4 runs, one empty row below.
    EXPECT_EQ(righe(grid), (QStringList{"2|25%", "1|25%", "-1|25%", "-3|25%", "|"}));
    EXPECT_EQ(colonna(serie, 1), (QStringList{"1", "-1", "2", "-3"}));
    EXPECT_EQ(serie->ChartType(), platform::Chart::Bar3D);
    EXPECT_EQ(freq->RowCount(), 51); // the whole chart table, row 0 empty
    EXPECT_EQ(colonna(freq, 1).mid(0, 6).join(' '), " 2 1 -1 -3 ");
    EXPECT_EQ(freq->DataAt(5, 2), "25");
    // Drawn when the refresh is over: one line through the four points.
    auto* punti = qobject_cast<QXYSeries*>(freq->ChartItem()->series().value(0));
    ASSERT_NE(punti, nullptr);
    EXPECT_EQ(punti->count(), 4);

    auto* linee = in<QRadioButton>(w, "Option1(4)");
    QTest::mouseClick(linee, Qt::LeftButton);
    EXPECT_EQ(serie->ChartType(), platform::Chart::Line2D);

    // A shorter table: rows 1 and 2 rewritten, the old rows 3 and 4 stay, two more rows below.
    svuota();
    for (double p : {1, -1, 1})
        chiusa(p);
    refresh(w);
    EXPECT_EQ(righe(grid), (QStringList{"1|50%", "-1|50%", "-1|25%", "-3|25%", "|", "|", "|"}));
    EXPECT_EQ(serie->ChartType(), platform::Chart::Bar3D);
    EXPECT_TRUE(linee->isChecked()); // the buttons keep their state
}

TEST_F(StatsWindowsTest, RiskSumsRunsInPercentAndCountsExactPercentages)
{
    // A zero has its own row, and continues the losing run.
    for (double p : {1.5, 1.5, -2.0, 0.0})
        chiusa(p);
    Module1::dbExe.Execute("INSERT INTO OperazioniChiuse (Data, GPPercentuale) VALUES ('13/01/2003', 0.30000000000000004)");
    chiusa(0.3);
    QWidget* w = apri("frmRisk");
    EXPECT_EQ(Etichette(w, {"lab_TotMDD"}), "2"); // 1.5 + 1.5, then -2 + 0; the last run stays open
    EXPECT_EQ(colonna(in<platform::Chart>(w, "msc_MDD"), 1), (QStringList{"3", "-2"}));
    auto* grid = in<platform::FlexGrid>(w, "MSFlexGrid_FP");
    // 6 rows: 200/6 = 33.33, 100/6 = 16.67. The two values near 0.3 differ in the last bit: two rows.
    EXPECT_EQ(righe(grid), (QStringList{"1,5%|33,33%", "0,3%|16,67%", "0,3%|16,67%", "0%|16,67%", "-2%|16,67%", "|"}));
    auto* freq = in<platform::Chart>(w, "msc_FrequenzaPerc");
    EXPECT_EQ(freq->DataAt(2, 2), "33,33");
    EXPECT_EQ(freq->DataAt(6, 1), "-2");
}

TEST_F(StatsWindowsTest, LimitsEndInAFailureWithTheFilesUntouched)
{
    auto molte = [this](const std::vector<double>& valori) {
        svuota();
        store::Transaction tx(Module1::dbExe);
        for (double p : valori)
            chiusa(p);
        tx.Commit();
    };
    auto fallisce = [this, &molte](const char* name, const std::vector<double>& valori, long long indice) {
        chiudi(name); // the window that fit
        molte(valori);
        const QByteArray prima = impronta();
        try {
            apri(name);
            ADD_FAILURE() << name << " opened past its limit";
        } catch (const platform::IndexOutOfRange& e) {
            EXPECT_EQ(e.what(), "Indice non compreso nell'intervallo: " + std::to_string(indice));
        }
        EXPECT_EQ(platform::Forms::Find(QString::fromLatin1(name)), nullptr);
        EXPECT_EQ(impronta(), prima);
    };
    // Runs of every length from 1 to `n` won and lost, the last one closed by a loss.
    auto lunghezze = [](int vinte, int perse) {
        std::vector<double> v;
        for (int k = 1; k <= std::max(vinte, perse); ++k) {
            v.insert(v.end(), k <= vinte ? k : 0, 1.0);
            v.insert(v.end(), k <= perse ? k : 0, -1.0);
        }
        v.push_back(vinte > perse ? -1.0 : 1.0);
        return v;
    };
    std::vector<double> alterni;
    for (int i = 0; i < 1002; ++i)
        alterni.push_back(i % 2 ? -1 : 1);

    // 50 distinct percentages fit, the 51st stops at the chart table.
    std::vector<double> percentuali;
    for (int i = 1; i <= 50; ++i)
        percentuali.push_back(i / 4.0);
    molte(percentuali);
    EXPECT_EQ(in<platform::FlexGrid>(apri("frmRisk"), "MSFlexGrid_FP")->TextMatrix(50, 0), "0,25%");
    percentuali.push_back(-1);
    fallisce("frmRisk", percentuali, 51);

    // 1000 rows fit the percentage list, the 1001st does not.
    molte(std::vector<double>(alterni.begin(), alterni.begin() + 1000));
    EXPECT_EQ(Etichette(apri("frmRisk"), {"lab_TotMDD"}), "999");
    fallisce("frmRisk", std::vector<double>(alterni.begin(), alterni.begin() + 1001), 1001);

    // 1000 runs fit, the 1001st does not (1002 alternating rows), in both windows.
    EXPECT_EQ(in<platform::Chart>(apri("frmMDD"), "msc_SeqPosNeg")->RowCount(), 1000);
    fallisce("frmMDD", alterni, 1001);

    // 50 distinct lengths fit the chart table; 51 fail there, 101 already in the frequency table.
    molte(lunghezze(25, 25));
    EXPECT_EQ(in<platform::FlexGrid>(apri("frmMDD"), "MSFlexGrid_MDD")->TextMatrix(50, 0), "-25");
    fallisce("frmMDD", lunghezze(26, 25), 51);
    fallisce("frmMDD", lunghezze(51, 50), 101);

    // And the empty table, reached through a menu that stays enabled.
    svuota();
    EXPECT_THROW(apri("frmMDD"), store::DbError);
}

TEST_F(StatsWindowsTest, AveragesLabelByLabelWithTheRatioReadBeforeItsNumerator)
{
    // 3 won, 1 lost, 2 even, on 3 dates.
    chiusa(3, 300, "13/01/2003", 100, 31);
    chiusa(1, 50.25, "13/01/2003", 10, 55);
    chiusa(2, 100, "14/01/2003", 50, 22);
    chiusa(-8, -250, "14/01/2003", 100, 9);
    chiusa(0, 0, "14/01/2003", 10, 10);
    chiusa(0, 0, "15/01/2003", 1, 3.5);
    QWidget* w = apri("frmMedie");
    // Days 3; capital floor(5753.5 / 6) = 958 of 3100 + 550 + 1100 + 900 + 100 + 3.5; trades a day 6 / 3.
    EXPECT_EQ(Etichette(w, {"lab_TotGiorni", "lab_CapitaleMedio", "lab_CapitaleInvestito", "lab_NumOperazioniGiorno"}), "3|958|5753|2");
    // Gain over loss "0" / "250": the average gain is written later.
    EXPECT_EQ(Etichette(w, {"lab_MaxGain", "lab_MaxLose", "lab_PerditaMedia", "Lab_GMsuPM"}), "300|-250|250|0");
    // floor(200.25 / 6) = 33, floor(200.25 / 3) = 66, floor((6 - 8) / 3) = floor(-0.67) = -1.
    EXPECT_EQ(Etichette(w, {"lab_UtileMedioOperazione", "lab_UtileMedioGiorno", "lab_PercMediaGiorno"}), "33|66|-1");
    // 450.25 / 3 = 150.083; 100 * 300 / 200.25 = 149.8127; 10 * 3 / (1 + 3), even ones left out.
    EXPECT_EQ(Etichette(w, {"lab_GuadagnoMedio", "lab_FattoreCulo", "lab_WL"}), "150,1|149,81|7,5");
    EXPECT_EQ(dial(w, "Picture_WL"), "750");
    EXPECT_EQ(dial(w, "Picture_FC"), "1498");           // 149.81 * 10 = 1498.1: past the scale

    // Not refreshed by the frame: a replay that empties the table leaves the figures.
    AddTrade(Module1::dbExe, "13/01/2003", "Buy", "DAY", "ENI", 10, 1);
    frame->ControlloMenu();
    EXPECT_EQ(platform::Forms::Find("frmMedie"), w);
    EXPECT_EQ(Etichette(w, {"lab_CapitaleMedio"}), "958");
    Module1::dbExe.Execute("DELETE * FROM Eseguiti");

    // Only losses: the skipped labels keep their designed "0", the dials stay unattached.
    chiusa(-1, -10, "13/01/2003", 1, 1);
    chiusa(-2, -20.5, "14/01/2003", 1, 1);
    w = riapri("frmMedie");
    // Average loss 30.5 / 2 = 15.25, half to even.
    EXPECT_EQ(Etichette(w, {"lab_MaxGain", "lab_PerditaMedia", "lab_UtileMedioOperazione", "lab_GuadagnoMedio", "lab_FattoreCulo",
                       "lab_WL", "Lab_GMsuPM"}),
              "|15,2|0|0|0|0|0");
    EXPECT_EQ(dial(w, "Picture_WL"), "");

    // Only gains: no loss shown, ten out of ten, and a tiny net result clamped to 1000.
    svuota();
    chiusa(5, 500, "13/01/2003", 1, 1);
    chiusa(1, 0.25, "13/01/2003", 1, 1);
    w = riapri("frmMedie");
    EXPECT_EQ(Etichette(w, {"lab_MaxLose", "lab_PerditaMedia", "lab_WL", "lab_FattoreCulo"}), "|0|10|99,95"); // 100 * 500 / 500.25
    EXPECT_EQ(dial(w, "Picture_WL"), "1000");
    chiusa(-1, -500.15, "13/01/2003", 1, 1); // net 0.1: 100 * 500 / 0.1 = 500000
    w = riapri("frmMedie");
    EXPECT_EQ(Etichette(w, {"lab_FattoreCulo"}), "1000");
    EXPECT_EQ(dial(w, "Picture_FC"), "10000");
    chiusa(-1, -100, "13/01/2003", 1, 1); // net below 0: the ratio is negative and reads back as 0
    w = riapri("frmMedie");
    EXPECT_EQ(Etichette(w, {"lab_FattoreCulo"}), "0");
    EXPECT_EQ(dial(w, "Picture_FC"), "0");
    chiudi("frmMedie");

    // An average loss that rounds to "0" makes the ratio 0 / 0.
    svuota();
    chiusa(1, 10, "13/01/2003", 1, 1);
    chiusa(-1, -0.04, "13/01/2003", 1, 1);
    EXPECT_THROW(apri("frmMedie"), platform::DivisionByZero);
}

TEST_F(StatsWindowsTest, WeekdayTotalsLeaveEmptyDaysEmptyAndGrowTheGridByFive)
{
    chiusa(1, 100.5, "13/01/2003"); // Monday
    chiusa(1, -20, "13/01/2003");
    chiusa(1, 0.25, "20/01/2003"); // another Monday
    chiusa(1, 30, "15/01/2003");   // a Wednesday that cancels out
    chiusa(1, -30, "15/01/2003");
    chiusa(1, 1e6, "18/01/2003");  // a Saturday: in no total
    QWidget* w = apri("frmStGiorno");
    auto* grid = in<platform::FlexGrid>(w, "MSFlexGrid_StGiorno");
    auto* chart = in<platform::Chart>(w, "msc_Giorno");
    const QStringList giorni = {"Lunedi|80,75", "Martedi|", "Mercoledi|0", "Giovedi|", "Venerdi|", "|"};
    EXPECT_EQ(righe(grid), giorni);
    EXPECT_EQ(colonna(chart, 1), (QStringList{"80,75", "", "0", "", ""}));
    EXPECT_EQ(chart->RowLabelAt(3), "Mercoledi");

    // The chart keeps the style the user chose; the grid gains five rows per refresh.
    QTest::mouseClick(in<QRadioButton>(w, "Option1(2)"), Qt::LeftButton);
    refresh(w);
    EXPECT_EQ(chart->ChartType(), platform::Chart::Area3D);
    EXPECT_EQ(righe(grid), giorni + QStringList(5, "|"));
}

TEST_F(StatsWindowsTest, TheFrameRefreshesTheRunAndWeekdayWindowsByName)
{
    AddTrade(Module1::dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);
    AddTrade(Module1::dbExe, "14/01/2003", "Sell", "DAY", "ENI", 50, 11);
    AddTrade(Module1::dbExe, "15/01/2003", "Sell", "DAY", "ENI", 50, 9);
    frame->ControlloMenu();
    auto* mdd = in<platform::FlexGrid>(apri("frmMDD"), "MSFlexGrid_MDD");
    auto* giorno = in<platform::FlexGrid>(apri("frmStGiorno"), "MSFlexGrid_StGiorno");
    EXPECT_EQ(righe(mdd), (QStringList{"1|100%", "|"}));

    AddTrade(Module1::dbExe, "16/01/2003", "Buy", "DAY", "ENI", 10, 10);
    AddTrade(Module1::dbExe, "16/01/2003", "Sell", "DAY", "ENI", 10, 12);
    frame->ControlloMenu();
    EXPECT_EQ(righe(mdd), (QStringList{"1|50%", "-1|50%", "|", "|"}));
    EXPECT_EQ(giorno->TextMatrix(4, 1), "20"); // Thursday: 10 * (12 - 10)

    // When the last sale goes, the frame closes them.
    Module1::dbExe.Execute("DELETE * FROM Eseguiti WHERE Tipo = 'Sell'");
    frame->ControlloMenu();
    FlushDeletes();
    EXPECT_EQ(platform::Forms::Find("frmMDD"), nullptr);
    EXPECT_EQ(platform::Forms::Find("frmStGiorno"), nullptr);
}

// Last in this file: after the failure report the program takes no more events.
// 51 sales, each gaining 0.1% more than the one before: the risk window opened
// from its menu ends in the failure report, and the files are as they were.
TEST_F(StatsWindowsTest, RiskFromTheMenuWithTooManyPercentagesEndsInTheFailureReport)
{
    for (int i = 1; i <= 51; ++i) {
        const QString cod = QStringLiteral("C%1").arg(i);
        AddTrade(Module1::dbExe, "13/01/2003", "Buy", "DAY", cod, 100, 10);
        AddTrade(Module1::dbExe, "14/01/2003", "Sell", "DAY", cod, 100, 10 + i / 100.0);
    }
    frame->ControlloMenu();
    QAction* risk = frame->Menu("mnu_Risk");
    ASSERT_TRUE(risk->isEnabled());
    const QByteArray prima = impronta();
    QString report;
    ReadFailureReport(&report);
    QTimer::singleShot(0, risk, &QAction::trigger);
    EXPECT_EQ(QApplication::exec(), 1);
    EXPECT_EQ(report, "FailureReport: Indice non compreso nell'intervallo: 51");
    EXPECT_TRUE(static_cast<platform::Application*>(qApp)->Failed());
    EXPECT_EQ(impronta(), prima);
}
