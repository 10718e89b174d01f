// The import window as the trader uses it: a folder of day files, ticks, the preview, the questions.
#include "export/Esportazione.h"
#include "ledger/Importa.h"
#include "ledger/Replay.h"
#include "store/Delivered.h"
#include "platform/FailureReport.h"
#include "platform/FileLists.h"
#include "support/Cartella.h"
#include "support/Programma.h"

#include <QDir>
#include <QFileInfo>
#include <QFile>
#include <QMessageBox>

using namespace testing_support;

namespace {

const QByteArray kIntestazione = "Account,Time,Exchange,Route,Side,Qty,Symbol,Price,Status,System,OrderId\r\n";

class ImportaTest : public ProgramTest {
protected:
    void SetUp() override
    {
        Avvia(true);
        AddTrade(Module1::dbExe, "10/01/2003", "Buy", "DAY", "ENI", 100, 10);
        frame->ControlloMenu();
    }
    void TearDown() override
    {
        // Every box the test expected has come.
        EXPECT_TRUE(risposte.isEmpty()) << risposte.join(',').toStdString();
        ProgramTest::TearDown();
    }
    void scrivi(const QString& name, const QByteArray& bytes) { WriteFile(cartella.filePath(name), bytes); }
    // Opens the window on the folder of day files.
    void apri()
    {
        w = Importa::Instance();
        w->show();
        w->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(w));
        c<platform::DirList>("Dir1")->setProperty("Path", cartella.path());
    }
    template <class T> T* c(const char* name) { return w->findChild<T*>(QString::fromLatin1(name)); }
    QString lab(const char* name) { return c<QLabel>(name)->text(); }
    platform::CheckList* list() { return c<platform::CheckList>("List1"); }
    // The rows of a list or a grid as the user reads them, cells joined by '|'.
    static QStringList righe(const QAbstractItemModel* m)
    {
        QStringList out;
        for (int r = 0; r < m->rowCount(); ++r) {
            QStringList cells;
            for (int col = 0; col < m->columnCount(); ++col)
                cells << m->index(r, col).data().toString();
            out << cells.join('|');
        }
        return out;
    }
    QStringList voci() { return righe(list()->model()); }
    void spunta(const QString& name)
    {
        const QList<QListWidgetItem*> found = list()->findItems(name, Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << name.toStdString();
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, list()->visualItemRect(found.front()).center());
    }
    void formato(int index) { ChooseInCombo(c<QComboBox>("Combo1"), c<QComboBox>("Combo1")->itemText(index)); }
    void ok() { QTest::mouseClick(c<QPushButton>("cmd_Ok"), Qt::LeftButton); }
    QStringList anteprima() { return righe(c<QTableView>("DBGrid1")->model()); }
    // The message boxes to come, answered in order with the button of that text; their icon and text are kept.
    void rispondi(const QStringList& bottoni)
    {
        if ((risposte = bottoni).isEmpty())
            return;
        WhenModal(
            [this](QWidget* modal) {
                auto* box = static_cast<QMessageBox*>(modal);
                visti << QString::number(box->icon()) + '|' + box->text();
                const QString bottone = risposte.takeFirst();
                rispondi(QStringList(risposte)); // the next box may come from this click
                for (QAbstractButton* b : box->findChildren<QAbstractButton*>())
                    if (b->text().remove('&') == bottone)
                        QTest::mouseClick(b, Qt::LeftButton);
            },
            [](QWidget* m) { return qobject_cast<QMessageBox*>(m) != nullptr; });
    }
    QStringList eseguiti()
    {
        return Rows(Module1::dbExe, "SELECT ID, Data, Tipo, Qta, Cod, Titolo, Prezzo, Importo, System, Errore, PrezzoOttimale FROM Eseguiti");
    }
    // A portfolio of its own filled by `fill`, replayed, its trades exported with the export's own code.
    void esporta(const QString& nome, store::Database& sorgente, const std::function<void(store::Database&)>& fill,
                 const esporta::Scelta& scelta = {false, true, false})
    {
        sorgente.Open(cartellaPortafogli.NewPortfolio(nome + ".qvp"));
        {
            store::Transaction tx(sorgente);
            fill(sorgente);
            tx.Commit();
        }
        ledger::RicalcolaPortafoglio(sorgente, Module1::dbSet, {});
        esporta::Avanzamento niente;
        esporta::EsportaXls(sorgente, cartella.filePath(nome + ".xlsx"), scelta, path(store::kLogoFile), niente);
    }

