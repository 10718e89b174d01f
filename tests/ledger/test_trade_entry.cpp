// The first journey from a typed trade to a position, checked on disk after each step.
#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "ledger/Sequence.h"
#include "ledger/frmEseguiti.h"
#include "platform/DataSource.h"
#include "platform/Forms.h"
#include "support/Fixture.h"
#include "support/Gui.h"

#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

class TradeEntryTest : public ProgramTest {
protected:
    void SetUp() override
    {
        Avvia(true);
        // The worked example's profile: 2 per thousand, at least 5.
        Module1::dbSet.Execute("INSERT INTO System (Cod, Descrizione, Commissioni, CommissioniMin) VALUES ('T2','prova',2,5)");
        w = qobject_cast<frmEseguiti*>(platform::Forms::Find("frmEseguiti"));
        ASSERT_NE(w, nullptr);
        disk.Open(dir.filePath("DataExe.qvd"));
        set.Open(dir.filePath("DataSet.qvd"));
    }
    template <class T> T* c(const char* name) { return w->findChild<T*>(QString::fromLatin1(name)); }
    QLineEdit* edit(const char* name) { return c<QLineEdit>(name); }
    void type(const char* name, const QString& text)
    {
        edit(name)->clear();
        QTest::keyClicks(edit(name), text);
    }
    void modo(int i) { c<QRadioButton>(QString("Option1(%1)").arg(i).toLatin1().constData())->click(); }
    void scegliTipo(const QString& tipo)
    {
        auto* cmb = c<QComboBox>("cmb_Tipo");
        const int i = cmb->findText(tipo);
        ASSERT_GE(i, 0) << tipo.toStdString();
        cmb->setCurrentIndex(i);
        emit cmb->activated(i);
    }
    void riga(int n) { w->DatEseguiti()->SetPosition(n); }
    void buy(const QString& data, const QString& cod, const QString& qta, const QString& prezzo, const QString& errore = "NE")
    {
        modo(0);
        c<QDateEdit>("dtp_Data")->setDate(QDate::fromString(data, "dd/MM/yyyy"));
        c<QComboBox>("dbc_System")->setEditText("T2");
        type("txt_Codice", cod);
        type("txt_Titolo", cod + " spa");
        type("txtQta", qta);
        type("txtPrezzo", prezzo);
        c<QComboBox>("dbc_Errore")->setEditText(errore);
        conferma();
    }
    // The click's handler called straight, so its failure reaches the test.
    void clickOk() { QMetaObject::invokeMethod(w, "cmd_Ok_Click", Qt::DirectConnection); }
    void conferma()
    {
        auto* ok = c<QPushButton>("cmd_Ok");
        ASSERT_TRUE(ok->isEnabled());
        ok->click();
    }
    QStringList portafoglio() { return Rows(disk, "SELECT Cod, Qta, PzoCarico, Importo, Commissioni FROM Portafoglio"); }
    QStringList chiuse() { return Rows(disk, "SELECT Cod, Qta, Prezzo, GP, GPPercentuale, Commissioni FROM OperazioniChiuse"); }
    QStringList eseguiti() { return Rows(disk, "SELECT ID, Data, Tipo, Cod, Qta, Prezzo, Importo, Errore, PrezzoOttimale FROM Eseguiti"); }
    double contatore(const QString& cod) { return set.OpenRecordset("SELECT Contatore FROM Errori WHERE Cod='" + cod + "'").Number("Contatore"); }

    frmEseguiti* w = nullptr;
    store::Database disk, set;
};

} // namespace

