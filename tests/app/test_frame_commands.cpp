// The frame's commands: a portfolio's life through the file commands, checked on disk after each
// step, ControlloMenu's accumulated state, the toolbar, help, the customise dialog and the shared key filters.
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
using Module1::dbSet;

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
    QString apriUltimo() { return dbSet.OpenRecordset("SELECT  ApriUltimo FROM Settaggi").Text("ApriUltimo"); }
    QStringList codici(const QString& file)
    {
        store::Database db;
        db.Open(file);
        return Rows(db, "SELECT Cod FROM Eseguiti ORDER BY ID");
    }
    void saveAs(const QString& file, QString* seen = nullptr)
    {
        AnswerFileDialog(file, seen);
        frame->mnu_Salva_Click();
    }
    void open(const QString& file, QString* seen = nullptr)
    {
        AnswerFileDialog(file, seen);
        frame->mnu_Apri_Click();
    }
};

} // namespace

TEST_F(FrameCommandsTest, LifeOfAPortfolioFromNewToOpenLast)
{
    // A new portfolio from the start: the caption is not the default document's, so no question.
    EXPECT_EQ(frame->windowTitle(), "Quorvel - Quorvel1");
    const QString vuoto = ComandiAttivi(frame);

    AddTrade(dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);
    AddTrade(dbExe, "14/01/2003", "Sell", "DAY", "ENI", 50, 11);
    frame->ControlloMenu();
    EXPECT_EQ(Rows(dbExe, "SELECT Cod, Qta FROM Portafoglio"), QStringList{"ENI|50"});

    QString title;
    saveAs(path("mio conto.qvp"), &title);
    EXPECT_EQ(title + "|" + frame->windowTitle(), "Salva con nome|Quorvel - mio conto.qvp");
    EXPECT_EQ(codici(path("mio conto.qvp")), (QStringList{"ENI", "ENI"}));
    EXPECT_EQ(apriUltimo() + "|" + dbExe.Path(), path("mio conto.qvp") + "|" + path("mio conto.qvp"));
    EXPECT_EQ(Module1::sFilePortafoglio, path("DataExe.qvd")); // not updated by save as

    // New from a named document: no question, DataExe emptied, the .qvp keeps its trades.
    frame->mnu_NuovoPortafoglio_Click();
    EXPECT_EQ(codici(path("DataExe.qvd")), QStringList{});
    EXPECT_EQ(codici(path("mio conto.qvp")), (QStringList{"ENI", "ENI"}));
    EXPECT_EQ(ComandiAttivi(frame), vuoto);

    open(path("mio conto.qvp"), &title);
    EXPECT_EQ(title + "|" + frame->windowTitle(), "Apri DataSet|Quorvel - mio conto.qvp");
    EXPECT_EQ(Module1::sFilePortafoglio, path("mio conto.qvp"));
    EXPECT_EQ(Rows(dbExe, "SELECT Cod, Qta FROM Portafoglio"), QStringList{"ENI|50"});
    EXPECT_TRUE(frame->Menu("mnu_OperazioniChiuse")->isEnabled());

    frame->mnu_NuovoPortafoglio_Click();
    frame->mnu_ApriUltimo_Click();
    EXPECT_EQ(frame->windowTitle(), "Quorvel - " + path("mio conto.qvp")); // the full path here
    EXPECT_EQ(dbExe.Path(), path("mio conto.qvp"));

    // Cancelling a dialog changes nothing.
    open(QString());
    EXPECT_EQ(dbExe.Path(), path("mio conto.qvp"));

    // Open replays at once a file whose trades were deleted outside the program: the positions
    // and closed operations it kept go, and the commands that need data go off.
    store::Database::CopyFile(path("mio conto.qvp"), path("vuoto.qvp"));
    store::Database file;
    file.Open(path("vuoto.qvp"));
    file.Execute("DELETE * FROM Eseguiti");
    ASSERT_EQ(Rows(file, "SELECT Cod FROM Portafoglio"), QStringList{"ENI"});
    EXPECT_TRUE(frame->Menu("mnu_Report")->isEnabled());
    open(path("vuoto.qvp"));
    EXPECT_EQ(dbExe.Path(), path("vuoto.qvp"));
    EXPECT_EQ(Rows(file, "SELECT Cod FROM Portafoglio") + Rows(file, "SELECT Cod FROM OperazioniChiuse"), QStringList{});
    EXPECT_EQ(ComandiAttivi(frame), "Salva Importa Eseguiti 5 6");
}

TEST_F(FrameCommandsTest, NewFromTheDefaultDocumentAsksAndSaveAsCopiesTheFileBeforeIt)
{
    // A maximised child adds its name to the title shown, not to the caption the command tests.
    frame->Area()->subWindowList().value(0)->showMaximized();
    EXPECT_EQ(frame->windowTitle(), "Quorvel - Quorvel1 - [Eseguiti]");
    AddTrade(dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);
    QString question;
    PressOnModal("No", &question);
    frame->mnu_NuovoPortafoglio_Click();
    EXPECT_EQ(question, "Salvare le modifiche al file ?");
    EXPECT_EQ(codici(path("DataExe.qvd")), QStringList{});

    // Yes runs save as; a cancelled save still goes on to the new portfolio.
    AddTrade(dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);
    PressOnModal("Sì");
    AnswerFileDialog(QString());
    frame->mnu_NuovoPortafoglio_Click();
    EXPECT_EQ(codici(path("DataExe.qvd")), QStringList{});

    // A second save as copies the file from before the first.
    AddTrade(dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);
    saveAs(path("primo.qvp"));
    AddTrade(dbExe, "14/01/2003", "Buy", "DAY", "FIAT", 10, 5); // goes into primo.qvp
    saveAs(path("secondo.qvp"));
    // The copy comes from sFilePortafoglio, still DataExe.qvd: FIAT is not in it.
    EXPECT_EQ(codici(path("primo.qvp")), (QStringList{"ENI", "FIAT"}));
    EXPECT_EQ(codici(path("secondo.qvp")), QStringList{"ENI"});
    EXPECT_EQ(dbExe.Path(), path("secondo.qvp"));

    // Saving onto sFilePortafoglio itself, after yes to the overwrite question, copies nothing.
    PressOnModal("Sì", &question);
    saveAs(path("DataExe.qvd"));
    EXPECT_EQ(question, "Il file " + path("DataExe.qvd") + "  esiste già!\nsostituire il file?");
    EXPECT_EQ(dbExe.Path(), path("secondo.qvp"));

    // No to the overwrite question ends the command.
    PressOnModal("No");
    saveAs(path("primo.qvp"));
    EXPECT_EQ(codici(path("primo.qvp")), (QStringList{"ENI", "FIAT"}));
}

