// The securities account and the portfolio window on one hand-checked portfolio,
// driven through the windows with the mouse and the keyboard.
#include "platform/Chart.h"
#include "platform/DataSource.h"
#include "platform/PictureSurface.h"
#include "support/Programma.h"

using namespace testing_support;

namespace {

class ContoTitoliTest : public ProgramTest {
protected:
    QWidget* conto() { return platform::Forms::Find("frmContoTitoli"); }
    template <class T> T* c(const char* name) { return conto()->findChild<T*>(QString::fromLatin1(name)); }
    QRadioButton* modo(int i) { return c<QRadioButton>(QString("Option1(%1)").arg(i).toLatin1().constData()); }
    QString saldo() { return c<QLabel>("lab_Saldo")->text(); }
    // A new movement typed in: Nuovo, date, type, amount, and a description unless empty.
    void nuovo(const QString& data, const QString& tipo, const QString& importo, const QString& descrizione = QString())
    {
        Clicca(modo(0));
        ScriviData(c<QDateEdit>("dtp_Data"), data);
        ChooseInCombo(c<QComboBox>("cmb_Tipo"), tipo);
        Scrivi(c<QLineEdit>("txtImporto"), importo);
        if (!descrizione.isNull())
            Scrivi(c<QLineEdit>("txt_Descrizione"), descrizione);
        Clicca(c<QPushButton>("cmd_Ok"));
    }
    QStringList movimenti() { return Rows(Module1::dbExe, "SELECT Data, Tipo, Importo, Descrizione FROM Conto ORDER BY Data"); }
    int rigaGriglia() { return c<platform::DataGrid>("DBGrid1")->currentIndex().row(); }
    // The two rows of an unknown type: one message each every time `azione` computes the balance.
    void messaggi(int volte, const std::function<void()>& azione)
    {
        QStringList visti(2 * volte);
        for (QString& testo : visti)
            PressOnModal("OK", &testo);
        azione();
        EXPECT_EQ(visti, QStringList(2 * volte, "Errore nel modulo controllo record"));
    }
};

} // namespace

