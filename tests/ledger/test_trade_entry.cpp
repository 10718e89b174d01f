// The first journey from a typed trade to a position, checked on disk after each step.
#include "ledger/frmEseguiti.h"
#include "platform/DataSource.h"
#include "platform/Failure.h"
#include "platform/Numbers.h"
#include "support/Programma.h"

#include <QApplication>
#include <QClipboard>

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
        // Keys go to the focused field of the active window, as on a desktop.
        QApplication::setActiveWindow(frame);
        ASSERT_TRUE(QTest::qWaitForWindowActive(frame));
        disk.Open(dir.filePath("DataExe.qvd"));
    }
    template <class T> T* c(const char* name) { return w->findChild<T*>(QString::fromLatin1(name)); }
    QLineEdit* edit(const char* name) { return c<QLineEdit>(name); }
    QComboBox* combo(const char* name) { return c<QComboBox>(name); }
    // Clicks into a field and types over what it holds, as a user does.
    void scrivi(QWidget* field, const QString& text)
    {
        // A click activates the window, as a window manager does after a box or a list has closed.
        QApplication::setActiveWindow(field->window());
        QTest::mouseClick(field, Qt::LeftButton, {}, QPoint(8, field->height() / 2));
        QWidget* focus = QApplication::focusWidget();
        ASSERT_TRUE(focus == field || field->isAncestorOf(focus)) << field->objectName().toStdString() << " has no focus";
        QTest::keyClick(focus, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(focus, Qt::Key_Backspace);
        QTest::keyClicks(focus, text);
    }
    void type(const char* name, const QString& text) { scrivi(edit(name), text); }
    void typeCombo(const char* name, const QString& text) { scrivi(combo(name), text); }
    // Pastes a text that typing couldn't give (more decimals than the key filter allows).
    void incolla(const char* name, const QString& text)
    {
        QApplication::clipboard()->setText(text);
        scrivi(edit(name), QString());
        QTest::keyClick(edit(name), Qt::Key_V, Qt::ControlModifier);
    }
    void data(const QString& ggmmaaaa)
    {
        QApplication::setActiveWindow(w->window());
        ScriviData(c<QDateEdit>("dtp_Data"), ggmmaaaa);
    }
    void modo(int i) { Clicca(c<QRadioButton>(QString("Option1(%1)").arg(i).toLatin1().constData())); }
    void cella(int row, int column) { ClickRiga(w->Grid(), row, column); }
    void riga(int n) { cella(n, 3); }
    // A new sale: the type chosen, the first position and its quantity proposed.
    void nuovaVendita(const QString& data_)
    {
        modo(0);
        data(data_);
        ChooseInCombo(combo("cmb_Tipo"), "Sell");
    }
    QStringList tipi()
    {
        QStringList items;
        for (int i = 0; i < combo("cmb_Tipo")->count(); ++i)
            items << combo("cmb_Tipo")->itemText(i);
        return items;
    }
    // The fields of a new trade under T2, the title made from the code; a null price is left alone.
    void compila(const QString& cod, const QString& qta, const QString& prezzo)
    {
        typeCombo("dbc_System", "T2");
        type("txt_Codice", cod);
        type("txt_Titolo", cod + " spa");
        type("txtQta", qta);
        if (!prezzo.isNull())
            type("txtPrezzo", prezzo);
    }
    void buy(const QString& data_, const QString& cod, const QString& qta, const QString& prezzo, const QString& errore = "NE")
    {
        modo(0);
        data(data_);
        compila(cod, qta, prezzo);
        ChooseInCombo(combo("dbc_Errore"), errore);
        conferma();
    }
    // The click's handler called straight, so its failure reaches the test.
    void clickOk() { QMetaObject::invokeMethod(w, "cmd_Ok_Click", Qt::DirectConnection); }
    void conferma() { Clicca(c<QPushButton>("cmd_Ok")); }
    QStringList portafoglio() { return Rows(disk, "SELECT Cod, Qta, PzoCarico, Importo, Commissioni FROM Portafoglio"); }
    QStringList chiuse() { return Rows(disk, "SELECT Cod, Qta, Prezzo, GP, GPPercentuale, Commissioni FROM OperazioniChiuse"); }
    QStringList eseguiti() { return Rows(disk, "SELECT ID, Data, Tipo, Cod, Qta, Prezzo, Importo, Errore, PrezzoOttimale FROM Eseguiti"); }

    frmEseguiti* w = nullptr;
    store::Database disk;
};

} // namespace

