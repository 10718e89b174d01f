// The frame's commands: ControlloMenu's accumulated state, the toolbar, help,
// the customise dialog and the shared key filters.
#include "app/ComandiAttivi.h"
#include "platform/HelpWindow.h"
#include "platform/ToolbarCustomize.h"
#include "support/Programma.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>

using namespace testing_support;
using Module1::dbExe;

namespace {

// A stand-in child window with a Main, to watch the refresh walk and the unloading.
class Finta final : public QWidget {
    Q_OBJECT
public:
    explicit Finta(const QString& name) { setObjectName(name); }
    Q_INVOKABLE void Main() { ++refreshes; }
    int refreshes = 0;
};

class FrameCommandsTest : public ProgramTest {
protected:
    void SetUp() override { Avvia(true); }
    Finta* apri(const QString& name)
    {
        auto* w = new Finta(name);
        platform::Forms::Register(w);
        frame->Area()->addSubWindow(w)->show();
        return w;
    }
};

} // namespace

TEST_F(FrameCommandsTest, ControlloMenuStateAccumulatesAcrossCommits)
{
    // One closed operation in a portfolio that never had two: risk, draw down, averages stay off.
    AddTrade(dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);
    AddTrade(dbExe, "14/01/2003", "Sell", "DAY", "ENI", 10, 11);
    frame->ControlloMenu();
    EXPECT_EQ(ComandiAttivi(frame), "Salva Importa Eseguiti Portafoglio Errori OperazioniChiuse SequenzeOperazioni Esporta GP "
                                    "StatistichePeriodo Report 5 6 7 8 10 11 12 13 14");

    // Two closed operations switch them on; back to one, they stay on.
    AddTrade(dbExe, "15/01/2003", "Sell", "DAY", "ENI", 10, 12);
    frame->ControlloMenu();
    const QString tutti = ComandiAttivi(frame);
    EXPECT_TRUE(tutti.endsWith("Report Risk MDD Medie 5 6 7 8 10 11 12 13 14 15 16 17")) << tutti.toStdString();
    dbExe.Execute("DELETE * FROM Eseguiti WHERE Data = '15/01/2003'");
    frame->ControlloMenu();
    EXPECT_EQ(ComandiAttivi(frame), tutti);

    // The last sale deleted: the charts go, menus and toolbar part ways.
    Finta* report = apri("frmReport");
    Finta* portafoglio = apri("frmPortafoglio");
    Finta* medie = apri("frmMedie");
    dbExe.Execute("DELETE * FROM Eseguiti WHERE Tipo = 'Sell'");
    frame->ControlloMenu();
    FlushDeletes();
    EXPECT_FALSE(platform::Forms::IsLoaded(report));
    EXPECT_EQ(portafoglio->refreshes, 1);
    EXPECT_EQ(medie->refreshes, 0); // never refreshed this way
    EXPECT_EQ(ComandiAttivi(frame), "Salva Importa Eseguiti Portafoglio Errori Esporta Report Risk MDD Medie 5 6 7");

    // Eseguiti emptied: every statistics window closes, the trade and account windows stay; 5 and 6 stay as they are.
    Finta* eseguiti = apri("frmEseguiti");
    Finta* conto = apri("frmContoTitoli");
    dbExe.Execute("DELETE * FROM Eseguiti");
    frame->ControlloMenu();
    FlushDeletes();
    EXPECT_FALSE(platform::Forms::IsLoaded(portafoglio));
    EXPECT_FALSE(platform::Forms::IsLoaded(medie));
    EXPECT_EQ(eseguiti->refreshes, 1);
    EXPECT_EQ(conto->refreshes, 1);
    EXPECT_EQ(ComandiAttivi(frame), "Salva Importa Eseguiti 5 6");
    // The derived tables keep what they held: no replay with an empty ledger.
    EXPECT_EQ(Rows(dbExe, "SELECT Cod FROM Portafoglio"), QStringList{"ENI"});

    // A buy and no sale: that branch switches errors, portfolio and buttons 5 to 7 back on.
    frame->Button(5)->setEnabled(false);
    AddTrade(dbExe, "20/01/2003", "Buy", "DAY", "FIAT", 10, 5);
    frame->ControlloMenu();
    EXPECT_EQ(ComandiAttivi(frame), "Salva Importa Eseguiti Portafoglio Errori 5 6 7");
}