TEST_F(ContoTitoliTest, FromNoPortfolioToAHandCheckedBalanceLiquidityAndDial)
{
    // Before any portfolio the account is read-only, with the capital as balance.
    Avvia(false);
    QTest::mouseClick(frame->Toolbar1()->widgetForAction(frame->Toolbar1()->findChild<QAction*>("Conto")), Qt::LeftButton);
    ASSERT_NE(conto(), nullptr);
    EXPECT_EQ(saldo(), "10000");
    EXPECT_FALSE(c<QLineEdit>("txtImporto")->isEnabled());
    EXPECT_FALSE(modo(0)->isEnabled());

    frame->mnu_NuovoPortafoglio_Click();
    frame->Menu("mnu_ContoTitoli")->trigger();
    nuovo("10/01/2003", "Versamento", "1000");
    // A lone comma enables the button (the check compares with a point, which never gets
    // typed), and the engine refuses it; the handler called straight, so its failure reaches the test.
    const QStringList prima = movimenti();
    Clicca(modo(0));
    Scrivi(c<QLineEdit>("txtImporto"), ",");
    EXPECT_TRUE(c<QPushButton>("cmd_Ok")->isEnabled());
    EXPECT_THROW(QMetaObject::invokeMethod(conto(), "cmd_Ok_Click", Qt::DirectConnection), store::DbError);
    EXPECT_EQ(movimenti(), prima);

    // The first movement leaves the grid before its first row: a click on the row takes it.
    ClickRiga(c<platform::DataGrid>("DBGrid1"), 0);
    Clicca(modo(1));
    EXPECT_EQ(c<QLineEdit>("txtImporto")->text(), "1000");
    nuovo("20/01/2003", "Dividendi", "50", "b");
    nuovo("30/01/2003", "Prelievo", "200", "c");

    ClickRiga(c<platform::DataGrid>("DBGrid1"), 1);
    Clicca(modo(1));
    EXPECT_EQ(c<QDateEdit>("dtp_Data")->date(), QDate(2003, 1, 20));
    EXPECT_EQ(c<QLineEdit>("txtImporto")->text(), "50");
    Scrivi(c<QLineEdit>("txtImporto"), "75,5");
    Scrivi(c<QLineEdit>("txt_Descrizione"), "cedola");
    Clicca(c<QPushButton>("cmd_Ok"));
    EXPECT_EQ(movimenti(), QStringList({"10/01/2003|Versamento|1000|.", "20/01/2003|Dividendi|75,5|cedola",
                                        "30/01/2003|Prelievo|200|c"}));
    EXPECT_EQ(rigaGriglia(), 1);
    EXPECT_EQ(saldo(), "10875,5"); // 10000 + 1000 + 75.5 - 200

    // A later date moves the row down; the grid stays on the second row, now another movement.
    ScriviData(c<QDateEdit>("dtp_Data"), "05/02/2003");
    Clicca(c<QPushButton>("cmd_Ok"));
    EXPECT_EQ(rigaGriglia(), 1);
    EXPECT_EQ(c<QComboBox>("cmb_Tipo")->currentText(), "Prelievo");

    // Deleting a middle row goes on to the next one, deleting the last goes back one.
    Clicca(modo(3));
    Clicca(c<QPushButton>("cmd_Ok"));
    EXPECT_EQ(movimenti(), QStringList({"10/01/2003|Versamento|1000|.", "05/02/2003|Dividendi|75,5|cedola"}));
    EXPECT_EQ(rigaGriglia(), 1);
    EXPECT_EQ(c<QLineEdit>("txt_Descrizione")->text(), "cedola");
    Clicca(c<QPushButton>("cmd_Ok"));
    EXPECT_EQ(rigaGriglia(), 0);
    Clicca(c<QPushButton>("cmd_Ok"));
    EXPECT_EQ(movimenti(), QStringList{});
    EXPECT_TRUE(modo(0)->isChecked()); // an empty account: only Nuovo
    EXPECT_FALSE(modo(3)->isEnabled());
    EXPECT_EQ(saldo(), "10000");

    // Trades in a portfolio whose account is empty again: the open account is refreshed with them.
    auto& exe = Module1::dbExe;
    Module1::dbSet.Execute("INSERT INTO System (Cod, Descrizione, Commissioni, CommissioniMin) VALUES ('T2','prova',2,5)");
    AddTrade(exe, "13/01/2003", "Buy", "T2", "ENI", 100, 10);
    AddTrade(exe, "17/01/2003", "Sell", "T2", "ENI", 50, 13);
    AddTrade(exe, "20/01/2003", "Buy", "T2", "TIM", 1000, 2.5);
    AddTrade(exe, "21/01/2003", "Buy", "T2", "BOT", 2, 0.5);
    AddTrade(exe, "22/01/2003", "Buy", "T2", "BOT", 1, 0.125); // (2 * 0.5 + 0.125) / 3 = 0.375
    frame->ControlloMenu();
    // One closed operation: gp 50*13 - 50*10 = 150, commissions 5 + 5*50/100 = 7.5;
    // tax floor((150 - 7.5) * 26 / 100) = floor(37.05) = 37; net (150 - 7.5) - 37 = 105.5.
    ASSERT_EQ(Module1::UtileNetto(), 105.5);
    EXPECT_EQ(saldo(), "10105,5"); // 10000 + 105.5, no movements yet

    nuovo("02/01/2003", "Versamento", "2500", "apertura");
    nuovo("15/02/2003", "Dividendi", "120,5");    // description left as "."
    nuovo("03/03/2003", "Prelievo", "700", "");   // emptied: stored as "."
    nuovo("01/02/2003", "Costi di gestione", "35,25", "l'affitto"); // the apostrophe never gets in
    EXPECT_EQ(movimenti(), QStringList({"02/01/2003|Versamento|2500|apertura", "01/02/2003|Costi di gestione|35,25|laffitto",
                                        "15/02/2003|Dividendi|120,5|.", "03/03/2003|Prelievo|700|."}));
    // After an insert the grid returns to the row of the latest date before it, not to the new row.
    EXPECT_EQ(rigaGriglia(), 3);
    // 10000 + (2500 + 120.5 - 700 - 35.25) + 105.5: the positions' cost stays in the balance.
    EXPECT_EQ(saldo(), "11990,75");
    auto* grafico = c<platform::Chart>("msc_ContoTitoli");
    QStringList colonne;
    for (int i = 1; i <= grafico->ColumnCount(); ++i)
        colonne << grafico->ColumnLabelAt(i) + "=" + grafico->DataAt(1, i);
    EXPECT_EQ(colonne, QStringList({"Dividendi=120,5", "Versamento=2500", "Prelievo=-700", "CostiGestione=-35,25",
                                      "saldoOperazioni=105,5"}));

    // Two rows of an unknown type brought in by hand: one message each, at every computation.
    exe.Execute("INSERT INTO Conto (Data, Tipo, Importo, Descrizione) VALUES ('05/03/2003','dividendi',999,'.')");
    exe.Execute("INSERT INTO Conto (Data, Tipo, Importo, Descrizione) VALUES ('06/03/2003','Bonus',1,'.')");
    messaggi(1, [this]() { QMetaObject::invokeMethod(conto(), "Main"); });
    EXPECT_EQ(saldo(), "11990,75"); // they count for nothing
    // Modifica of such a row shows its type and keeps it.
    ClickRiga(c<platform::DataGrid>("DBGrid1"), 4);
    Clicca(modo(1));
    EXPECT_EQ(c<QComboBox>("cmb_Tipo")->currentText(), "dividendi");
    Scrivi(c<QLineEdit>("txtImporto"), "998");
    messaggi(2, [this]() { Clicca(c<QPushButton>("cmd_Ok")); }); // the window's sum, then the frame's refresh
    EXPECT_EQ(Rows(exe, "SELECT Tipo FROM Conto WHERE Importo = 998"), QStringList{"dividendi"});

    // The portfolio window: positions at load price, liquidity, the dial.
    messaggi(1, [this]() { frame->Menu("mnu_Portafoglio")->trigger(); });
    QWidget* pf = platform::Forms::Find("frmPortafoglio");
    ASSERT_NE(pf, nullptr);
    auto* grid = pf->findChild<platform::DataGrid*>("DBGrid2");
    EXPECT_EQ(grid->Model()->Text(1, 0) + " " + grid->Model()->Text(1, 2), "TIM 2,5");
    auto* msc = pf->findChild<platform::Chart*>("msc_Portafoglio");
    EXPECT_EQ(msc->RowCount(), 3);
    EXPECT_EQ(msc->DataAt(1, 1) + " " + msc->DataAt(2, 1) + " " + msc->DataAt(3, 1), "500 2500 1,125");
    EXPECT_EQ(msc->RowLabelAt(3), "BOT");
    // Value 50*10 + 1000*2.5 + 3*0.375; liquidity ((105.5 + 10000) - 3001.125) + 1885.25 = 8989.625,
    // a tie that goes to the even digit; the dial floor(10 * (898962.5 / 11990.75)) = floor(749.71...).
    EXPECT_EQ(Etichette(pf, {"lab_ValorePortafoglio", "lab_Liquidita"}), "3001,125|8989,62");
    EXPECT_EQ(pf->findChild<platform::PictureSurface*>("Picture1")->accessibleName(), "749");

    // A movement confirmed in the account refreshes the open portfolio window through the frame.
    exe.Execute("DELETE * FROM Conto WHERE Importo = 998 OR Importo = 1");
    QMetaObject::invokeMethod(conto(), "Main");
    nuovo("10/03/2003", "Prelievo", "9000"); // no message left to answer
    // 8989.625 - 9000 = -10.375: below zero it shows with its sign and the dial rests at 0.
    EXPECT_EQ(pf->findChild<QLabel*>("lab_Liquidita")->text(), "-10,38");
    EXPECT_EQ(pf->findChild<platform::PictureSurface*>("Picture1")->accessibleName(), "0");
    EXPECT_EQ(saldo(), "2990,75");
}
