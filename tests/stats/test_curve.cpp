// The closed operations table and the two curves, refreshed and closed by the
// frame after commits typed into the trade window.
#include "platform/Chart.h"
#include "platform/DataSource.h"
#include "support/Programma.h"

#include <QChart>
#include <QImage>

using namespace testing_support;

namespace {

class CurveTest : public ProgramTest {
protected:
    void SetUp() override
    {
        Avvia(true);
        Module1::dbSet.Execute("INSERT INTO System (Cod, Descrizione, Commissioni, CommissioniMin) VALUES ('T2','prova',2,5)");
    }
    // A window opened from its toolbar button.
    void apri(const char* key)
    {
        QAction* a = frame->Toolbar1()->findChild<QAction*>(key);
        ASSERT_TRUE(a->isEnabled()) << key;
        QTest::mouseClick(frame->Toolbar1()->widgetForAction(a), Qt::LeftButton);
    }
    static QWidget* finestra(const char* name) { return platform::Forms::Find(name); }
    static platform::Chart* grafico(const char* window, const char* chart)
    {
        return finestra(window)->findChild<platform::Chart*>(chart);
    }
    // Column 1 (and 2) of every row of a chart, rows separated by blanks.
    static QString serie(platform::Chart* c)
    {
        QStringList out;
        for (int r = 1; r <= c->RowCount(); ++r)
            out << (c->ColumnCount() > 1 ? c->DataAt(r, 1) + "/" + c->DataAt(r, 2) : c->DataAt(r, 1));
        return out.join(' ');
    }
    // Pixels of the plot area in the hue of `colore`: what the user sees of a series.
    static int dipinti(platform::Chart* c, const QColor& colore)
    {
        const QImage image = c->grab(c->ChartItem()->plotArea().toRect()).toImage();
        int n = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor p = image.pixelColor(x, y);
                n += p.hsvSaturation() > 120 && std::abs(p.hsvHue() - colore.hsvHue()) < 12;
            }
        return n;
    }
    QWidget* eseguiti() { return finestra("frmEseguiti"); }
    template <class T> T* e(const char* name) { return eseguiti()->findChild<T*>(name); }
    // A trade deleted in the trade window: its row clicked, Elimina, Conferma.
    void eliminaEseguito(int row)
    {
        ClickRiga(e<platform::DataGrid>("dbg_Eseguiti"), row);
        Clicca(e<QRadioButton>("Option1(3)"));
        Clicca(e<QPushButton>("cmd_Ok"));
        FlushDeletes();
    }
};

} // namespace

