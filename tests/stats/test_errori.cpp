// The error statistics and the catalogue editor, read on screen and in the settings file.
#include "platform/Chart.h"
#include "platform/DataSource.h"
#include "stats/frmPersonalizzaErrori.h"
#include "support/Programma.h"

#include <QMessageBox>

using namespace testing_support;

namespace {

class ErroriTest : public ProgramTest {
protected:
    void SetUp() override
    {
        Avvia(true);
        set.Open(path("DataSet.qvd"));
    }
    // A buy of its own code, tagged, with the price that would have been right.
    void eseguito(const char* cod, const char* errore, double qta, double prezzo, double ottimale)
    {
        AddTrade(Module1::dbExe, "13/01/2003", "Buy", "DAY", cod, qta, prezzo, errore);
        Module1::dbExe.Execute(QStringLiteral("UPDATE Eseguiti SET PrezzoOttimale = %1 WHERE Cod = '%2'").arg(ottimale).arg(cod));
    }
    QStringList catalogo() { return Rows(set, "SELECT Cod, Descrizione, Note, Contatore, Importo FROM Errori"); }

    store::Database set;
};

} // namespace

TEST_F(ErroriTest, CountersRebuiltWithTheAmountOfThePreviousErrorsCursor)
{
    eseguito("A", "NE", 100, 10, 9);   // clean, costs nothing
    eseguito("B", "EA", 10, 10, 11);   // 10
    eseguito("C", "EA", 20, 10, 11);   // 20
    eseguito("D", "ER", 5, 11, 10);    // 5
    eseguito("E", "EA", 7, 10.25, 10); // floor(1.75) = 1
    eseguito("F", "NE", 1, 1, 1);
    QWidget* w = frame->MostraFinestra("frmErrori");

    // The amounts come from the previous error's cursor: EA ends at 0 + 1, ER at 10 + 5.
    // 4 * 100 / 6 = 66.67; 10 + 20 + 5 + 1, the true sum.
    EXPECT_EQ(Etichette(w, {"lab_TotaleErrori", "lab_PercentualeErrori", "lab_TotMancatiGuadagni"}), "4|66,7|36");
    EXPECT_EQ(Etichette(w, {"lab_PiuPericoloso", "lab_PiuFrequente"}),
              "Entrata in ritardo, a prezzo peggiore del segnale|Entrata anticipata, prima del segnale del sistema");

    // The grid shows the whole catalogue by count, the no-error row included.
    auto* grid = w->findChild<platform::DataGrid*>("DBGrid1");
    EXPECT_EQ(QString::number(grid->Model()->rowCount()) + "|" + grid->Model()->Text(0, 0) + "|" + grid->Model()->Text(1, 2),
              "13|EA|15");

    // One chart row per error code: shares of the errors and of the money, unrounded.
    auto* chart = w->findChild<platform::Chart*>("msc_Errori");
    EXPECT_EQ(chart->RowCount(), 12);
    // 3 * 100 / 4; 1 * 100 / 36; 15 * 100 / 36.
    EXPECT_EQ(chart->DataAt(1, 1) + "|" + chart->DataAt(1, 2) + "|" + chart->DataAt(2, 2), "75|2,77777777777778|41,6666666666667");

    // A refresh starts from nothing: without errors the money figures are empty.
    Module1::dbExe.Execute("UPDATE Eseguiti SET Errore = 'NE'");
    QMetaObject::invokeMethod(w, "Main", Qt::DirectConnection);
    EXPECT_EQ(Etichette(w, {"lab_TotaleErrori", "lab_PercentualeErrori", "lab_TotMancatiGuadagni", "lab_PiuPericoloso",
                            "lab_PiuFrequente"}), "0|0|||");
    EXPECT_EQ(chart->DataAt(1, 1) + "|" + chart->DataAt(1, 2), "0|0");
    EXPECT_EQ(Rows(set, "SELECT Cod FROM Errori WHERE Contatore > 0 OR Importo > 0"), QStringList{});
}

TEST_F(ErroriTest, AnUnknownCodeFailsKeepingWhatWasWrittenBeforeIt)
{
    eseguito("B", "EA", 10, 10, 11);
    eseguito("C", "QQ", 1, 1, 2);
    eseguito("D", "ER", 5, 11, 10);
    set.Execute("UPDATE Errori SET Contatore = 4, Importo = 4");
    EXPECT_THROW(frame->MostraFinestra("frmErrori"), store::DbError);
    // The reset and the first error are on disk, as statement after statement leaves them:
    // the first error took NE's 4 from the cursor opened before the reset, + 10.
    set.Close();
    set.Open(path("DataSet.qvd"));
    EXPECT_EQ(Rows(set, "PRAGMA integrity_check"), QStringList{"ok"});
    EXPECT_EQ(Rows(set, "SELECT Cod, Contatore, Importo FROM Errori WHERE Contatore > 0 OR Importo > 0"),
              QStringList{"EA|1|14"});
}

