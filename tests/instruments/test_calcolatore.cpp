// The financial calculator through its window, typing as a user does.
#include "instruments/Calcolatore.h"
#include "platform/FailureReport.h"
#include "platform/PictureSurface.h"
#include "support/Programma.h"

#include <QPlainTextEdit>

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
    QString label(const char* n) { return w->findChild<QLabel*>(n)->text(); }
    void type(const char* n, const QString& t) { QTest::keyClicks(edit(n), t); }
    // Types over what a box holds: select all, then the new text (an empty one empties it).
    void retype(const char* n, const QString& t)
    {
        QTest::keyClick(edit(n), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(edit(n), Qt::Key_Backspace);
        QTest::keyClicks(edit(n), t);
    }

    Calcolatore* w = nullptr;
};

} // namespace

TEST_F(CalcolatoreTest, WorkedCaseToTheLastDigitAndTheClearingRules)
{
    EXPECT_TRUE(w->isVisible());
    for (const char* p : {"pic_PdP", "pic_SLMM", "pic_SLP", "pic_Commissioni", "pic_GP", "pic_PercentualeGP"})
        EXPECT_EQ(lcd(p), "") << p;
    EXPECT_EQ(w->findChild<QComboBox*>("DBCombo")->currentText(), "T2");

    type("txtAcqPzo", "10");
    EXPECT_EQ(lcd("pic_PdP"), ""); // the price before the quantity leaves everything dark
    type("txtQta", "1000");
    type("txtVndPzo", "11");
    EXPECT_EQ(label("lab_AcqImp"), "10000");
    EXPECT_EQ(lcd("pic_SLP"), "9,7");          // 10 - 3*10/100
    EXPECT_EQ(lcd("pic_SLMM"), "9,9");         // |(10000 - 100) / 1000|
    EXPECT_EQ(lcd("pic_PdP"), "10,04");        // 10 + 10000*2/1000*2/1000
    EXPECT_EQ(label("lab_VndImp"), "11000");
    EXPECT_EQ(lcd("pic_Commissioni"), "42");   // 20 + 22
    EXPECT_EQ(lcd("pic_GP"), "958");           // 1000 - 42
    EXPECT_EQ(lcd("pic_PercentualeGP"), "9");  // floor(95800 / 10000)

    // A change of system recomputes the sale but leaves the break-even stale.
    ChooseInCombo(w->findChild<QComboBox*>("DBCombo"), "T4");
    EXPECT_EQ(lcd("pic_Commissioni"), "84");
    EXPECT_EQ(lcd("pic_PdP"), "10,04");

    // A loss: minus sign, and the percentage floors toward minus infinity.
    retype("txtVndPzo", "9,99");
    EXPECT_EQ(lcd("pic_GP"), "-89,96");        // 9990 - 10000 - (40 + 39.96)
    EXPECT_EQ(lcd("pic_PercentualeGP"), "-1");

    // Emptying the price leaves the old figures standing.
    retype("txtAcqPzo", "");
    EXPECT_EQ(label("lab_AcqImp"), "10000");
    EXPECT_EQ(lcd("pic_PdP"), "10,04");
    // Typing "0" clears the buy side, and with its amount gone the sale side too.
    retype("txtAcqPzo", "0");
    EXPECT_EQ(label("lab_AcqImp"), "");
    EXPECT_EQ(lcd("pic_SLP"), "");
    EXPECT_EQ(lcd("pic_PdP"), "");
    EXPECT_EQ(lcd("pic_GP"), "");
    EXPECT_EQ(label("lab_VndImp"), "");
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
    EXPECT_EQ(lcd("pic_Commissioni"), "10");
    EXPECT_EQ(lcd("pic_GP"), "0"); // 110 - 100 - 10

    // A gain a hair below a half cent: (35007.51 - 10000) - (20 + 70.01502) = 24917.49498, to the nearest.
    retype("txtAcqPzo", "10000");
    retype("txtQta", "1");
    retype("txtVndPzo", "35007,51");
    EXPECT_EQ(lcd("pic_Commissioni"), "90,01502");
    EXPECT_EQ(lcd("pic_GP"), "24917,49");
    EXPECT_EQ(lcd("pic_PercentualeGP"), "249"); // floor(2491749 / 10000)
}

// Last in this file: after the failure report the program takes no more events.
// A quantity of "00" passes the test on the text and fails at the division.
TEST_F(CalcolatoreTest, DoubleZeroQuantityEndsInTheFailureReport)
{
    const QByteArray settings = FileBytes(path("DataSet.qvd"));
    type("txtAcqPzo", "10");
    QString report;
    WhenModal([&report](QWidget* modal) {
        if (auto* t = modal->findChild<QPlainTextEdit*>("txt_Errore"))
            report = modal->objectName() + ": " + t->toPlainText();
        QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
    });
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
    EXPECT_EQ(label("lab_AcqImp"), "0"); // the amount came before the division
    EXPECT_EQ(FileBytes(path("DataSet.qvd")), settings);
}
