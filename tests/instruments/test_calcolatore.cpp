// The financial calculator through its window, typing as a user does.
#include "instruments/Calcolatore.h"
#include "platform/FailureReport.h"
#include "platform/PictureSurface.h"
#include "support/Programma.h"

using namespace testing_support;

namespace {

class CalcolatoreTest : public ProgramTest {
protected:
    void SetUp() override
    {
        Avvia();
        Module1::dbSet.Execute("DELETE * FROM System");
        Module1::dbSet.Execute("INSERT INTO System (Cod, Descrizione, Commissioni, CommissioniMin) VALUES ('T2','prova',2,5)");
        Module1::dbSet.Execute("INSERT INTO System (Cod, Descrizione, Commissioni, CommissioniMin) VALUES ('T4','cara',4,5)");
        Module1::dbSet.Execute("UPDATE Settaggi SET SLP = 3, SLMM = 100");
        MDIForm1::Instance()->Menu("mnu_Calcolatore")->trigger();
        w = qobject_cast<Calcolatore*>(platform::Forms::Find("Calcolatore"));
        ASSERT_NE(w, nullptr);
    }
    QLineEdit* edit(const char* n) { return w->findChild<QLineEdit*>(n); }
    QString lcd(const char* n) { return w->findChild<platform::PictureSurface*>(n)->accessibleName(); }
    // What several displays show, joined by '|'.
    QString lcds(std::initializer_list<const char*> names)
    {
        QStringList out;
        for (const char* n : names)
            out << lcd(n);
        return out.join('|');
    }
    void type(const char* n, const QString& t) { QTest::keyClicks(edit(n), t); }
    // Types over what a box holds (an empty text empties it).
    void retype(const char* n, const QString& t) { Scrivi(edit(n), t); }

    Calcolatore* w = nullptr;
};

} // namespace

TEST_F(CalcolatoreTest, WorkedCaseToTheLastDigitAndTheClearingRules)
{
    EXPECT_TRUE(w->isVisible());
    EXPECT_EQ(lcds({"pic_PdP", "pic_SLMM", "pic_SLP", "pic_Commissioni", "pic_GP", "pic_PercentualeGP"}), "|||||");
    EXPECT_EQ(w->findChild<QComboBox*>("DBCombo")->currentText(), "T2");

    type("txtAcqPzo", "10");
    EXPECT_EQ(lcd("pic_PdP"), ""); // the price before the quantity leaves everything dark
    type("txtQta", "1000");
    type("txtVndPzo", "11");
    EXPECT_EQ(Etichette(w, {"lab_AcqImp", "lab_VndImp"}), "10000|11000");
    // 10 - 3*10/100; |(10000 - 100) / 1000|; 10 + 10000*2/1000*2/1000; 20 + 22; 1000 - 42; floor(95800 / 10000).
    EXPECT_EQ(lcds({"pic_SLP", "pic_SLMM", "pic_PdP", "pic_Commissioni", "pic_GP", "pic_PercentualeGP"}), "9,7|9,9|10,04|42|958|9");

    // A change of system recomputes the sale but leaves the break-even stale.
    ChooseInCombo(w->findChild<QComboBox*>("DBCombo"), "T4");
    EXPECT_EQ(lcds({"pic_Commissioni", "pic_PdP"}), "84|10,04");

    // A loss: minus sign, and the percentage floors toward minus infinity.
    retype("txtVndPzo", "9,99");
    EXPECT_EQ(lcds({"pic_GP", "pic_PercentualeGP"}), "-89,96|-1"); // 9990 - 10000 - (40 + 39.96)

    // Emptying the price leaves the old figures standing.
    retype("txtAcqPzo", "");
    EXPECT_EQ(Etichette(w, {"lab_AcqImp"}) + "|" + lcd("pic_PdP"), "10000|10,04");
    // Typing "0" clears the buy side, and with its amount gone the sale side too.
    retype("txtAcqPzo", "0");
    EXPECT_EQ(Etichette(w, {"lab_AcqImp", "lab_VndImp"}) + "|" + lcds({"pic_SLP", "pic_PdP", "pic_GP"}), "||||");
    // The key filters: two decimals, one comma, no point.
    retype("txtAcqPzo", "12.345,678");
    EXPECT_EQ(edit("txtAcqPzo")->text(), "12345,67");
}

TEST_F(CalcolatoreTest, RoundingAndMinimumsWhereTheyShow)
{
    // The stop by percentage keeps 4 decimals: 10.01 - 3*10.01/100 = 9.7097.
    type("txtAcqPzo", "10,01");
    type("txtQta", "1");
    EXPECT_EQ(lcd("pic_SLP"), "9,7097");

    // Both commissions are raised to the minimum: 10*10*2/1000 = 0.2 and 10*11*2/1000 = 0.22, each up to 5.
    retype("txtAcqPzo", "10");
    retype("txtQta", "10");
    type("txtVndPzo", "11");
    EXPECT_EQ(lcds({"pic_Commissioni", "pic_GP"}), "10|0"); // 110 - 100 - 10

    // A gain a hair below a half cent: (35007.51 - 10000) - (20 + 70.01502) = 24917.49498, to the nearest.
    retype("txtAcqPzo", "10000");
    retype("txtQta", "1");
    retype("txtVndPzo", "35007,51");
    EXPECT_EQ(lcds({"pic_Commissioni", "pic_GP", "pic_PercentualeGP"}), "90,01502|24917,49|249"); // floor(2491749 / 10000)
}

// Last in this file: after the failure report the program takes no more events.
// A quantity of "00" passes the test on the text and fails at the division.
TEST_F(CalcolatoreTest, DoubleZeroQuantityEndsInTheFailureReport)
{
    const QByteArray settings = FileBytes(path("DataSet.qvd"));
    type("txtAcqPzo", "10");
    QString report;
    ReadFailureReport(&report);
    // The text goes in quietly and the recalculation is queued, so the failure travels
    // from the event dispatch like any handler's.
    {
        const QSignalBlocker quiet(edit("txtQta"));
        edit("txtQta")->setText("00");
    }
    QMetaObject::invokeMethod(w, "CalcolaAcquisto", Qt::QueuedConnection);
    QCoreApplication::processEvents();
    EXPECT_EQ(report, "FailureReport: Divisione per zero");
    EXPECT_TRUE(static_cast<platform::Application*>(qApp)->Failed());
    EXPECT_EQ(Etichette(w, {"lab_AcqImp"}), "0"); // the amount came before the division
    EXPECT_EQ(FileBytes(path("DataSet.qvd")), settings);
}
