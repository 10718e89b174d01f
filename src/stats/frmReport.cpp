#include "stats/frmReport.h"

#include "app/Module1.h"
#include "platform/Chart.h"
#include "platform/ChartStyle.h"
#include "platform/Forms.h"
#include "platform/Numbers.h"
#include "stats/Report.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

#include <cmath>

using Module1::dbExe;
using Module1::dbSet;

namespace {
const QColor kVerde(0, 192, 0), kRosso(255, 0, 0), kNero(0, 0, 0), kBlu(0, 0, 192);
// Height of the three panels above the charts, and of the switch under them (twips).
constexpr int kPannelli = 1700 - 400;
constexpr int kSwitch = 400;
} // namespace

frmReport* frmReport::Instance() { return platform::Form<frmReport>(); }

QGroupBox* frmReport::pannello(const QString& name, const QString& title,
                               const QList<QPair<QString, QList<QString>>>& rows, const QList<QColor>& swatches)
{
    auto* box = new QGroupBox(title, this);
    box->setObjectName(name);
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(6, 2, 6, 2);
    grid->setVerticalSpacing(0);
    for (int r = 0; r < rows.size(); ++r) {
        if (r < swatches.size()) {
            auto* sw = new QFrame(box);
            sw->setObjectName(QStringLiteral("Picture%1").arg(++swatch_));
            sw->setFixedSize(12, 12);
            sw->setFrameStyle(QFrame::Box);
            QPalette p = sw->palette();
            p.setColor(QPalette::Window, swatches[r]);
            sw->setPalette(p);
            sw->setAutoFillBackground(true);
            grid->addWidget(sw, r, 0);
        }
        grid->addWidget(new QLabel(rows[r].first, box), r, 1);
        int col = 2;
        for (const QString& labelName : rows[r].second) {
            auto* l = new QLabel(box);
            l->setObjectName(labelName);
            l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
            grid->addWidget(l, r, col++);
        }
    }
    grid->setColumnStretch(2, 1);
    return box;
}