    QTemporaryDir giorni;
    QDir cartella{giorni.path()};
    ProgramFolder cartellaPortafogli;
    Importa* w = nullptr;
    QStringList risposte, visti;
};

const QString kPlain = QString::number(QMessageBox::NoIcon) + '|';
const QString kAvviso = QString::number(QMessageBox::Warning) + '|';
const QString kNonValido = kPlain + "file di Real Tick non valido: i dati non contengono valori validi";

} // namespace

TEST_F(ImportaTest, TicksFormatsAnEditedPreviewAndImportRowByRow)
{
    scrivi("RT_20030117.csv", kIntestazione
                                  + "U1,09:00,MTA,D,BUY,100,ENI,10.5,F,DAY,1\r\n"
                                    "U1,09:10,MTA,D,SELL,500,ENI,11,F,DAY,2\r\n" // more than held
                                    "U1,09:20,MTA,D,SELL,150,ENI,11.25,F,DAY,3\r\n");
    scrivi("RT_20030120.CSV", kIntestazione + "U1,10:00,MTA,D,BUY,200,TIM,2.5,F,SWING,4\r\n");
    scrivi("appunti.txt", "non un file di Real Tick\r\n");
    const QString libro = WriteWorkbook(cartella.filePath("chiuse.xlsx"), {{"Foglio1", {{}, {"Data"}}}});
    const QByteArray libroPrima = FileBytes(libro);
    apri();
    // The folder fills the list of ticks, in name order, whatever the case of the extension.
    EXPECT_EQ(voci(), (QStringList{"RT_20030117.csv", "RT_20030120.CSV"}));

    // The second format lists workbooks; a tick shows A2 of each ticked one and previews no trade.
    formato(1);
    EXPECT_EQ(voci(), QStringList{"chiuse.xlsx"});
    rispondi({"OK"});
    spunta("chiuse.xlsx");
    EXPECT_EQ(visti, QStringList{kPlain + "Data"});
    EXPECT_EQ(lab("lab_NumeroEseguiti"), "0");
    EXPECT_EQ(FileBytes(libro), libroPrima);

    // Back to day files. Ticks in any order: the preview shows the ticked files together, in list order.
    formato(0);
    spunta("RT_20030120.CSV");
    spunta("RT_20030117.csv");
    EXPECT_EQ(Etichette(w, {"lab_FileSelezionati", "lab_NumeroEseguiti"}), "2|4");
    EXPECT_EQ(anteprima(), (QStringList{"17/01/2003|BUY|DAY|ENI|ND|100|10,5", "17/01/2003|SELL|DAY|ENI|ND|500|11",
                                        "17/01/2003|SELL|DAY|ENI|ND|150|11,25", "20/01/2003|BUY|SWING|TIM|ND|200|2,5"}));
    // The drive already shown, picked again, changes nothing: the folder and the ticks stay.
    ChooseInCombo(c<platform::DriveList>("Drive1"), c<platform::DriveList>("Drive1")->currentText());
    EXPECT_EQ(c<platform::DirList>("Dir1")->property("Path").toString(), cartella.path());

    // A cell of the preview is edited where it stands; a value the column can't hold is refused.
    rispondi({"OK"});
    ScriviCella(c<QTableView>("DBGrid1"), 0, 5, "cento");
    EXPECT_EQ(visti.last(), kAvviso + "Valore non valido: cento");
    EXPECT_EQ(anteprima().first(), "17/01/2003|BUY|DAY|ENI|ND|100|10,5");
    ScriviCella(c<QTableView>("DBGrid1"), 0, 0, "18/01/2003");
    EXPECT_EQ(Rows(Module1::dbExe, "SELECT Data, Qta FROM EseguitiTemp").first(), "18/01/2003|100");

    // The impossible sale is taken out on No.
    visti.clear();
    rispondi({"No"});
    ok();
    EXPECT_EQ(visti, QStringList{kAvviso + "Errore nei dati ENI disponibili solo 200 pezzi importare comunque?"});
    EXPECT_FALSE(w->isVisible());
    // The import parses the files afresh: the preview's edits don't travel.
    EXPECT_EQ(eseguiti().mid(1), (QStringList{"2|17/01/2003|BUY|100|ENI|ND|10,5|1050|DAY|NE|10,5",
                                              "3|17/01/2003|SELL|150|ENI|ND|11,25|1687,5|DAY|NE|11,25",
                                              "4|20/01/2003|BUY|200|TIM|ND|2,5|500|SWING|NE|2,5"}));
    // The replay ran, and the trade window took the new trades as its working copy.
    EXPECT_EQ(Rows(Module1::dbExe, "SELECT Cod, Qta FROM Portafoglio"), (QStringList{"ENI|50", "TIM|200"}));
    EXPECT_EQ(platform::Forms::Find("frmEseguiti")->findChild<QLabel*>("lab_TotaleEseguiti")->text(), "4");
}

