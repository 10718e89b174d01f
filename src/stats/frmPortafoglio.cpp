#include "stats/frmPortafoglio.h"

#include "account/Conto.h"
#include "app/Module1.h"
#include "instruments/Quadrante.h"
#include "platform/Chart.h"
#include "platform/ChartStyle.h"
#include "platform/DataSource.h"
#include "platform/Forms.h"
#include "platform/MessageBox.h"
#include "platform/Numbers.h"
#include "platform/PictureSurface.h"
#include "stats/Portafoglio.h"

#include <QGridLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

using Module1::dbExe;
using Module1::dbSet;

namespace {
const QList<platform::GridColumn> kColonne = {
    {"Codice", "Cod"}, {"Quantità", "Qta"}, {"P.zoCarico", "PzoCarico"}, {"Importo", "Importo"}};
// The table and figures on the left keep this width; the chart takes the rest (twips).
constexpr int kSinistra = 4000;
// The dial's surface in pixels.
constexpr int kDialW = 200, kDialH = 116;
} // namespace

frmPortafoglio* frmPortafoglio::Instance() { return platform::Form<frmPortafoglio>(); }

frmPortafoglio::frmPortafoglio()
{
    setObjectName(QStringLiteral("frmPortafoglio"));
    setWindowTitle(QStringLiteral("Portafoglio"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/3.svg")));
    crea();
    // Room for the table, the figures, the dial and the switch on the left, and a chart beside them.
    setMinimumSize(640, 440);
    resize(900, 540);
    Colore();
    Main();
}

void frmPortafoglio::crea()
{
    pannello_ = new QWidget(this);
    dat_Portafoglio_ = new platform::DataSource(this);
    dat_Portafoglio_->setObjectName(QStringLiteral("dat_Portafoglio"));
    DBGrid2_ = new platform::DataGrid(pannello_);
    DBGrid2_->setObjectName(QStringLiteral("DBGrid2"));
    DBGrid2_->Bind(dat_Portafoglio_, kColonne);
    DBGrid2_->setColumnWidth(0, 58);
    DBGrid2_->setColumnWidth(1, 64);
    DBGrid2_->setColumnWidth(2, 76);

    auto* figure = new QGridLayout;
    auto cifra = [this](const QString& name) {
        auto* l = new QLabel(pannello_);
        l->setObjectName(name);
        l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        l->setMinimumWidth(120);
        return l;
    };
    lab_ValorePortafoglio_ = cifra(QStringLiteral("lab_ValorePortafoglio"));
    lab_Liquidita_ = cifra(QStringLiteral("lab_Liquidita"));
    figure->addWidget(new QLabel(QStringLiteral("Valore portafoglio"), pannello_), 0, 0);
    figure->addWidget(lab_ValorePortafoglio_, 0, 1);
    figure->addWidget(new QLabel(QStringLiteral("Liquidità:"), pannello_), 1, 0);
    figure->addWidget(lab_Liquidita_, 1, 1);
    figure->setColumnStretch(1, 1);

    Picture1_ = new platform::PictureSurface(kDialW, kDialH, 1, pannello_);
    Picture1_->setObjectName(QStringLiteral("Picture1"));
    strum::Scala scala;
    scala.kind = strum::Kind::BottomCenter;
    scala.label = [](int v) -> QString { return QString::number(v / 10) + '%'; };
    scala.back = QColor(250, 250, 244);
    Picture1_->SetPicture(strum::Quadrante(scala, QSize(kDialW, kDialH)));
    auto* quota = new QLabel(QStringLiteral("Quota di liquidità"), pannello_);
    quota->setAlignment(Qt::AlignCenter);

    msc_Portafoglio_ = new platform::Chart(this);
    msc_Portafoglio_->setObjectName(QStringLiteral("msc_Portafoglio"));
    msc_Portafoglio_->setGeometry(platform::Twips(kSinistra), 0, 500, 400);
    msc_Portafoglio_->SetColumnCount(1);
    msc_Portafoglio_->SetColumn(1);
    msc_Portafoglio_->SetColumnLabel(QStringLiteral("Valore di carico"));
    msc_Portafoglio_->SetSeriesColors({QColor(40, 100, 200)});
    frm_Grafici_ = new platform::ChartStyleSwitch({"Barre", "Barre 3D"}, {msc_Portafoglio_}, pannello_);
    frm_Grafici_->Button(0)->setChecked(true);
    msc_Portafoglio_->SetChartType(platform::Chart::Bar2D);

    auto* colonna = new QVBoxLayout(pannello_);
    colonna->setContentsMargins(6, 6, 6, 6);
    colonna->addWidget(DBGrid2_, 1);
    colonna->addLayout(figure);
    colonna->addWidget(Picture1_, 0, Qt::AlignHCenter);
    colonna->addWidget(quota);
    colonna->addWidget(frm_Grafici_);
}

void frmPortafoglio::Colore() { Module1::ApplicaColori(this); }

void frmPortafoglio::Main()
{
    dat_Portafoglio_->SetSource(&dbExe, QStringLiteral("SELECT * FROM Portafoglio"));
    dat_Portafoglio_->Refresh();
    rsPortafoglio_ = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM Portafoglio"));
    rsSettaggi_ = dbSet.OpenRecordset(QStringLiteral("SELECT CapitaleIniziale FROM Settaggi"));

    double valorePortafoglio = 0;
    if (rsPortafoglio_.RecordCount() > 0) {
        rsPortafoglio_.MoveLast();
        rsPortafoglio_.MoveFirst();
        const platform::Chart::Hold hold(msc_Portafoglio_);
        msc_Portafoglio_->SetRowCount(num::ToInt16(rsPortafoglio_.RecordCount()));
        int r = 0;
        for (; !rsPortafoglio_.Eof(); rsPortafoglio_.MoveNext()) {
            const double pzoCarico = rsPortafoglio_.Number(QStringLiteral("PzoCarico"));
            const double qta = rsPortafoglio_.Number(QStringLiteral("qta"));
            msc_Portafoglio_->SetRow(++r);
            valorePortafoglio += pzoCarico * qta;
            msc_Portafoglio_->SetData(num::Text(qta * pzoCarico));
            msc_Portafoglio_->SetRowLabel(rsPortafoglio_.Text(QStringLiteral("Cod")));
        }
    }

    store::Recordset conto = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM Conto"));
    const double contoNetto = account::SommaMovimenti(conto, [this]() {
        platform::MsgBox(account::TipoSconosciuto(), platform::Buttons::Ok, platform::Icon::None, this);
    }).saldo;
    if (conto.RecordCount() > 0)
        conto.MoveFirst();

    lab_ValorePortafoglio_->setText(num::Text(valorePortafoglio));
    const double capitale = rsSettaggi_.Number(QStringLiteral("CapitaleIniziale"));
    const double liquidita = stats::Liquidita(num::ValueOf(Module1::UtileNetto()), capitale, valorePortafoglio, contoNetto);
    lab_Liquidita_->setText(num::Text(num::Round(liquidita, 2)));

    strum_.NewLCD(Picture1_);
    // The net result is asked for a second time here.
    strum_.BottomCenter(stats::QuotaLiquidita(liquidita, contoNetto, num::ValueOf(Module1::UtileNetto()), capitale));
}

void frmPortafoglio::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    pannello_->setGeometry(0, 0, platform::Twips(kSinistra), height());
    platform::ApplyChartResize(this, msc_Portafoglio_, nullptr, platform::ResizeRuleOf(QStringLiteral("msc_Portafoglio")));
}