TEST_F(CurveTest, ASaleTypedInTheTradeWindowReachesEveryOpenWindowAndEmptyTablesCloseThem)
{
    auto& exe = Module1::dbExe;
    AddTrade(exe, "13/01/2003", "Buy", "T2", "ENI", 100, 10);
    AddTrade(exe, "17/01/2003", "Sell", "T2", "ENI", 40, 12); // 40*12 - 40*10 = 80
    AddTrade(exe, "20/01/2003", "Buy", "T2", "TIM", 200, 5);
    frame->ControlloMenu();
    for (const char* key : {"Op.Chiuse", "GP", "Sequenze", "Portafoglio", "Conto"})
        apri(key);
    // One operation: one point equal to its result in both curves, against minus SLMM (250).
    EXPECT_EQ(serie(grafico("frmCapitale", "msc_Capitale")), "80");
    EXPECT_EQ(serie(grafico("frmGrOperazioni", "msc_GrOperazioni")), "80/-250");
    // The one point shows on the plot in every line and area style, and at once on "Linee".
    EXPECT_GT(dipinti(grafico("frmGrOperazioni", "msc_GrOperazioni"), QColor(0, 192, 0)), 10);
    for (int stile : {2, 3, 4, 5}) {
        Clicca(finestra("frmCapitale")->findChild<QRadioButton*>(QString("Option1(%1)").arg(stile)));
        EXPECT_GT(dipinti(grafico("frmCapitale", "msc_Capitale"), QColor(40, 100, 200)), 10) << stile;
    }
    auto* chiuse = finestra("frmOperazioniChiuse")->findChild<platform::DataGrid*>("dbg_OperazioniChiuse");
    EXPECT_EQ(chiuse->model()->rowCount(), 1);
    // The style chosen stays through every refresh.
    Clicca(finestra("frmCapitale")->findChild<QRadioButton*>("Option1(5)"));
    EXPECT_EQ(grafico("frmCapitale", "msc_Capitale")->ChartType(), platform::Chart::Area3D);

    // The sale of the whole TIM position at 4, typed as a user types it.
    Clicca(e<QRadioButton>("Option1(0)"));
    ScriviData(e<QDateEdit>("dtp_Data"), "25/01/2003");
    ChooseInCombo(e<QComboBox>("cmb_Tipo"), "Sell");
    ChooseInCombo(e<QComboBox>("cmb_Codice"), "TIM");
    EXPECT_EQ(e<QLineEdit>("txtQta")->text(), "200");
    Scrivi(e<QLineEdit>("txtPrezzo"), "4");
    Clicca(e<QPushButton>("cmd_Ok"));
    ASSERT_EQ(Rows(exe, "SELECT Cod, GP FROM OperazioniChiuse"), QStringList({"ENI|80", "TIM|-200"})); // 200*4 - 200*5

    EXPECT_EQ(serie(grafico("frmCapitale", "msc_Capitale")), "80 -120"); // 80, then 80 - 200
    EXPECT_EQ(serie(grafico("frmGrOperazioni", "msc_GrOperazioni")), "80/-250 -200/-250");
    EXPECT_EQ(grafico("frmCapitale", "msc_Capitale")->ChartType(), platform::Chart::Area3D);
    EXPECT_EQ(chiuse->model()->rowCount(), 2);
    EXPECT_EQ(finestra("frmPortafoglio")->findChild<QLabel*>("lab_ValorePortafoglio")->text(), "600"); // 60 * 10

    // Without sales the table and both curves close; the portfolio and the account stay.
    eliminaEseguito(3);
    EXPECT_EQ(serie(grafico("frmCapitale", "msc_Capitale")), "80");
    eliminaEseguito(1);
    for (const char* gone : {"frmOperazioniChiuse", "frmCapitale", "frmGrOperazioni"})
        EXPECT_EQ(finestra(gone), nullptr) << gone;
    EXPECT_NE(finestra("frmPortafoglio"), nullptr);
    // Without trades the portfolio closes too; the account and the trade window stay open.
    eliminaEseguito(0);
    eliminaEseguito(0);
    EXPECT_EQ(finestra("frmPortafoglio"), nullptr);
    EXPECT_NE(finestra("frmContoTitoli"), nullptr);
    EXPECT_NE(finestra("frmEseguiti"), nullptr);
}

TEST_F(CurveTest, ClosedOperationsGridShowsTheCommissionWhole)
{
    AddTrade(Module1::dbExe, "13/01/2003", "Buy", "T2", "ENI", 3, 10);
    AddTrade(Module1::dbExe, "17/01/2003", "Sell", "T2", "ENI", 1, 12.3333);
    frame->ControlloMenu();
    apri("Op.Chiuse");
    auto* grid = finestra("frmOperazioniChiuse")->findChild<platform::DataGrid*>("dbg_OperazioniChiuse");
    QStringList riga;
    for (int i = 0; i < grid->model()->columnCount(); ++i)
        riga << grid->Model()->Text(0, i);
    // 12.3333 - 10 = 2.3333; (12.3333 - 10) / 10 * 100 = 23.33%; max(0.0247, 5) + 5 * 1/3, unrounded.
    EXPECT_EQ(riga.join('|'), "17/01/2003|T2|ENI|ENI spa|10|1|12,3333|6,66666666666667|2,3333|23,33");
    EXPECT_EQ(grid->model()->data(grid->model()->index(0, 8), Qt::TextAlignmentRole).toInt() & Qt::AlignRight, Qt::AlignRight);
    // The commission's fifteen digits show whole, not cut to "6,...".
    EXPECT_GE(grid->columnWidth(7), grid->fontMetrics().horizontalAdvance(riga[7]) + 8);
}