TEST_F(ImportaTest, BadFilesNothingToImportAndAnnullaKeepTheLedger)
{
    scrivi("RT_20030117.csv", kIntestazione + "U1,09:00,MTA,D,BUY,100,ENI,10.5,F,DAY,1\r\n"
                                              "U1,09:10,MTA,D,SELL\r\n"
                                              "U1,09:20,MTA,D,BUY,150,ENI,11.25,F,DAY,3\r\n");
    scrivi("RT_20030120.csv", kIntestazione);
    scrivi("vuoto.csv", "");
    const QStringList prima = eseguiti();
    apri();

    // The one message, and the lines before the short one stay in the preview.
    rispondi({"OK"});
    spunta("RT_20030117.csv");
    EXPECT_EQ(visti, QStringList{kNonValido});
    EXPECT_EQ(lab("lab_NumeroEseguiti"), "1");

    // A name without a date: the same message, at each parsing. Nothing left to import then.
    visti.clear();
    rispondi({"OK", "OK", "OK", "OK"});
    spunta("RT_20030117.csv");
    spunta("vuoto.csv");
    spunta("RT_20030120.csv");
    ok();
    EXPECT_EQ(visti, (QStringList{kNonValido, kNonValido, kNonValido,
                                  QString::number(QMessageBox::Information) + "|"
                                      + "Non ci sono eseguiti da importare: spunta almeno un file con dati validi."}));
    EXPECT_TRUE(w->isVisible());
    EXPECT_EQ(lab("lab_NumeroEseguiti"), "0");
    EXPECT_EQ(eseguiti(), prima);

    // Annulla: the trade window gets its working copy back.
    QTest::mouseClick(c<QPushButton>("cmd_Annulla"), Qt::LeftButton);
    EXPECT_FALSE(w->isVisible());
    EXPECT_EQ(Rows(Module1::dbExe, "SELECT ID FROM EseguitiTemp"), QStringList{"1"});
    EXPECT_EQ(eseguiti(), prima);
}

