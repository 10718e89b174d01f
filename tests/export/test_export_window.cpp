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
    // Opens the window from its menu, ticks the boxes, answers the file dialog (an empty name cancels)
    // and the replace question if given, clicks Esporta; `then` looks at the window afterwards.
    void esporta(const QStringList& caselle, const QString& file, int forma, const QString& risposta = {},
                 std::function<void(QWidget*)> then = {})
    {
        WhenModal([=, this](QWidget* w) {
            QPointer<QWidget> window(w);
            for (const QString& c : caselle)
                clic(w, c);
            rispondi(file, forma);
            if (!risposta.isEmpty())
                PressOnModal(risposta, &domanda);
            clic(w, "cmd_Avvia");
            if (then)
                then(w);
            if (window && window->isVisible())
                window->close();
        }, [](QWidget* w) { return w->objectName() == "frmEsporta"; });
        frame->Menu("mnu_Esporta")->trigger();
    }
    // Picks the form in the dialog's type list (xlsx, db, csv: from 1), then gives the name.
    void rispondi(const QString& file, int forma)
    {
        WhenModal([=, this](QWidget* modal) {
            auto* combo = modal->findChild<QComboBox*>("fileTypeCombo");
            for (int i = 1; i < forma; ++i)
                QTest::keyClick(combo, Qt::Key_Down);
            AnswerFileDialog(file, &titolo);
        }, [](QWidget* w) { return qobject_cast<QFileDialog*>(w) != nullptr; });
    }
    static void clic(QWidget* w, const QString& name)
    {
        auto* b = w->findChild<QAbstractButton*>(name);
        // A check box takes clicks on its box and caption, not on the rest of its row.
        QTest::mouseClick(b, Qt::LeftButton, {}, qobject_cast<QCheckBox*>(b) ? QPoint(8, b->height() / 2) : b->rect().center());
    }
    static QString etichette(QWidget* w)
    {
        QStringList out;
        for (const char* name : {"lab_Operazionichiuse", "lab_Eseguiti", "lab_Portafoglio"})
            out << w->findChild<QLabel*>(name)->text();
        return out.join('|');
    }
    static bool aperta() { return platform::Forms::Find("frmEsporta") != nullptr; }

    QString titolo, domanda;
};

} // namespace

TEST_F(EsportaTest, CheckBoxesEnableTheExportAndCancelClosesTheWindow)
{
    bool chiusa = false;
    esporta({"chk_OperazioniChiuse"}, QString(), 1, {}, [&](QWidget* w) { chiusa = !w->isVisible() && !aperta(); });
    EXPECT_TRUE(chiusa);
    EXPECT_EQ(titolo, "Esporta i dati in xls");

    RunModal(frame->Menu("mnu_Esporta"), "frmEsporta", [](QWidget* w) {
        auto* avvia = w->findChild<QAbstractButton*>("cmd_Avvia");
        EXPECT_FALSE(w->findChild<QProgressBar*>("ProgressBar1")->isVisible());
        EXPECT_FALSE(avvia->isEnabled());
        clic(w, "chk_Eseguiti");
        EXPECT_TRUE(avvia->isEnabled());
        clic(w, "chk_Portafoglio");
        clic(w, "chk_Eseguiti");
        EXPECT_TRUE(avvia->isEnabled());
        clic(w, "chk_Portafoglio"); // the last box unchecked
        EXPECT_FALSE(avvia->isEnabled());
        clic(w, "cmd_Chiudi");
    });
    EXPECT_FALSE(aperta());
}

TEST_F(EsportaTest, WorkbookCountsOnTheLabelsAndTheBarNeverReset)
{
    esporta({"chk_OperazioniChiuse", "chk_Eseguiti"}, path("dati"), 1, {}, [&](QWidget* w) {
        auto* bar = w->findChild<QProgressBar*>("ProgressBar1");
        EXPECT_EQ(etichette(w), "2|4|");
        EXPECT_FALSE(bar->isVisible());
        // Maximum 2: steps 1, 2. Maximum 4: steps 3, 4, then 4 is not below 4 and the bar starts over: 0, 1.
        EXPECT_EQ(bar->value(), 1);

        // Again from the same window: the counter goes on and the other labels stay.
        for (const char* c : {"chk_OperazioniChiuse", "chk_Eseguiti", "chk_Portafoglio"})
            clic(w, c);
        rispondi(path("posizioni.xlsx"), 1);
        // Each step, seen as it happens: the bar shown and both buttons off.
        QStringList passi;
        QObject::connect(bar, &QProgressBar::valueChanged, w, [&passi, bar, w](int v) {
            const bool inCorso = bar->isVisible() && !w->findChild<QAbstractButton*>("cmd_Avvia")->isEnabled()
                                 && !w->findChild<QAbstractButton*>("cmd_Chiudi")->isEnabled();
            passi << QString::number(v) + (inCorso ? "" : "?");
        });
        clic(w, "cmd_Avvia");
        EXPECT_EQ(etichette(w), "2|4|2");
        EXPECT_EQ(passi.join(' '), "2 0"); // maximum 2: from 1 to 2, then over
    });
    // The form's extension goes on a bare name.
    EXPECT_EQ(Xlsx(path("dati.xlsx")).Fogli().join(','), "OperazioniChiuse,Eseguiti,Foglio3");
    EXPECT_EQ(Xlsx(path("posizioni.xlsx")).Fogli().join(','), "Portafoglio,Foglio2,Foglio3");
}

