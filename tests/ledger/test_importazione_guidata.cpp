// The guided import window as the trader uses it: a broker's file opened, a model chosen
// by itself, columns and words changed by hand, a model saved and found again.
#include "ledger/frmImportazioneGuidata.h"
#include "support/Programma.h"

#include <QSpinBox>

using namespace testing_support;

namespace {

class ImportazioneGuidataTest : public ProgramTest {
protected:
    void SetUp() override { Avvia(); }
    void TearDown() override
    {
        w.reset();
        ProgramTest::TearDown();
    }
    void apri(const QString& path)
    {
        w = frmImportazioneGuidata::Apri(path, frame);
        ASSERT_NE(w, nullptr);
        w->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(w.get()));
    }
    template <class T> T* c(const char* name) { return w->findChild<T*>(QString::fromLatin1(name)); }
    // What the fields show, joined by '|': their user property, a list's choice, a number, a text.
    QString campi(std::initializer_list<const char*> nomi)
    {
        QStringList out;
        for (const char* n : nomi) {
            QWidget* f = c<QWidget>(n);
            out << f->metaObject()->userProperty().read(f).toString();
        }
        return out.join('|');
    }
    // Eseguiti / movimenti / scartate as the counters show them.
    QString conti() { return c<QLabel>("lab_Eseguiti")->text() + "/" + c<QLabel>("lab_Movimenti")->text() + "/" + c<QLabel>("lab_Scartate")->text(); }
    QString anteprima(int riga, int colonna)
    {
        const QAbstractItemModel* m = c<QTableView>("tbl_Anteprima")->model();
        return m->index(riga, colonna).data().toString();
    }

    std::unique_ptr<frmImportazioneGuidata> w;
};

} // namespace

TEST_F(ImportazioneGuidataTest, ADirectaFileOpensWithItsModelAndFollowsTheUsersChanges)
{
    apri(qEnvironmentVariable("QUORVEL_TEST_DATA") + "/brokers/directa.csv");
    EXPECT_EQ(w->windowTitle(), "Importazione guidata - directa.csv");
    EXPECT_EQ(campi({"cmb_Modello", "spn_Intestazione", "cmb_Separatore", "cmb_Decimale", "cmb_FormatoData", "cmb_Data", "cmb_Prezzo",
                     "txt_Vendita", "dbc_System"}),
              "Directa|10|,|.|gg/mm/aaaa|Data operazione|(nessuna)|Vendita|DAY");
    EXPECT_EQ(conti(), "3/3/1");
    // The file as it is, and the preview: trades first, oldest first.
    EXPECT_EQ(c<QTableView>("tbl_File")->model()->index(9, 0).data().toString(), "Data operazione");
    EXPECT_EQ(QStringList({anteprima(0, 1), anteprima(0, 2), anteprima(0, 3), anteprima(0, 4), anteprima(0, 7)}),
              QStringList({"Eseguito", "12/03/2024", "Buy", "OR", "430,05"}));

    // The code from another column, chosen with the mouse and the keys; a word more for the costs.
    ChooseInCombo(c<QComboBox>("cmb_Cod"), "Isin");
    EXPECT_EQ(anteprima(0, 4), "FR0000120321");
    QTest::mouseClick(c<QLineEdit>("txt_Costi"), Qt::LeftButton);
    QTest::keyClick(c<QLineEdit>("txt_Costi"), Qt::Key_End);
    QTest::keyClicks(c<QLineEdit>("txt_Costi"), ";bollo TITOLI");
    EXPECT_EQ(conti(), "3/4/0");
    // A header line that isn't one: nothing maps, and OK says so and stays.
    QTest::keyClick(c<QSpinBox>("spn_Intestazione"), Qt::Key_Up);
    EXPECT_EQ(conti(), "0/0/6");
    QString messaggio;
    PressOnModal("OK", &messaggio);
    Clicca(c<QPushButton>("cmd_Ok"));
    EXPECT_TRUE(messaggio.startsWith("Nessuna riga del file è un eseguito o un movimento")) << messaggio.toStdString();
    EXPECT_TRUE(w->isVisible());
    EXPECT_TRUE(w->Risultato().eseguiti.isEmpty());

    // Back to the header: OK stages trades and movements under the chosen system.
    QTest::keyClick(c<QSpinBox>("spn_Intestazione"), Qt::Key_Down);
    ChooseInCombo(c<QComboBox>("dbc_System"), "SWING");
    Clicca(c<QPushButton>("cmd_Ok"));
    EXPECT_FALSE(w->isVisible());
    EXPECT_EQ(w->result(), QDialog::Accepted);
    ASSERT_EQ(w->Risultato().eseguiti.size(), 3);
    EXPECT_EQ(w->Risultato().eseguiti[2].system + '|' + w->Risultato().eseguiti[2].cod, "SWING|IT0003132476");
    EXPECT_EQ(w->Risultato().movimenti.size(), 4);
}

