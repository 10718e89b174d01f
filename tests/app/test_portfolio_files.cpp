// A portfolio's life through the frame's file commands, checked on disk after each step.
#include "app/ComandiAttivi.h"
#include "support/Programma.h"

#include <QMdiArea>
#include <QMdiSubWindow>

using namespace testing_support;
using Module1::dbExe;
using Module1::dbSet;

namespace {

class PortfolioFilesTest : public ProgramTest {
protected:
    void SetUp() override { Avvia(true); }
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

TEST_F(PortfolioFilesTest, LifeOfAPortfolioFromNewToOpenLast)
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
}

TEST_F(PortfolioFilesTest, OpeningAFileWithoutTradesEmptiesWhatWasDerivedFromThem)
{
    AddTrade(dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);
    AddTrade(dbExe, "14/01/2003", "Sell", "DAY", "ENI", 50, 11);
    frame->ControlloMenu();
    saveAs(path("pieno.qvp"));
    // Open replays at once a file whose trades were deleted outside the program: the positions
    // and closed operations it kept go, and the commands that need data go off.
    store::Database::CopyFile(path("pieno.qvp"), path("vuoto.qvp"));
    store::Database file;
    file.Open(path("vuoto.qvp"));
    file.Execute("DELETE * FROM Eseguiti");
    ASSERT_EQ(Rows(file, "SELECT Cod FROM Portafoglio"), QStringList{"ENI"});
    open(path("pieno.qvp"));
    EXPECT_TRUE(frame->Menu("mnu_Report")->isEnabled());
    open(path("vuoto.qvp"));
    EXPECT_EQ(dbExe.Path(), path("vuoto.qvp"));
    EXPECT_EQ(Rows(file, "SELECT Cod FROM Portafoglio") + Rows(file, "SELECT Cod FROM OperazioniChiuse"), QStringList{});
    EXPECT_EQ(ComandiAttivi(frame), "Salva Importa Eseguiti 5 6");
}

TEST_F(PortfolioFilesTest, NewFromTheDefaultDocumentAsksAndNoDeletesTheTrades)
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
    WhenModal([](QWidget* box) {
        AnswerFileDialog(QString());
        for (auto* b : box->findChildren<QAbstractButton*>())
            if (b->text() == "Sì")
                b->click();
    });
    frame->mnu_NuovoPortafoglio_Click();
    EXPECT_EQ(codici(path("DataExe.qvd")), QStringList{});
}

TEST_F(PortfolioFilesTest, SecondSaveAsCopiesTheFileBeforeTheFirst)
{
    AddTrade(dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);
    saveAs(path("primo.qvp"));
    AddTrade(dbExe, "14/01/2003", "Buy", "DAY", "FIAT", 10, 5); // goes into primo.qvp
    saveAs(path("secondo.qvp"));
    // The copy comes from sFilePortafoglio, still DataExe.qvd: FIAT is not in it.
    EXPECT_EQ(codici(path("primo.qvp")), (QStringList{"ENI", "FIAT"}));
    EXPECT_EQ(codici(path("secondo.qvp")), QStringList{"ENI"});
    EXPECT_EQ(dbExe.Path(), path("secondo.qvp"));

    // Saving onto sFilePortafoglio itself, after yes to the overwrite question, copies nothing.
    QString question;
    PressOnModal("Sì", &question);
    saveAs(path("DataExe.qvd"));
    EXPECT_EQ(question, "Il file " + path("DataExe.qvd") + "  esiste già!\nsostituire il file?");
    EXPECT_EQ(dbExe.Path(), path("secondo.qvp"));

    // No to the overwrite question ends the command.
    PressOnModal("No");
    saveAs(path("primo.qvp"));
    EXPECT_EQ(codici(path("primo.qvp")), (QStringList{"ENI", "FIAT"}));
}

TEST_F(PortfolioFilesTest, BadFilesEndSilentlyOrInTheFailureReport)
{
    AddTrade(dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);

    const QString text = WriteFile(path("testo.qvp"), "questo non e' un database\n");
    const QByteArray before = FileBytes(text);
    open(text);
    EXPECT_EQ(dbExe.Path(), path("DataExe.qvd")); // nothing changed
    EXPECT_EQ(frame->windowTitle(), "Quorvel - Quorvel1");
    EXPECT_EQ(FileBytes(text), before);

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
}

TEST_F(PortfolioFilesTest, SaveAsOntoAnUnwritableTargetLeavesThePortfolioClosed)
{
    // A folder that is a file: not even root can create a file in it.
    WriteFile(path("blocco"), {});
    saveAs(path("blocco/copia.qvp"));
    EXPECT_FALSE(dbExe.IsOpen());
    EXPECT_THROW(frame->ControlloMenu(), store::DbError);
}