TEST_F(ImportaTest, OurEseguitiWorkbooksComeBackAndReplayTheSameUnlessPastTheLimitOfCodes)
{
    store::Database sorgente, altro, troppi;
    esporta("eseguiti", sorgente, [](store::Database& db) {
        AddTrade(db, "17/01/2003", "Buy", "DAY", "ENI", 100, 10.00125, "EA", "Eni");
        AddTrade(db, "17/01/2003", "Sell", "DAY", "ENI", 40, 12.5, "UR", "Eni");
        AddTrade(db, "20/01/2003", "BUY", "SWING", "123", 2.5, 3.333, "NE", "01/02/2003"); // a number, a date
        AddTrade(db, "21/01/2003", "SELL", "SWING", "123", 1.25, 4, "NE", "01/02/2003");
        AddTrade(db, "24/01/2003", "Sell", "DAY", "TIM", 400, 0.31);
        AddTrade(db, "22/01/2003", "Buy", "DAY", "TIM", 1000, 0.2871); // typed after its sale
        db.Execute("UPDATE Eseguiti SET PrezzoOttimale = 12.75 WHERE ID = 2");
    });
    // A workbook without the sheet: a clear message, nothing staged.
    esporta("chiuse", altro, [](store::Database& db) { AddTrade(db, "17/01/2003", "Buy", "DAY", "ENI", 1, 1); },
            {true, false, false});
    esporta("troppi", troppi, [](store::Database& db) {
        for (int i = 1; i <= 101; ++i)
            AddTrade(db, "11/01/2003", "Buy", "DAY", QStringLiteral("C%1").arg(i), 1, 1);
    });
    Module1::dbExe.Execute("DELETE * FROM Eseguiti");
    const QStringList portafoglio = Rows(Module1::dbExe, "SELECT * FROM Portafoglio");
    apri();
    formato(2);
    EXPECT_EQ(voci(), (QStringList{"chiuse.xlsx", "eseguiti.xlsx", "troppi.xlsx"}));
    rispondi({"OK"});
    spunta("chiuse.xlsx");
    EXPECT_EQ(visti, QStringList{QString::number(QMessageBox::Warning)
                                 + "|La cartella di lavoro chiuse.xlsx non ha un foglio \"Eseguiti\" esportato da Quorvel: niente da importare."});
    EXPECT_EQ(lab("lab_NumeroEseguiti"), "0");
    spunta("chiuse.xlsx");

    // The 101st code: a message, not the failure report, and the portfolio as it was.
    spunta("troppi.xlsx");
    visti.clear();
    rispondi({"OK"});
    ok();
    EXPECT_EQ(visti, QStringList{QString::number(QMessageBox::Critical)
                                 + "|Importazione non eseguita, il portafoglio è rimasto com'era: un portafoglio tiene al "
                                   "più 100 codici diversi (Indice non compreso nell'intervallo: 101)."});
    EXPECT_TRUE(w->isVisible());
    EXPECT_EQ(lab("lab_NumeroEseguiti"), "101");
    EXPECT_TRUE(eseguiti().isEmpty());
    EXPECT_EQ(Rows(Module1::dbExe, "SELECT * FROM Portafoglio"), portafoglio);
    spunta("troppi.xlsx");

    spunta("eseguiti.xlsx");
    EXPECT_EQ(lab("lab_NumeroEseguiti"), "6");
    EXPECT_EQ(anteprima()[2], "20/01/2003|BUY|SWING|123|01/02/2003|2,5|3,333");
    // Another format previews nothing of this one.
    formato(3);
    EXPECT_EQ(lab("lab_NumeroEseguiti"), "0");
    formato(2);
    spunta("eseguiti.xlsx");
    ok();
    EXPECT_FALSE(w->isVisible());
    // The same trades, in date order, and the same positions and closed operations.
    for (const char* t : {"SELECT Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo, Errore, PrezzoOttimale "
                          "FROM Eseguiti ORDER BY Data",
                          "SELECT * FROM Portafoglio", "SELECT * FROM OperazioniChiuse"})
        EXPECT_EQ(Rows(Module1::dbExe, t), Rows(sorgente, t)) << t;
}