TEST_F(ImportazioneGuidataTest, AModelSavedByTheUserIsChosenForTheSameHeader)
{
    QByteArray righe = "Estratto conto\r\n\r\nGiorno;Operazione;Strumento;Pezzi;Prezzo;Valuta\r\n"
                       "15/03/2024;C;ENI;100;15,234;EUR\r\n16/03/2024;V;ENI;100;16,1;EUR\r\n";
    const QString primo = path("mia-banca.csv"), secondo = path("mia-banca-aprile.txt");
    WriteFile(primo, righe);
    WriteFile(secondo, righe.replace("/03/2024", "/04/2024"));
    apri(primo);
    EXPECT_EQ(campi({"cmb_Modello", "spn_Intestazione", "cmb_Separatore", "cmb_Decimale"}), "Personalizzato|3|;|,");
    EXPECT_EQ(conti(), "0/0/2");

    // Mapped by hand: the date format follows the date column's values.
    for (const auto& [lista, colonna] : {std::pair{"cmb_Data", "Giorno"}, {"cmb_Tipo", "Operazione"}, {"cmb_Cod", "Strumento"},
                                         {"cmb_Qta", "Pezzi"}, {"cmb_Prezzo", "Prezzo"}})
        ChooseInCombo(c<QComboBox>(lista), colonna);
    Scrivi(c<QLineEdit>("txt_Acquisto"), "C");
    Scrivi(c<QLineEdit>("txt_Vendita"), "V");
    EXPECT_EQ(campi({"cmb_FormatoData"}), "gg/mm/aaaa");
    EXPECT_EQ(conti(), "2/0/0");

    EXPECT_FALSE(c<QPushButton>("cmd_SalvaModello")->isEnabled());
    // A built-in model's name is refused.
    Scrivi(c<QLineEdit>("txt_NomeModello"), "fineco");
    QString messaggio;
    PressOnModal("OK", &messaggio);
    Clicca(c<QPushButton>("cmd_SalvaModello"));
    EXPECT_EQ(messaggio, "\"fineco\" è il nome di un modello predefinito: sceglierne un altro");
    Scrivi(c<QLineEdit>("txt_NomeModello"), "Mia banca");
    Clicca(c<QPushButton>("cmd_SalvaModello"));
    EXPECT_EQ(campi({"cmb_Modello"}), "Mia banca");
    Clicca(c<QPushButton>("cmd_Annulla"));
    EXPECT_EQ(w->result(), QDialog::Rejected);
    EXPECT_TRUE(w->Risultato().eseguiti.isEmpty());

    // Another file with the same header: the saved model, chosen by itself.
    apri(secondo);
    EXPECT_EQ(campi({"cmb_Modello", "cmb_Qta", "txt_Acquisto"}), "Mia banca|Pezzi|C");
    EXPECT_EQ(conti(), "2/0/0");
    EXPECT_EQ(anteprima(0, 2), "15/04/2024");

    // Personalizzato starts from nothing.
    ChooseInCombo(c<QComboBox>("cmb_Modello"), "Personalizzato");
    EXPECT_EQ(campi({"cmb_Qta", "txt_Acquisto"}), "(nessuna)|");
    EXPECT_EQ(conti(), "0/0/2");
}