TEST_F(TradeEntryTest, BuySellModifyDeleteAndARefusedOversell)
{
    // An empty portfolio: only Nuovo, and nothing to sell.
    EXPECT_FALSE(c<QRadioButton>("Option1(1)")->isEnabled());
    EXPECT_EQ(tipi(), QStringList{"Buy"});

    buy("13/01/2003", "ENI", "100", "10", "EA");
    EXPECT_EQ(eseguiti(), QStringList{"1|13/01/2003|Buy|ENI|100|10|1000|EA|10"}); // empty optimal price takes the price
    EXPECT_EQ(portafoglio(), QStringList{"ENI|100|10|1000|5"});
    EXPECT_EQ(c<QLabel>("lab_TotaleEseguiti")->text(), "1");
    EXPECT_EQ(tipi(), (QStringList{"Buy", "Sell"})); // Sell comes back with a position

    buy("15/01/2003", "ENI", "100", "12");

    // A new sale proposes the first position with its whole quantity.
    nuovaVendita("17/01/2003");
    typeCombo("dbc_System", "T2"); // a new sale proposes the first system
    EXPECT_EQ(combo("cmb_Codice")->currentText(), "ENI");
    EXPECT_EQ(edit("txtQta")->text(), "200");
    type("txtQta", "50");
    type("txtPrezzo", "13");
    EXPECT_EQ(c<QLabel>("lab_Importo")->text(), "650");
    conferma();
    // Load price (100*10 + 100*12)/200 = 11: 50*13 - 50*11 = 100; 18.18%; max(1.3, 5) + 5*50/200 = 6.25.
    EXPECT_EQ(chiuse(), QStringList{"ENI|50|13|100|18,18|6,25"});

    // A refused oversell: the exclamation box, Eseguiti row for row as before, also when the
    // grid's Delete had taken a row out of the working copy first.
    const QStringList prima = eseguiti();
    riga(0);
    QTest::keyClick(w->Grid(), Qt::Key_Delete);
    ASSERT_EQ(w->Grid()->model()->rowCount(), 2);
    nuovaVendita("18/01/2003");
    type("txtQta", "999");
    type("txtPrezzo", "9");
    QString messaggio;
    PressOnModal("OK", &messaggio);
    conferma();
    EXPECT_EQ(messaggio, "Impossibile inserire : ENI disponibili solo 150 pezzi");
    EXPECT_EQ(eseguiti(), prima);
    EXPECT_EQ(edit("txtQta")->text(), ""); // the refresh empties what was typed
    EXPECT_EQ(w->Grid()->model()->rowCount(), 3);

    // Sell the rest.
    nuovaVendita("20/01/2003");
    typeCombo("dbc_System", "T2");
    EXPECT_EQ(edit("txtQta")->text(), "150");
    type("txtPrezzo", "9");
    conferma();
    EXPECT_EQ(portafoglio(), QStringList{});

    // Modify the first buy's price: replayed at once.
    modo(1);
    riga(0);
    EXPECT_EQ(edit("txtPrezzo")->text(), "10");
    type("txtPrezzo", "10,5");
    conferma();
    EXPECT_EQ(eseguiti().first(), "1|13/01/2003|Buy|ENI|100|10,5|1050|EA|10");
    // (100*10.5 + 100*12)/200 = 11.25; 50*13 - 50*11.25 = 87.5.
    EXPECT_EQ(chiuse().first(), "ENI|50|13|87,5|15,56|6,25");

    // Deleting the first buy is refused: the later sales would find too few pieces.
    modo(3);
    riga(0);
    EXPECT_FALSE(edit("txtQta")->isEnabled());
    PressOnModal("OK", &messaggio);
    conferma();
    EXPECT_EQ(messaggio, "Impossibile eliminare ENI disponibili solo 50 pezzi");
    EXPECT_EQ(eseguiti().size(), 4);
    // Deleting the last sale leaves a position, and the grid steps back to the row before.
    riga(3);
    conferma();
    EXPECT_EQ(portafoglio(), QStringList{"ENI|150|11,25|1687,5|3,75"});
    EXPECT_EQ(w->PosizioneRiga(), 2);
    EXPECT_EQ(c<QLabel>("lab_RowSelect")->text(), "3");
}

TEST_F(TradeEntryTest, ADecimalFirstBuyAndAPartialSaleOfIt)
{
    buy("13/01/2003", "ENI", "33", "10,33");
    // 33 * 10.33 = 340.89; commission max(0.68, 5).
    EXPECT_EQ(portafoglio(), QStringList{"ENI|33|10,33|340,89|5"});
    nuovaVendita("14/01/2003");
    typeCombo("dbc_System", "T2");
    type("txtQta", "13");
    type("txtPrezzo", "11");
    conferma();
    // 20 left: round(10.33 * 20, 1) = 206.6; commission 5 - 5*13/33.
    EXPECT_EQ(portafoglio(), QStringList{"ENI|20|10,33|206,6|" + num::Text(5 - 5.0 * 13 / 33)});
    // 13*11 - 13*10.33 = 8.71; 0.67/10.33*100 = 6.49; max(0.286, 5) + 5*13/33.
    EXPECT_EQ(chiuse(), QStringList{"ENI|13|11|8,71|6,49|" + num::Text(5 + 5.0 * 13 / 33)});
}

