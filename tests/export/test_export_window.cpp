// The export window as a user drives it: check boxes, the file dialog, the replace question,
// the counts on the labels, and the silent close on every failure.
#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "export/Xlsx.h"
#include "platform/Forms.h"
#include "store/Delivered.h"
#include "support/Fixture.h"
#include "support/Gui.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

using namespace testing_support;
using Module1::dbExe;

namespace {

class EsportaTest : public ProgramTest {
protected:
    void SetUp() override
    {
        Avvia(true);
        AddTrade(dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);
        AddTrade(dbExe, "14/01/2003", "Sell", "DAY", "ENI", 50, 11);
        AddTrade(dbExe, "15/01/2003", "Buy", "DAY", "TIM", 1000, 2);
        AddTrade(dbExe, "16/01/2003", "Sell", "DAY", "ENI", 20, 12);
        frame->ControlloMenu(); // 4 trades, 2 closed operations, 2 positions
    }
    // Opens the window from its menu and lets `work` act on it; closes it if `work` left it open.
    void esporta(std::function<void(QWidget*)> work)
    {
        WhenModal(
            [work](QWidget* w) {
                QPointer<QWidget> window(w);
                work(w);
                if (window && window->isVisible())
                    window->close();
            },
            [](QWidget* w) { return w->objectName() == "frmEsporta"; });
        frame->Menu("mnu_Esporta")->trigger();
    }
    // Answers the file dialog: the form picked in its type list (from 1), then the name; an empty name cancels.
    static void rispondi(const QString& file, int forma, QStringList* tipi = nullptr, QString* titolo = nullptr)
    {
        WhenModal(
            [=](QWidget* modal) {
                auto* combo = modal->findChild<QComboBox*>("fileTypeCombo");
                if (tipi)
                    for (int i = 0; i < combo->count(); ++i)
                        *tipi << combo->itemText(i);
                for (int i = 1; i < forma; ++i)
                    QTest::keyClick(combo, Qt::Key_Down);
                AnswerFileDialog(file, titolo);
            },
            [](QWidget* w) { return qobject_cast<QFileDialog*>(w) != nullptr; });
    }
    static void clic(QWidget* w, const char* name)
    {
        auto* b = w->findChild<QAbstractButton*>(name);
        // A check box takes clicks on its box and caption only, not on the rest of its row.
        const QPoint at = qobject_cast<QCheckBox*>(b) ? QPoint(8, b->height() / 2) : b->rect().center();
        QTest::mouseClick(b, Qt::LeftButton, Qt::NoModifier, at);
    }
    static QString lab(QWidget* w, const char* name) { return w->findChild<QLabel*>(name)->text(); }
    static bool abilitato(QWidget* w, const char* name) { return w->findChild<QAbstractButton*>(name)->isEnabled(); }
    static bool aperta() { return platform::Forms::Find("frmEsporta") != nullptr; }
};

} // namespace

TEST_F(EsportaTest, CheckBoxesEnableTheExportAndCancelClosesTheWindow)
{
    QStringList tipi;
    QString titolo;
    bool chiusa = false;
    esporta([&](QWidget* w) {
        EXPECT_EQ(w->windowTitle(), "Esporta  ");
        EXPECT_FALSE(w->findChild<QProgressBar*>("ProgressBar1")->isVisible());
        EXPECT_FALSE(abilitato(w, "cmd_Avvia"));
        clic(w, "chk_Eseguiti");
        EXPECT_TRUE(abilitato(w, "cmd_Avvia"));
        clic(w, "chk_Portafoglio");
        clic(w, "chk_Eseguiti");
        EXPECT_TRUE(abilitato(w, "cmd_Avvia"));
        clic(w, "chk_Portafoglio"); // the last box unchecked
        EXPECT_FALSE(abilitato(w, "cmd_Avvia"));

        clic(w, "chk_OperazioniChiuse");
        rispondi(QString(), 1, &tipi, &titolo);
        clic(w, "cmd_Avvia");
        chiusa = !w->isVisible() && !aperta();
    });
    EXPECT_EQ(titolo, "Esporta i dati in xls");
    EXPECT_EQ(tipi, (QStringList{"Excell (.xlsx)", "Database (.db)", "Testo (.csv)"}));
    EXPECT_TRUE(chiusa);
}

