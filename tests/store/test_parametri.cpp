// The initial parameters: the four fields and the systems' grid, saved on every way of closing.
#include "platform/DataSource.h"
#include "store/frmParametriIniziali.h"
#include "support/Programma.h"

using namespace testing_support;

namespace {

class ParametriTest : public ProgramTest {
protected:
    void SetUp() override
    {
        Avvia();
        set.Open(dir.filePath("DataSet.qvd"));
    }
    // Opens the modal window from its menu and lets `work` act on it.
    void apri(std::function<void(QWidget*)> work)
    {
        WhenModal([work](QWidget* w) { work(w); }, [](QWidget* w) { return w->objectName() == "frmParametriIniziali"; });
        MDIForm1::Instance()->Menu("mnu_ParametriIniziali")->trigger();
    }
    QStringList settaggi() { return Rows(set, "SELECT CapitaleIniziale, CapitalGain, SLMM, SLP FROM Settaggi"); }

    store::Database set;
};

void scrivi(QWidget* w, const char* name, const QString& text) { Scrivi(w->findChild<QLineEdit*>(name), text); }
void clicca(QWidget* w, const char* name) { Clicca(w->findChild<QPushButton*>(name)); }
} // namespace

TEST_F(ParametriTest, FieldsAndSystemsGridSaveOnEveryWayOfClosing)
{
    EXPECT_EQ(settaggi(), QStringList{"10000|26|250|3"});
    apri([](QWidget* w) {
        EXPECT_EQ(w->findChild<QLineEdit*>("txtCapitaleIniziale")->text(), "10000");
        scrivi(w, "txtCapitaleIniziale", "25000,505");  // two decimals at most
        scrivi(w, "txtCapitalGain", "125,5");           // two digits before the comma
        scrivi(w, "txtSLMM", "");                       // emptied: keeps 250
        scrivi(w, "txtSLP", "2,,5");                    // one comma only
        w->close();                                     // closing by the window's own button saves too
    });
    EXPECT_EQ(settaggi(), QStringList{"25000,5|12,5|250|2,5"});

    apri([](QWidget* w) {
        scrivi(w, "txtSLMM", "300");
        clicca(w, "Command2");
    });
    EXPECT_EQ(settaggi(), QStringList{"25000,5|12,5|300|2,5"});

    // The systems' grid edits, adds and keeps its last row.
    apri([](QWidget* w) {
        auto* grid = w->findChild<QTableView*>("DBGrid1");
        auto* model = grid->model();
        ASSERT_EQ(model->rowCount(), 5);
        EXPECT_EQ(model->headerData(2, Qt::Horizontal).toString(), "%.");
        ScriviCella(grid, 0, 2, "2,5"); // a comma number into Commissioni
        EXPECT_EQ(model->index(0, 2).data().toString(), "2,5");
        const QString minimo = model->index(0, 3).data().toString();
        QString testo;
        PressOnModal("OK", &testo);
        ScriviCella(grid, 0, 3, "tanto");
        EXPECT_EQ(testo, "Valore non valido: tanto");
        EXPECT_EQ(model->index(0, 3).data().toString(), minimo); // refused, the cell keeps its value
        clicca(w, "cmd_Aggiungi");
        EXPECT_EQ(model->rowCount(), 6);
        // Delete down to one row; the last one stays.
        for (int i = 0; i < 6; ++i) {
            ClickRiga(grid, 0);
            if (model->rowCount() == 1)
                PressOnModal("OK");
            clicca(w, "cmd_Elimina");
        }
        EXPECT_EQ(model->rowCount(), 1);
        w->close();
    });
    EXPECT_EQ(Rows(set, "SELECT Cod FROM System"), QStringList{"NUOVO"});
}