TEST_F(EsportaTest, ReplaceQuestionNoKeepsTheFileYesReplacesIt)
{
    const QString file = path("dati.csv");
    QFile old(file);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly) && old.write("vecchio") == 7);
    old.close();
    esporta({"chk_Eseguiti"}, file, 3, "No", [&](QWidget* w) {
        EXPECT_TRUE(w->isVisible());
        EXPECT_EQ(etichette(w), "||");
        EXPECT_EQ(FileBytes(file), "vecchio");
        rispondi(file, 3);
        PressOnModal("Sì");
        clic(w, "cmd_Avvia");
        EXPECT_EQ(etichette(w), "|5|"); // the text counts one more than its 4 records
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
    {
        store::Database scratch;
        scratch.Open(path(store::kScratchPortfolio));
        // No replay makes this row: the one after the copy drops it again.
        scratch.Execute("INSERT INTO Portafoglio (System, Cod, Titolo, Qta, PzoCarico, Importo, Commissioni) VALUES ('DAY','XX','x',1,1,1,0)");
    }
    esporta({"chk_Eseguiti", "chk_Portafoglio"}, path("copia"), 2, {}, [](QWidget* w) {
        EXPECT_TRUE(w->isVisible());
        EXPECT_EQ(etichette(w), "|4|3");
    });
    EXPECT_EQ(dbExe.Path(), Module1::sFilePortafoglio);
    EXPECT_EQ(dbExe.Path(), path(store::kScratchPortfolio));
    EXPECT_EQ(Rows(dbExe, "SELECT Cod FROM Portafoglio ORDER BY Cod").join(','), "ENI,TIM");

    store::Database copia;
    copia.Open(path("copia.db"));
    EXPECT_EQ(Rows(copia, "SELECT Cod FROM Eseguiti ORDER BY ID").join(','), "ENI,ENI,TIM,ENI");
    EXPECT_EQ(Rows(copia, "SELECT Cod FROM Portafoglio ORDER BY Cod").join(','), "ENI,TIM,XX");
}

TEST_F(EsportaTest, FailuresCloseTheWindowSilentlyAndLeaveThePortfolioWhole)
{
    const QStringList eseguiti = Rows(dbExe, "SELECT * FROM Eseguiti ORDER BY ID");
    const auto chiusa = [](QWidget* w) { EXPECT_TRUE(!w->isVisible() && !aperta()); };
    QFile::remove(path(store::kLogoFile));
    esporta({"chk_Portafoglio"}, path("dati.xlsx"), 1, {}, chiusa);
    EXPECT_EQ(Xlsx(path("dati.xlsx")).Fogli().join(','), "Foglio1,Foglio2,Foglio3"); // the empty workbook
    EXPECT_FALSE(Xlsx(path("dati.xlsx")).Foglio(1).contains("<c "));

    // The open portfolio can't be replaced by its own export.
    esporta({"chk_Eseguiti"}, dbExe.Path(), 2, "Sì", chiusa);
    EXPECT_EQ(Rows(dbExe, "SELECT * FROM Eseguiti ORDER BY ID"), eseguiti);

    // One bar step a record, counted in 16 bits: the 32768th overflows.
    dbExe.ExecuteScript("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 32768) "
                        "INSERT INTO Portafoglio (System, Cod, Titolo, Qta, PzoCarico, Importo, Commissioni) "
                        "SELECT 'DAY', 'C' || i, 't', 1, 1, 1, 0 FROM n;");
    esporta({"chk_Portafoglio"}, path("tanti.csv"), 3, {}, chiusa);
    EXPECT_EQ(FileBytes(path("tanti.csv")).count("\r\n"), 3 + 32768); // title, empty line, headers, the records so far
}