TEST_F(EsportaTest, WorkbookCountsOnTheLabelsAndTheBarNeverReset)
{
    esporta([&](QWidget* w) {
        auto* bar = w->findChild<QProgressBar*>("ProgressBar1");
        clic(w, "chk_OperazioniChiuse");
        clic(w, "chk_Eseguiti");
        rispondi(path("dati"), 1); // the form's extension is added to a bare name
        clic(w, "cmd_Avvia");
        ASSERT_TRUE(aperta());
        EXPECT_EQ(lab(w, "lab_Operazionichiuse"), "2");
        EXPECT_EQ(lab(w, "lab_Eseguiti"), "4");
        EXPECT_EQ(lab(w, "lab_Portafoglio"), "");
        EXPECT_TRUE(abilitato(w, "cmd_Avvia"));
        EXPECT_TRUE(abilitato(w, "cmd_Chiudi"));
        EXPECT_FALSE(bar->isVisible());
        // Maximum 2: steps 1, 2. Maximum 4: steps 3, 4, then 4 is not below 4 and the bar starts over: 0, 1.
        EXPECT_EQ(bar->value(), 1);

        // A second export from the same window: the counter goes on, the other labels stay.
        clic(w, "chk_OperazioniChiuse");
        clic(w, "chk_Eseguiti");
        clic(w, "chk_Portafoglio");
        rispondi(path("posizioni.xlsx"), 1);
        clic(w, "cmd_Avvia");
        EXPECT_EQ(lab(w, "lab_Operazionichiuse"), "2");
        EXPECT_EQ(lab(w, "lab_Eseguiti"), "4");
        EXPECT_EQ(lab(w, "lab_Portafoglio"), "2");
        EXPECT_EQ(bar->value(), 0); // maximum 2: from 1 to 2, then over
        clic(w, "cmd_Chiudi");
    });
    EXPECT_FALSE(aperta());
    EXPECT_EQ(Xlsx(path("dati.xlsx")).Fogli(), (QStringList{"OperazioniChiuse", "Eseguiti", "Foglio3"}));
    EXPECT_EQ(Xlsx(path("posizioni.xlsx")).Fogli(), (QStringList{"Portafoglio", "Foglio2", "Foglio3"}));
}

TEST_F(EsportaTest, ReplaceQuestionNoKeepsTheFileYesReplacesIt)
{
    const QString file = path("dati.csv");
    QFile old(file);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("vecchio");
    old.close();
    QString domanda;
    esporta([&](QWidget* w) {
        clic(w, "chk_Eseguiti");
        rispondi(file, 3);
        PressOnModal("No", &domanda);
        clic(w, "cmd_Avvia");
        EXPECT_TRUE(w->isVisible());
        EXPECT_EQ(FileBytes(file), "vecchio");
        EXPECT_EQ(lab(w, "lab_Eseguiti"), "");

        rispondi(file, 3);
        PressOnModal("Sì");
        clic(w, "cmd_Avvia");
        EXPECT_EQ(lab(w, "lab_Eseguiti"), "5"); // the text counts one more than its 4 records
        EXPECT_TRUE(w->isVisible());
    });
    EXPECT_EQ(domanda, "Il file " + file + "  esiste già!\nsostituire il file?");
    EXPECT_TRUE(FileBytes(file).startsWith("\"Quorvel - Tabella Operazioni Eseguiti \"\r\n\r\n"));
}