TEST_F(FrameCommandsTest, ToolbarBringsAMinimisedWindowBackAndHelpOpensItsContents)
{
    Finta* report = nullptr;
    MDIForm1::RegistraFinestra("frmReport", [&report, this]() {
        if (!report || !platform::Forms::IsLoaded(report))
            report = apri("frmReport");
        return report;
    });
    frame->Button(10)->setEnabled(true);
    frame->Button(10)->trigger();
    ASSERT_NE(report, nullptr);
    auto* sub = qobject_cast<QMdiSubWindow*>(report->parentWidget());
    sub->showMinimized();
    frame->Button(10)->trigger();
    EXPECT_FALSE(sub->isMinimized());
    EXPECT_EQ(frame->Area()->activeSubWindow(), sub);
    MDIForm1::RegistraFinestra("frmReport", nullptr);

    frame->Menu("mnu_Help")->trigger();
    auto* help = qobject_cast<platform::HelpWindow*>(platform::Forms::Find("HelpWindow"));
    ASSERT_NE(help, nullptr);
    EXPECT_TRUE(help->isVisible());
    EXPECT_EQ(help->CurrentPage(), "index.html");
}

TEST_F(FrameCommandsTest, CustomiseDialogHidesAndReordersButtons)
{
    WhenModal([](QWidget* modal) {
        auto* dialog = qobject_cast<platform::ToolbarCustomize*>(modal);
        ASSERT_NE(dialog, nullptr);
        QListWidget* list = dialog->List();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
        QTest::keyClick(list, Qt::Key_Space); // hide "Nuovo"
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(list, Qt::Key_Down);
        for (int i = 0; i < 3; ++i) // "Calcolatore" to the top
            QTest::mouseClick(dialog->findChild<QPushButton*>("cmd_Su"), Qt::LeftButton);
        QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    frame->Menu("mnu_Menu")->trigger();
    EXPECT_FALSE(frame->Button(1)->isVisible());
    EXPECT_EQ(frame->Toolbar1()->actions().first()->objectName(), "Calcolatore");
    EXPECT_EQ(frame->Button(4)->objectName(), "Calcolatore"); // numbering by table, not by place
}

TEST(KeyFilters, NumbersCommaAndCaretRules)
{
    QLineEdit txtPrezzo;
    Module1::FiltroNumeri(&txtPrezzo, 5, 2);
    const auto typed = [&txtPrezzo](const char* start, int caret, const char* keys) {
        txtPrezzo.setText(start);
        txtPrezzo.setCursorPosition(caret);
        QTest::keyClicks(&txtPrezzo, keys);
        return txtPrezzo.text();
    };
    // Caret in the integer part with full decimals: a digit passes only below the limit.
    EXPECT_EQ(typed("123,45", 1, "9"), "1923,45");
    EXPECT_EQ(typed("12345,45", 1, "9"), "12345,45");
    // A selection: the text left of where it starts decides, whichever way it was dragged.
    txtPrezzo.setText("12,34");
    QTest::keyClick(&txtPrezzo, Qt::Key_Home);
    QTest::keyClick(&txtPrezzo, Qt::Key_Right);
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(&txtPrezzo, Qt::Key_Right, Qt::ShiftModifier); // "2,3" selected, caret after it
    QTest::keyClicks(&txtPrezzo, "9");
    EXPECT_EQ(txtPrezzo.text(), "194");
}

#include "test_frame_commands.moc"