frmReport::frmReport()
{
    setObjectName(QStringLiteral("frmReport"));
    setWindowTitle(QStringLiteral("Report"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/5.svg")));
    FrameBilancio_ = pannello(QStringLiteral("FrameBilancio"), QStringLiteral("Bilancio"),
                              {{"Gain", {"lab_Gain"}}, {"Perdite", {"lab_Lose"}}, {"Commissioni", {"lab_Commissioni"}},
                               {"Capital Gain", {"lab_CapitalGain"}}, {"Totale", {"lab_TotaleGP"}}},
                              {kVerde, kRosso, kNero, kBlu});
    FrameOperazioni_ = pannello(QStringLiteral("FrameOperazioni"), QStringLiteral("Operazioni"),
                                {{"Gain", {"lab_OpGain", "lab_OpGainP"}}, {"Perdita", {"lab_OpLose", "lab_OpLoseP"}},
                                 {"Pari", {"lab_OpPari", "lab_OpPariP"}}, {"Totale", {"lab_NumOperazioni"}}},
                                {kVerde, kRosso, kNero});
    FramePercentuali_ = pannello(QStringLiteral("FramePercentuali"), QStringLiteral("Percentuali"),
                                 {{"%Gain", {"lab_PercGain"}}, {"%Perdita", {"lab_PercLose"}}, {"%Totale", {"lab_PercTotale"}},
                                  {"% Media per operazione", {"lab_PercMedia"}}},
                                 {kVerde, kRosso});
    auto chart = [this](const QString& name, const QVector<QColor>& colors) {
        auto* c = new platform::Chart(this);
        c->setObjectName(name);
        c->SetSeriesColors(colors);
        return c;
    };
    msc_Bilancio_ = chart(QStringLiteral("msc_Bilancio"), {kVerde, kRosso, kNero, kBlu});
    msc_Operazioni_ = chart(QStringLiteral("msc_Operazioni"), {kVerde, kRosso, kNero});
    msc_OperazioniPercentuali_ = chart(QStringLiteral("msc_OperazioniPercentuali"), {kVerde, kRosso});
    frm_Grafici_ = new platform::ChartStyleSwitch({"Torta", "Barre", "Barre 3D"},
                                                  {msc_Bilancio_, msc_Operazioni_, msc_OperazioniPercentuali_}, this);
    frm_Grafici_->Button(1)->setChecked(true);
    for (platform::Chart* c : {msc_Bilancio_, msc_Operazioni_, msc_OperazioniPercentuali_})
        c->SetChartType(platform::Chart::Bar2D);
    resize(900, 520);
    Colore();
    Main();
}

void frmReport::Colore() { Module1::ApplicaColori(this); }

QLabel* frmReport::lab(const QString& name) const { return findChild<QLabel*>(name); }

void frmReport::Main()
{
    store::Recordset rs = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM OperazioniChiuse"));
    const store::Recordset settaggi = dbSet.OpenRecordset(QStringLiteral("SELECT *  FROM Settaggi"));
    if (rs.RecordCount() == 0)
        return; // the window keeps what it shows
    const stats::Bilancio b = stats::CalcolaBilancio(rs);
    // Not shown here; the averages window shows their like.
    (void)dbExe.OpenRecordset(QStringLiteral("SELECT DISTINCT data  FROM OperazioniChiuse")).RecordCount();
    const double capitalGain = stats::CapitalGain(b.totaleGP, b.totaleCommissioni, settaggi.Number(QStringLiteral("CapitalGain")));
    const double n = b.numOperazioni;
    auto quota = [n](int count) -> QString { return stats::TestoIntero(100 * num::Divide(count, n)) + "%"; };

    lab("lab_Gain")->setText(num::Text(b.sommaGain));
    lab("lab_Lose")->setText(num::Text(b.sommaPerdite));
    lab("lab_Commissioni")->setText(num::Text(b.totaleCommissioni));
    lab("lab_CapitalGain")->setText(num::Text(capitalGain));
    lab("lab_TotaleGP")->setText(num::Text((b.totaleGP - b.totaleCommissioni) - capitalGain));
    lab("lab_OpGain")->setText(QString::number(b.numGain));
    lab("lab_OpGainP")->setText(quota(b.numGain));
    lab("lab_OpLose")->setText(QString::number(b.numPerdite));
    lab("lab_OpLoseP")->setText(quota(b.numPerdite));
    lab("lab_OpPari")->setText(QString::number(b.numPari));
    lab("lab_OpPariP")->setText(quota(b.numPari));
    lab("lab_NumOperazioni")->setText(QString::number(b.numOperazioni));
    lab("lab_PercGain")->setText(num::Text(b.percGain) + "%");
    lab("lab_PercLose")->setText(num::Text(b.percPerdite) + "%");
    lab("lab_PercTotale")->setText(num::Text(b.percGain - std::fabs(b.percPerdite)));
    lab("lab_PercMedia")->setText(stats::TestoIntero(num::Divide(b.percGain - std::fabs(b.percPerdite), n)));

    // The fourth value is read back from the label: a text.
    msc_Bilancio_->ChartData(QVector<QVariant>{b.sommaGain, b.sommaPerdite, b.totaleCommissioni, lab("lab_CapitalGain")->text()});
    msc_Bilancio_->SetRow(1);
    msc_Bilancio_->SetRowLabel(QStringLiteral("Bilancio"));
    msc_Operazioni_->ChartData(QVector<QVariant>{b.numGain, b.numPerdite, b.numPari});
    msc_Operazioni_->SetRow(1);
    msc_Operazioni_->SetRowLabel(QStringLiteral("Operazioni"));
    msc_OperazioniPercentuali_->ChartData(QVector<QVariant>{b.percGain, std::fabs(b.percPerdite)});
    msc_OperazioniPercentuali_->SetRow(1);
    msc_OperazioniPercentuali_->SetRowLabel(QStringLiteral("Percentuali"));
    const QStringList legende[3] = {{"Gain", "Perdite", "Commissioni", "Capital Gain"}, {"Gain", "Perdita", "Pari"}, {"%Gain", "%Perdita"}};
    platform::Chart* charts[3] = {msc_Bilancio_, msc_Operazioni_, msc_OperazioniPercentuali_};
    for (int i = 0; i < 3; ++i) {
        for (int c = 0; c < legende[i].size(); ++c) {
            charts[i]->SetColumn(c + 1);
            charts[i]->SetColumnLabel(legende[i][c]);
        }
    }
}

void frmReport::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    // The layout rules of the window, in twips.
    const int W = width() * 12;
    const int Hi = height() * 12;
    int panel = W / 3;
    if (panel < 2100)
        panel = 2100;
    using platform::Twips;
    FrameBilancio_->setGeometry(Twips(0), 0, Twips(panel), Twips(kPannelli));
    FrameOperazioni_->setGeometry(Twips(panel), 0, Twips(panel), Twips(kPannelli));
    FramePercentuali_->setGeometry(Twips(2 * panel), 0, Twips(panel - 100), Twips(kPannelli));
    const int chartHeight = Hi > 1700 ? Hi - 1700 : msc_Bilancio_->height() * 12;
    msc_Bilancio_->setGeometry(Twips(0), Twips(kPannelli), Twips(panel), Twips(chartHeight));
    msc_Operazioni_->setGeometry(Twips(panel), Twips(kPannelli), Twips(panel), Twips(chartHeight));
    msc_OperazioniPercentuali_->setGeometry(Twips(2 * panel), Twips(kPannelli), Twips(panel), Twips(chartHeight));
    frm_Grafici_->setGeometry(0, Twips(Hi - kSwitch), Twips(W), Twips(kSwitch));
}