TEST_F(ImportaTest, GuidedFilesStageTheirTradesAndBookTheirMovements)
{
    ASSERT_TRUE(QFile::copy(qEnvironmentVariable("QUORVEL_TEST_DATA") + "/brokers/directa.csv", cartella.filePath("directa.csv")));
    for (const char* f : {"estratto.txt", "estratto.pdf"})
        scrivi(f, "x");
    scrivi("rotto.xlsx", "non zip");
    apri();
    formato(3);
    EXPECT_EQ(voci(), (QStringList{"directa.csv", "estratto.txt", "rotto.xlsx"}));

    // The tick opens the mapping window on the file: Annulla takes the tick back, a new tick asks
    // again, OK stages what the window shows.
    const auto finestra = [](const char* bottone) {
        WhenModal([bottone](QWidget* m) { Clicca(m->findChild<QPushButton*>(bottone)); },
                  [](QWidget* m) { return m->objectName() == "frmImportazioneGuidata"; });
    };
    finestra("cmd_Annulla");
    spunta("directa.csv");
    EXPECT_EQ(lab("lab_FileSelezionati"), "0");
    finestra("cmd_Ok");
    spunta("directa.csv");
    EXPECT_EQ(lab("lab_NumeroEseguiti"), "3");
    // A file the window can't read: why, and its tick goes; what was staged stays.
    rispondi({"OK"});
    spunta("rotto.xlsx");
    EXPECT_EQ(visti, QStringList{kAvviso + "Impossibile leggere il file rotto.xlsx: non è una cartella di lavoro leggibile"});
    EXPECT_EQ(lab("lab_FileSelezionati"), "1");

    // A stand-in for the window from here: a file mapped once keeps what its mapping gave, unasked.
    QStringList mappati;
    w->SetImportazioneGuidata([&mappati](const QString& path, QWidget*) -> std::optional<ledger::Staging> {
        mappati << QFileInfo(path).fileName();
        ledger::Staging s;
        s.eseguiti = {{QDate(2003, 1, 17), "Buy", "SWING", "ENI", "Eni", 10, 10.5, "NE", 10.5, 12},
                      {QDate(2003, 1, 17), "Sell", "SWING", "ENI", "L'Eni", 50, 11, "NE", 11, 11},
                      {QDate(2003, 1, 18), "Sell", "SWING", "ENI", "Eni", 500, 11, "NE", 11, 13}, // more than held
                      {QDate(2003, 1, 18), "Sell", "SWING", "TIM", "Tim", 5, 2, "NE", 2, 14}}; // not held
        s.movimenti = {{QDate(2003, 1, 18), "Costi di gestione", 2.5, "Ritenuta d'acconto", 4},
                       {QDate(2003, 1, 19), "Dividendi", 7.25, "", 5}};
        return s;
    });
    spunta("estratto.txt");
    EXPECT_EQ(mappati, QStringList{"estratto.txt"});
    // The trades of all the ticked files by date.
    EXPECT_EQ(anteprima(), (QStringList{"17/01/2003|Buy|SWING|ENI|Eni|10|10,5", "17/01/2003|Sell|SWING|ENI|L\u2019Eni|50|11",
                                        "18/01/2003|Sell|SWING|ENI|Eni|500|11", "18/01/2003|Sell|SWING|TIM|Tim|5|2",
                                        "12/03/2024|Buy|DAY|OR|L\u2019OREAL|3|430,05", "15/03/2024|Buy|DAY|ENI|ENI|100|15,234",
                                        "15/03/2024|Sell|DAY|ENI|ENI|100|16,125"}));

    // The first refused row asks; "No a tutti" leaves out the later ones unasked.
    rispondi({"No a tutti"});
    ok();
    EXPECT_EQ(visti.last(), kAvviso + "Errore nei dati ENI disponibili solo 60 pezzi importare comunque?");
    EXPECT_FALSE(w->isVisible());
    // An apostrophe from a file is stored as a typographic one, which the statements can carry.
    EXPECT_EQ(eseguiti().mid(1), (QStringList{"2|17/01/2003|Buy|10|ENI|Eni|10,5|105|SWING|NE|10,5",
                                              "3|17/01/2003|Sell|50|ENI|L\u2019Eni|11|550|SWING|NE|11",
                                              "4|12/03/2024|Buy|3|OR|L\u2019OREAL|430,05|1290,15|DAY|NE|430,05",
                                              "5|15/03/2024|Buy|100|ENI|ENI|15,234|1523,4|DAY|NE|15,234",
                                              "6|15/03/2024|Sell|100|ENI|ENI|16,125|1612,5|DAY|NE|16,125"}));
    // The movements as the account window books them, in list order; no description is ".".
    EXPECT_EQ(Rows(Module1::dbExe, "SELECT Data, Tipo, Importo, Descrizione FROM Conto"),
              (QStringList{"01/03/2024|Versamento|5000|Bonifico da ROSSI MARIO", "28/03/2024|Dividendi|10|Provento etf VWCE",
                           "28/03/2024|Costi di gestione|2,6|Rit.provento etf",
                           "18/01/2003|Costi di gestione|2,5|Ritenuta d\u2019acconto", "19/01/2003|Dividendi|7,25|."}));
}

// A replay that fails on an imported row ends in the failure report, and takes the import back
// with it: the portfolio opens again as it was before the click. Last in this file: after the
// failure report the program takes no more events.
TEST_F(ImportaTest, AReplayFailingOnAnImportedRowLeavesThePortfolioAsBefore)
{
    // A buy at a zero price, then a sale of it: the replay divides by a load price of zero.
    scrivi("RT_20030117.csv", kIntestazione + "U1,09:00,MTA,D,BUY,100,ENI,10.5,F,DAY,1\r\n"
                                              "U1,09:10,MTA,D,BUY,3,TIM,0,F,DAY,2\r\n"
                                              "U1,09:20,MTA,D,SELL,1,TIM,3.4,F,DAY,3\r\n");
    const QStringList prima = Rows(Module1::dbExe, "SELECT * FROM Eseguiti");
    apri();
    spunta("RT_20030117.csv");

    QString report;
    ReadFailureReport(&report);
    // Queued, so the failure travels from the event dispatch like any handler's without
    // unwinding through Qt's mouse handling.
    QMetaObject::invokeMethod(w, "cmd_Ok_Click", Qt::QueuedConnection);
    QCoreApplication::processEvents();
    EXPECT_TRUE(static_cast<platform::Application*>(qApp)->Failed());
    EXPECT_TRUE(report.contains("Divisione per zero")) << report.toStdString();

    store::Database disk;
    disk.Open(Module1::dbExe.Path());
    EXPECT_EQ(Rows(disk, "SELECT * FROM Eseguiti"), prima);
}