TEST_F(TradeEntryTest, BuySellModifyDeleteAndARefusedOversell)
{
    // An empty portfolio: only Nuovo, and nothing to sell.
    EXPECT_FALSE(c<QRadioButton>("Option1(1)")->isEnabled());
    EXPECT_EQ(c<QComboBox>("cmb_Tipo")->count(), 1);
    EXPECT_FALSE(c<QPushButton>("cmd_Ok")->isEnabled());

    buy("13/01/2003", "ENI", "100", "10", "EA");
    EXPECT_EQ(eseguiti(), QStringList{"1|13/01/2003|Buy|ENI|100|10|1000|EA|10"}); // empty optimal price takes the price
    EXPECT_EQ(portafoglio(), QStringList{"ENI|100|10|1000|5"});
    EXPECT_EQ(c<QLabel>("lab_TotaleEseguiti")->text(), "1");
    EXPECT_EQ(c<QComboBox>("cmb_Tipo")->count(), 2); // Sell comes back with a position

    buy("15/01/2003", "ENI", "100", "12");
    // (100*10 + 100*12)/200 = 11; the second commission is dropped.
    EXPECT_EQ(portafoglio(), QStringList{"ENI|200|11|2200|5"});

    // A new sale proposes the first position with its whole quantity.
    modo(0);
    c<QDateEdit>("dtp_Data")->setDate(QDate(2003, 1, 17));
    scegliTipo("Sell");
    c<QComboBox>("dbc_System")->setEditText("T2"); // a new sale proposes the first system
    EXPECT_TRUE(c<QComboBox>("cmb_Codice")->isVisibleTo(w));
    EXPECT_FALSE(edit("txt_Codice")->isVisibleTo(w));
    EXPECT_EQ(c<QComboBox>("cmb_Codice")->currentText(), "ENI");
    EXPECT_EQ(edit("txtQta")->text(), "200");
    type("txtQta", "50");
    type("txtPrezzo", "13");
    EXPECT_EQ(c<QLabel>("lab_Importo")->text(), "650");
    conferma();
    // 50*13 - 50*11 = 100; 18.18%; max(1.3, 5) + 5*50/200 = 6.25.
    EXPECT_EQ(chiuse(), QStringList{"ENI|50|13|100|18,18|6,25"});
    EXPECT_EQ(portafoglio(), QStringList{"ENI|150|11|1650|3,75"});

    // A refused oversell: the exclamation box, Eseguiti row for row as before.
    const QStringList prima = eseguiti();
    modo(0);
    c<QDateEdit>("dtp_Data")->setDate(QDate(2003, 1, 18));
    scegliTipo("Sell");
    type("txtQta", "999");
    type("txtPrezzo", "9");
    QString messaggio;
    PressOnModal("OK", &messaggio);
    conferma();
    EXPECT_EQ(messaggio, "Impossibile inserire : ENI disponibili solo 150 pezzi");
    EXPECT_EQ(eseguiti(), prima);
    EXPECT_TRUE(Module1::sErroreSequenza.isEmpty());
    EXPECT_EQ(edit("txtQta")->text(), ""); // the refresh empties what was typed

    // Sell the rest.
    modo(0);
    c<QDateEdit>("dtp_Data")->setDate(QDate(2003, 1, 20));
    scegliTipo("Sell");
    c<QComboBox>("dbc_System")->setEditText("T2");
    EXPECT_EQ(edit("txtQta")->text(), "150");
    type("txtPrezzo", "9");
    conferma();
    EXPECT_EQ(portafoglio(), QStringList{});
    EXPECT_EQ(chiuse().last(), "ENI|150|9|-300|-18,18|8,75");
    EXPECT_EQ(contatore("EA"), 1);
    EXPECT_EQ(contatore("NE"), 3);

    // Modify the first buy's price: rounded to four decimals, replayed at once.
    modo(1);
    riga(0);
    EXPECT_EQ(edit("txtPrezzo")->text(), "10");
    type("txtPrezzo", "10,5");
    conferma();
    EXPECT_EQ(eseguiti().first(), "1|13/01/2003|Buy|ENI|100|10,5|1050|EA|10");
    // (100*10.5 + 100*12)/200 = 11.25; 50*13 - 50*11.25 = 87.5.
    EXPECT_EQ(chiuse().first(), "ENI|50|13|87,5|15,56|6,25");
    EXPECT_EQ(w->PosizioneRiga(), 0);

    // Deleting the first buy is refused: the later sales would find too few pieces.
    modo(3);
    riga(0);
    EXPECT_FALSE(edit("txtQta")->isEnabled());
    PressOnModal("OK", &messaggio);
    conferma();
    EXPECT_EQ(messaggio, "Impossibile eliminare ENI disponibili solo 50 pezzi");
    EXPECT_EQ(eseguiti().size(), 4);
    EXPECT_EQ(w->PosizioneRiga(), 0);
    // Deleting the last sale leaves a position, and the grid steps back to the row before.
    riga(3);
    conferma();
    EXPECT_EQ(portafoglio(), QStringList{"ENI|150|11,25|1687,5|3,75"});
    EXPECT_EQ(w->PosizioneRiga(), 2);
    EXPECT_EQ(c<QLabel>("lab_RowSelect")->text(), "3");
}