TEST_F(FrameCommandsTest, BadFilesEndSilentlyInTheFailureReportOrWithThePortfolioClosed)
{
    AddTrade(dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);

    const QString text = WriteFile(path("testo.qvp"), "questo non e' un database\n");
    open(text);
    EXPECT_EQ(dbExe.Path(), path("DataExe.qvd")); // nothing changed
    EXPECT_EQ(frame->windowTitle(), "Quorvel - Quorvel1");
    EXPECT_EQ(FileBytes(text), "questo non e' un database\n");

    // A portfolio missing a table: Open ends silently at the replay, Open last reports the failure.
    const QString broken = path("rotto.qvp");
    store::Database::CopyFile(path("DataExe.qvd"), broken);
    {
        store::Database b;
        b.Open(broken);
        AddTrade(b, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);
        b.Execute("DROP TABLE OperazioniChiuse");
    }
    open(broken);
    EXPECT_EQ(Module1::sFilePortafoglio, broken);
    EXPECT_EQ(apriUltimo(), broken);
    EXPECT_THROW(frame->mnu_ApriUltimo_Click(), store::DbError);

    // Open of a name typed for a file that isn't there, and open last of a file that went away.
    QString message;
    PressOnModal("OK", &message);
    open(path("sparito.qvp"));
    EXPECT_EQ(message, "non esiste");
    EXPECT_EQ(Module1::sFilePortafoglio, broken);
    dbSet.Execute("UPDATE Settaggi SET ApriUltimo = '" + path("sparito.qvp") + "'");
    PressOnModal("OK", &message);
    frame->mnu_ApriUltimo_Click();
    EXPECT_EQ(message, "il file: " + path("sparito.qvp") + "non esiste");

    // An apostrophe in the name: the copy is made, the statement that records it fails silently.
    frame->mnu_NuovoPortafoglio_Click();
    AddTrade(dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);
    saveAs(path("l'ultimo.qvp"));
    EXPECT_EQ(codici(path("l'ultimo.qvp")), QStringList{"ENI"});
    EXPECT_EQ(apriUltimo(), path("sparito.qvp"));

    // Save as onto a folder that is a file (not even root can create a file in it) leaves the portfolio closed.
    WriteFile(path("blocco"), {});
    saveAs(path("blocco/copia.qvp"));
    EXPECT_FALSE(dbExe.IsOpen());
    EXPECT_THROW(frame->ControlloMenu(), store::DbError);
}

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

TEST_F(FrameCommandsTest, ToolbarBringsAMinimisedWindowBackHelpOpensAndCustomiseReordersTheButtons)
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

    // The customise dialog hides and reorders the buttons.
    RunModal(frame->Menu("mnu_Menu"), "ToolbarCustomize", [](QWidget* modal) {
        auto* dialog = static_cast<platform::ToolbarCustomize*>(modal);
        QListWidget* list = dialog->List();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
        QTest::keyClick(list, Qt::Key_Space); // hide "Nuovo"
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(list, Qt::Key_Down);
        for (int i = 0; i < 3; ++i) // "Calcolatore" to the top
            QTest::mouseClick(dialog->findChild<QPushButton*>("cmd_Su"), Qt::LeftButton);
        QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
    });
    EXPECT_FALSE(frame->Button(1)->isVisible());
    EXPECT_EQ(frame->Toolbar1()->actions().first()->objectName(), "Calcolatore");
    EXPECT_EQ(frame->Button(4)->objectName(), "Calcolatore"); // numbering by table, not by place
}

TEST(KeyFilters, NumbersCommaAndCaretRules)
{
    QLineEdit txtPrezzo;
    Module1::FiltroNumeri(&txtPrezzo, 5, 2);
    // A 9 typed with the caret after `caret` characters and the `selected` ones after it taken with Shift.
    const auto typed = [&txtPrezzo](const char* start, int caret, int selected) {
        txtPrezzo.setText(start);
        txtPrezzo.setCursorPosition(caret);
        for (int i = 0; i < selected; ++i)
            QTest::keyClick(&txtPrezzo, Qt::Key_Right, Qt::ShiftModifier);
        QTest::keyClicks(&txtPrezzo, "9");
        return txtPrezzo.text();
    };
    // Caret in the integer part with full decimals: a digit passes only below the limit.
    EXPECT_EQ(typed("123,45", 1, 0), "1923,45");
    EXPECT_EQ(typed("12345,45", 1, 0), "12345,45");
    // A selection: the text left of where it starts decides, whichever way it was dragged.
    EXPECT_EQ(typed("12,34", 1, 3), "194"); // "2,3" selected, caret after it
}

#include "test_frame_commands.moc"