TEST_F(TradeEntryTest, PricesGoInWithAPointOnlyAModifiedOneRoundedAndAPickedPositionBringsItsFields)
{
    // A typed decimal price: the statement takes it with a point, the load price rounds to the nearest.
    buy("13/01/2003", "ENI", "1000", "50");
    buy("14/01/2003", "ENI", "7", "50,41");
    EXPECT_EQ(Rows(disk, "SELECT Prezzo, Importo, PrezzoOttimale FROM Eseguiti WHERE ID = 2"), QStringList{"50,41|352,87|50,41"});
    // (7*50.41 + 1000*50)/1007 = 50.00285005: 50,0029, not a tie; the amount 50352,87 unrounded.
    EXPECT_EQ(portafoglio(), QStringList{"ENI|1007|50,0029|50352,87|100"});

    // A pasted price with more decimals than the key filter lets through: a new trade keeps all of it,
    modo(0);
    compila("ENI", "10", QString());
    incolla("txtPrezzo", "10,12345");
    conferma();
    EXPECT_EQ(Rows(disk, "SELECT Prezzo, PrezzoOttimale FROM Eseguiti WHERE ID = 3"), QStringList{"10,12345|10,12345"});
    // a modified one is rounded to 4 decimals, half to even, also when the field wasn't touched.
    modo(1);
    riga(2);
    EXPECT_EQ(edit("txtPrezzo")->text(), "10,12345");
    conferma();
    EXPECT_EQ(Rows(disk, "SELECT Prezzo, Importo, PrezzoOttimale FROM Eseguiti WHERE ID = 3"),
              QStringList{"10,1234|101,2345|10,1234"}); // the amount stays unrounded: 10 * 10.12345

    // A new sale proposes the first position; a picked one replaces the proposed quantity.
    buy("15/01/2003", "FIAT", "30", "5");
    nuovaVendita("16/01/2003");
    EXPECT_EQ(combo("cmb_Codice")->currentText(), "ENI");
    type("txtQta", "7");
    ChooseInCombo(combo("cmb_Titolo"), "FIAT spa"); // the title list leads the code list too
    EXPECT_EQ(combo("cmb_Codice")->currentText(), "FIAT");
    EXPECT_EQ(edit("txtQta")->text(), "30");
    type("txtPrezzo", "6");
    conferma();
    EXPECT_EQ(Rows(disk, "SELECT Cod FROM Portafoglio"), QStringList{"ENI"});
    // 30*6 - 30*5 = 30; under the proposed first system, DAY: max(30*6*1.9/1000, 2.95) + 5*30/30 = 7.95.
    EXPECT_EQ(chiuse(), QStringList{"FIAT|30|6|30|20|7,95"});

    // Modifica: another cell of the same row puts the row's fields back.
    modo(1);
    cella(2, 0);
    EXPECT_EQ(c<QLabel>("lab_RowSelect")->text(), "3");
    type("txtQta", "77");
    type("txt_Codice", "XYZ");
    cella(2, 6);
    EXPECT_EQ(edit("txtQta")->text(), "30");
    EXPECT_EQ(edit("txt_Codice")->text(), "FIAT");
}