TEST_F(ErroriTest, EditorRefusesATooLongCodeWritesTheRestThroughAndRestoresWithoutAQuestion)
{
    // The catalogue editor, shown as the frame shows it but without blocking the test.
    frmPersonalizzaErrori* w = frmPersonalizzaErrori::Instance();
    w->show();
    auto* grid = w->findChild<QTableView*>("DBGrid1");

    // A code of three letters: the stop box, and nothing changes.
    const QStringList prima = catalogo();
    QString testo;
    QMessageBox::Icon icona = QMessageBox::NoIcon;
    WhenModal([&](QWidget* modal) {
        auto* box = static_cast<QMessageBox*>(modal);
        testo = box->text();
        icona = box->icon();
        box->button(QMessageBox::Ok)->click();
    }, [](QWidget* m) { return qobject_cast<QMessageBox*>(m) != nullptr; });
    ScriviCella(grid, 1, 0, "EAX");
    EXPECT_EQ(testo, "Massimo 2 caratteri per questo campo");
    EXPECT_EQ(icona, QMessageBox::Critical);
    EXPECT_EQ(catalogo(), prima);
    EXPECT_EQ(grid->model()->index(1, 0).data().toString(), "EA");

    // A code typed into the last row adds a record; then its description and note.
    const int nuova = grid->model()->rowCount() - 1;
    EXPECT_EQ(grid->model()->headerData(nuova, Qt::Vertical).toString(), "*");
    ScriviCella(grid, nuova, 0, "ZZ");
    ScriviCella(grid, nuova, 1, "Prova dell'utente");
    ClickRiga(grid, nuova, 0);
    auto* note = w->findChild<QLineEdit*>("Text1");
    QTest::keyClicks(note, "da rivedere");
    QTest::keyClick(note, Qt::Key_Return);
    EXPECT_EQ(Rows(set, "SELECT Cod, Descrizione, Note FROM Errori WHERE Cod = 'ZZ'"),
              QStringList{"ZZ|Prova dell'utente|da rivedere"});
    // The note follows the selected row.
    ClickRiga(grid, 0, 1);
    EXPECT_EQ(note->text(), "");
    ClickRiga(grid, nuova, 1);
    EXPECT_EQ(note->text(), "da rivedere");

    // Changing a description and deleting a row write through at once.
    ScriviCella(grid, 2, 1, "Entrata tardiva");
    EXPECT_EQ(Rows(set, "SELECT Descrizione FROM Errori WHERE Cod = 'ER'"), QStringList{"Entrata tardiva"});
    ClickRiga(grid, nuova, 0);
    QTest::keyClick(grid, Qt::Key_Delete);
    EXPECT_EQ(Rows(set, "SELECT Cod FROM Errori WHERE Cod = 'ZZ'"), QStringList{});
    EXPECT_EQ(grid->model()->rowCount(), 13 + 1);

    // Restore: the delivered catalogue, no question asked, and the grid reloaded; the
    // open statistics are not refreshed.
    eseguito("B", "EA", 10, 10, 11);
    QWidget* stat = frame->MostraFinestra("frmErrori");
    QTest::mouseClick(w->findChild<QPushButton*>("cmd_Ripristino"), Qt::LeftButton);
    EXPECT_EQ(QApplication::activeModalWidget() == nullptr || QApplication::activeModalWidget() == w, true);
    EXPECT_EQ(catalogo(), Rows(set, "SELECT Cod, Descrizione, Note, Contatore, Importo FROM ErroriDefault"));
    EXPECT_EQ(grid->model()->index(2, 1).data().toString(), "Entrata in ritardo, a prezzo peggiore del segnale");
    EXPECT_EQ(Etichette(stat, {"lab_TotaleErrori"}), "1");
    EXPECT_EQ(stat->findChild<platform::DataGrid*>("DBGrid1")->Model()->Text(0, 3), "1");

    QTest::mouseClick(w->findChild<QPushButton*>("Command2"), Qt::LeftButton);
    FlushDeletes();
    EXPECT_EQ(platform::Forms::Find("frmPersonalizzaErrori"), nullptr);
}