TEST_F(TradeEntryTest, FieldRulesBeforeTheClick)
{
    // "0" blocks, "0,0" passes: comparisons of texts.
    modo(0);
    c<QComboBox>("dbc_System")->setEditText("T2");
    type("txt_Codice", "TIM");
    type("txt_Titolo", "Telecom");
    type("txtQta", "0");
    type("txtPrezzo", "1");
    EXPECT_FALSE(c<QPushButton>("cmd_Ok")->isEnabled());
    type("txtQta", "10");
    type("txtPrezzo", "0,0");
    EXPECT_TRUE(c<QPushButton>("cmd_Ok")->isEnabled());
    type("txtPrezzo", "1,255");
    EXPECT_EQ(edit("txtPrezzo")->text(), "1,25");
    EXPECT_EQ(c<QLabel>("lab_Importo")->text(), "12,5");
    type("txt_Codice", "T'I");
    EXPECT_EQ(edit("txt_Codice")->text(), "TI");

    // "NE" empties and disables the optimal price.
    auto* errore = c<QComboBox>("dbc_Errore");
    errore->setEditText("SL");
    emit errore->activated(0);
    EXPECT_TRUE(edit("txtPzoOttimale")->isEnabled());
    type("txtPzoOttimale", "1,1");
    errore->setEditText("NE");
    emit errore->activated(0);
    EXPECT_FALSE(edit("txtPzoOttimale")->isEnabled());
    EXPECT_EQ(edit("txtPzoOttimale")->text(), "");

    // A grid row without an error code shows the catalogue's first code and its own price.
    Module1::dbExe.Execute("INSERT INTO Eseguiti (Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo) VALUES ('10/01/2003','Buy','T2','FIAT','Fiat',10,5,50)");
    frame->ControlloMenu();
    modo(1);
    riga(0);
    EXPECT_EQ(errore->currentText(), "NE");
    EXPECT_EQ(edit("txtPrezzo")->text(), "5");
    // Elimina: all fields off, the button on.
    modo(3);
    EXPECT_FALSE(edit("txtPrezzo")->isEnabled());
    EXPECT_TRUE(c<QPushButton>("cmd_Ok")->isEnabled());
    // Deleting the only trade leaves only Nuovo.
    conferma();
    EXPECT_TRUE(c<QRadioButton>("Option1(0)")->isChecked());
    EXPECT_FALSE(c<QRadioButton>("Option1(3)")->isEnabled());
    EXPECT_EQ(Rows(disk, "SELECT Cod FROM Eseguiti"), QStringList{});
}

TEST_F(TradeEntryTest, TitleSpreadsToTheCodeUnlessItEqualsTheFirstRow)
{
    buy("10/01/2003", "AAA", "10", "1");
    buy("11/01/2003", "ENI", "10", "1");
    buy("12/01/2003", "ENI", "10", "1");
    modo(1);
    riga(2);
    type("txt_Titolo", "Ente Idrocarburi");
    conferma();
    EXPECT_EQ(Rows(disk, "SELECT Titolo FROM Eseguiti WHERE Cod = 'ENI'"), (QStringList{"Ente Idrocarburi", "Ente Idrocarburi"}));
    // Equal to the first row's title ("AAA spa"): only the edited row changes.
    riga(2);
    type("txt_Titolo", "AAA spa");
    conferma();
    EXPECT_EQ(Rows(disk, "SELECT Titolo FROM Eseguiti WHERE Cod = 'ENI'"), (QStringList{"Ente Idrocarburi", "AAA spa"}));
}

TEST_F(TradeEntryTest, RefusedStatementsAndTheCodeLimitLeaveEseguitiAsBefore)
{
    buy("10/01/2003", "ENI", "10", "1");
    const QStringList prima = eseguiti();

    // A pasted price with letters reaches the statement; the engine refuses it.
    modo(0);
    c<QComboBox>("dbc_System")->setEditText("T2");
    type("txt_Codice", "TIM");
    type("txt_Titolo", "Telecom");
    type("txtQta", "10");
    edit("txtPrezzo")->setText("1a");
    EXPECT_THROW(clickOk(), store::DbError);
    EXPECT_EQ(eseguiti(), prima);

    // A pasted title with an apostrophe, in modify mode where the title spreads first.
    frame->ControlloMenu();
    modo(1);
    riga(0);
    edit("txt_Titolo")->setText("Ente d'Italia");
    EXPECT_THROW(clickOk(), store::DbError);
    store::Database reopened;
    reopened.Open(dir.filePath("DataExe.qvd"));
    EXPECT_EQ(Rows(reopened, "SELECT ID, Data, Tipo, Cod, Qta, Prezzo, Importo, Errore, PrezzoOttimale FROM Eseguiti"), prima);

    // What the engine accepts goes in: a quantity of "00".
    frame->ControlloMenu();
    modo(0);
    c<QComboBox>("dbc_System")->setEditText("T2");
    type("txt_Codice", "ZERO");
    type("txt_Titolo", "Zero");
    edit("txtQta")->setText("00");
    type("txtPrezzo", "2");
    conferma();
    EXPECT_EQ(Rows(disk, "SELECT Qta, Importo FROM Eseguiti WHERE Cod = 'ZERO'"), QStringList{"0|0"});

    // The journal holds 100 distinct codes; the 101st is refused as a failure and leaves no row.
    Module1::dbExe.Execute("DELETE * FROM Eseguiti");
    for (int i = 1; i <= ledger::kMaxCodici; ++i)
        AddTrade(Module1::dbExe, "01/01/2003", "Buy", "T2", QString("C%1").arg(i), 1, 1);
    frame->ControlloMenu();
    EXPECT_EQ(ledger::ControlloSequenza(Module1::dbExe), "");
    const QStringList cento = Rows(disk, "SELECT ID FROM Eseguiti");
    modo(0);
    c<QComboBox>("dbc_System")->setEditText("T2");
    type("txt_Codice", "NUOVO");
    type("txt_Titolo", "Nuovo");
    type("txtQta", "1");
    type("txtPrezzo", "1");
    EXPECT_THROW(clickOk(), platform::IndexOutOfRange);
    EXPECT_EQ(Rows(disk, "SELECT ID FROM Eseguiti"), cento);
}