TEST_F(TradeEntryTest, KeyFiltersAndFieldRulesBeforeTheClick)
{
    modo(0);
    type("txt_Codice", "TIM");
    // The apostrophe and its company stay out of the texts, also in an editable list.
    type("txt_Titolo", "Banca d'Italia (B.I.) \"nuova\" 100%-=!");
    typeCombo("dbc_System", "T'2");
    EXPECT_EQ(edit("txt_Titolo")->text(), "Banca dItalia B.I. \"nuova\" 100");
    EXPECT_EQ(combo("dbc_System")->currentText(), "T2");
    // Numbers: five digits, one comma and two decimals for prices, eight digits and no comma for quantities.
    type("txtPrezzo", "123456,789.5");
    type("txtQta", "1234567890,5");
    EXPECT_EQ(edit("txtPrezzo")->text(), "12345,78");
    EXPECT_EQ(edit("txtQta")->text(), "12345678");
    // 12345678*12345 + 12345678*0.78 = 152407394910 + 9629628.84, unrounded
    EXPECT_EQ(c<QLabel>("lab_Importo")->text(), "152417024538,84");
    ChooseInCombo(combo("dbc_Errore"), "SL");
    type("txtPzoOttimale", "1,23");
    // "NE" empties and disables the optimal price.
    ChooseInCombo(combo("dbc_Errore"), "NE");
    EXPECT_FALSE(edit("txtPzoOttimale")->isEnabled());
    EXPECT_EQ(edit("txtPzoOttimale")->text(), "");

    // "0" blocks, "0,0" passes: comparisons of texts.
    type("txtQta", "0");
    type("txtPrezzo", "1");
    EXPECT_FALSE(c<QPushButton>("cmd_Ok")->isEnabled());
    type("txtQta", "10");
    type("txtPrezzo", "0,0");
    EXPECT_TRUE(c<QPushButton>("cmd_Ok")->isEnabled());

    // A grid row as an import writes it, "BUY" and no error code: its type is shown without
    // joining the type list, the catalogue's first code stands for the error.
    Module1::dbExe.Execute("INSERT INTO Eseguiti (Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo) VALUES ('10/01/2003','BUY','T2','FIAT','Fiat',10,5,50)");
    frame->ControlloMenu();
    modo(1);
    riga(0);
    EXPECT_EQ(combo("cmb_Tipo")->currentText(), "BUY");
    EXPECT_EQ(tipi(), (QStringList{"Buy", "Sell"}));
    EXPECT_EQ(combo("dbc_Errore")->currentText(), "NE");
    EXPECT_EQ(edit("txtPrezzo")->text(), "5");
    // Elimina: all fields off, the button on; deleting the only trade leaves only Nuovo.
    modo(3);
    EXPECT_FALSE(edit("txtPrezzo")->isEnabled());
    conferma();
    EXPECT_TRUE(c<QRadioButton>("Option1(0)")->isChecked());
    EXPECT_FALSE(c<QRadioButton>("Option1(3)")->isEnabled());
    EXPECT_EQ(Rows(disk, "SELECT Cod FROM Eseguiti"), QStringList{});
}

TEST_F(TradeEntryTest, TitleSpreadsToTheCodeAndRefusedChangesOrStatementsLeaveEseguitiAsBefore)
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

    // A change the sequence check refuses also takes back the title it spread.
    nuovaVendita("13/01/2003");
    ChooseInCombo(combo("cmb_Codice"), "ENI");
    type("txtPrezzo", "2");
    conferma();
    const QStringList prima = Rows(disk, "SELECT ID, Titolo, Qta FROM Eseguiti ORDER BY ID");
    modo(1);
    riga(1);
    type("txt_Titolo", "Nuovo nome");
    type("txtQta", "5"); // the sale of 20 would find 15
    QString messaggio;
    PressOnModal("OK", &messaggio);
    conferma();
    EXPECT_EQ(messaggio, "Impossibile modificare ENI disponibili solo 15 pezzi");
    EXPECT_EQ(Rows(disk, "SELECT ID, Titolo, Qta FROM Eseguiti ORDER BY ID"), prima);

    // A pasted title with an apostrophe, in modify mode where the title spreads first, fails and leaves it too.
    modo(1);
    riga(1);
    incolla("txt_Titolo", "Ente d'Italia");
    EXPECT_THROW(clickOk(), store::DbError);
    EXPECT_EQ(Rows(disk, "SELECT ID, Titolo, Qta FROM Eseguiti ORDER BY ID"), prima);

    // A buy at a zero price is taken ("0" keeps Conferma disabled, "0,0" does not), but the sale
    // after it divides by its load price: the sale goes back with the failure.
    frame->ControlloMenu();
    buy("11/01/2003", "TIM", "3", "0,0");
    const QStringList zero = eseguiti();
    modo(0);
    data("12/01/2003");
    ChooseInCombo(combo("cmb_Tipo"), "Sell");
    ChooseInCombo(combo("cmb_Codice"), "TIM");
    type("txtQta", "1");
    type("txtPrezzo", "1");
    EXPECT_THROW(clickOk(), platform::DivisionByZero);
    EXPECT_EQ(eseguiti(), zero);

    // The journal holds 100 distinct codes; the 101st is refused as a failure and leaves no row.
    Module1::dbExe.Execute("DELETE * FROM Eseguiti");
    for (int i = 1; i <= 99; ++i)
        AddTrade(Module1::dbExe, "01/01/2003", "Buy", "T2", QString("C%1").arg(i), 1, 1);
    frame->ControlloMenu();
    buy("02/01/2003", "C100", "1", "1"); // the hundredth, typed
    const QStringList cento = Rows(disk, "SELECT ID FROM Eseguiti");
    ASSERT_EQ(cento.size(), 100);
    modo(0);
    compila("NUOVO", "1", "1");
    EXPECT_THROW(clickOk(), platform::IndexOutOfRange);
    EXPECT_EQ(Rows(disk, "SELECT ID FROM Eseguiti"), cento);
}