TEST_F(EsportaTest, DatabaseCopyComesFromTheFileBeforeSaveAsAndTheFrameReplays)
{
    // After save as, dbExe is the new file while sFilePortafoglio still names DataExe.qvd.
    AnswerFileDialog(path("mio.qvp"));
    frame->mnu_Salva_Click();
    AddTrade(dbExe, "17/01/2003", "Buy", "DAY", "FIAT", 10, 5); // only in mio.qvp
    const QString scratch = path(store::kScratchPortfolio);
    {
        store::Database d;
        d.Open(scratch);
        // Not a replay's row: the replay after the copy drops it again.
        d.Execute("INSERT INTO Portafoglio (System, Cod, Titolo, Qta, PzoCarico, Importo, Commissioni) VALUES ('DAY','XX','x',1,1,1,0)");
    }
    esporta([&](QWidget* w) {
        clic(w, "chk_Eseguiti");
        clic(w, "chk_Portafoglio");
        rispondi(path("copia"), 2);
        clic(w, "cmd_Avvia");
        EXPECT_EQ(lab(w, "lab_Operazionichiuse"), "");
        EXPECT_EQ(lab(w, "lab_Eseguiti"), "4");
        EXPECT_EQ(lab(w, "lab_Portafoglio"), "3");
        EXPECT_TRUE(w->isVisible());
    });
    EXPECT_EQ(dbExe.Path(), Module1::sFilePortafoglio);
    EXPECT_EQ(dbExe.Path(), scratch);
    EXPECT_EQ(Rows(dbExe, "SELECT Cod FROM Portafoglio ORDER BY Cod"), (QStringList{"ENI", "TIM"}));

    store::Database copia;
    copia.Open(path("copia.db"));
    EXPECT_EQ(Rows(copia, "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"),
              (QStringList{"Conto", "Eseguiti", "Portafoglio"}));
    EXPECT_EQ(Rows(copia, "SELECT Cod FROM Eseguiti ORDER BY ID"), (QStringList{"ENI", "ENI", "TIM", "ENI"}));
    EXPECT_EQ(Rows(copia, "SELECT Cod FROM Portafoglio ORDER BY Cod"), (QStringList{"ENI", "TIM", "XX"}));
}

TEST_F(EsportaTest, FailuresCloseTheWindowSilentlyAndLeaveThePortfolioWhole)
{
    const QStringList eseguiti = Rows(dbExe, "SELECT * FROM Eseguiti ORDER BY ID");
    QFile::remove(path(store::kLogoFile));
    esporta([&](QWidget* w) {
        clic(w, "chk_Portafoglio");
        rispondi(path("dati.xlsx"), 1);
        clic(w, "cmd_Avvia");
        EXPECT_FALSE(w->isVisible());
        EXPECT_FALSE(aperta());
    });
    EXPECT_EQ(Xlsx(path("dati.xlsx")).Fogli(), (QStringList{"Foglio1", "Foglio2", "Foglio3"}));

    // The open portfolio can't be replaced by its own export.
    esporta([&](QWidget* w) {
        clic(w, "chk_Eseguiti");
        rispondi(dbExe.Path(), 2);
        PressOnModal("Sì");
        clic(w, "cmd_Avvia");
        EXPECT_FALSE(aperta());
    });
    EXPECT_EQ(Rows(dbExe, "SELECT * FROM Eseguiti ORDER BY ID"), eseguiti);
    store::Database scratch;
    scratch.Open(path(store::kScratchPortfolio));
    EXPECT_EQ(Rows(scratch, "SELECT * FROM Eseguiti ORDER BY ID"), eseguiti);
}

TEST_F(EsportaTest, TheBarsSixteenBitCounterOverflowsPast32767Steps)
{
    // One step a record: the 32768th overflows the counter, and that failure closes the window too.
    dbExe.ExecuteScript("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 32768) "
                        "INSERT INTO Portafoglio (System, Cod, Titolo, Qta, PzoCarico, Importo, Commissioni) "
                        "SELECT 'DAY', 'C' || i, 't', 1, 1, 1, 0 FROM n;");
    esporta([&](QWidget* w) {
        clic(w, "chk_Portafoglio");
        rispondi(path("tanti.csv"), 3);
        clic(w, "cmd_Avvia");
        EXPECT_FALSE(aperta());
    });
    // Lines written up to the failing step: title, empty line, headers, then 32767 + 1 records.
    EXPECT_EQ(FileBytes(path("tanti.csv")).count("\r\n"), 3 + 32768);
}
