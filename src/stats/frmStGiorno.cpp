#include "stats/frmStGiorno.h"

#include "app/Module1.h"
#include "platform/Chart.h"
#include "platform/ChartStyle.h"
#include "platform/FlexGrid.h"
#include "platform/Forms.h"
#include "stats/Giorni.h"
#include "store/Database.h"

#include <QRadioButton>
#include <QVBoxLayout>

frmStGiorno* frmStGiorno::Instance() { return platform::Form<frmStGiorno>(); }

frmStGiorno::frmStGiorno()
{
    setObjectName(QStringLiteral("frmStGiorno"));
    setWindowTitle(QStringLiteral("Statistiche prestazioni per giorno settimanale"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/11.svg")));
    msc_Giorno_ = new platform::Chart(this);
    msc_Giorno_->setObjectName(QStringLiteral("msc_Giorno"));
    msc_Giorno_->SetSeriesColors({QColor(46, 120, 210)});
    msc_Giorno_->SetChartType(platform::Chart::Bar2D);

    sinistra_ = new QWidget(this);
    auto* colonna = new QVBoxLayout(sinistra_);
    colonna->setContentsMargins(6, 6, 6, 6);
    MSFlexGrid_StGiorno_ = new platform::FlexGrid(2, 2, sinistra_);
    MSFlexGrid_StGiorno_->setObjectName(QStringLiteral("MSFlexGrid_StGiorno"));
    frm_Grafici_ = new platform::ChartStyleSwitch({"Linee", "Linee3D", "Area3D", "Area", "Barre3D", "Barre"}, {msc_Giorno_}, 2,
                                                  sinistra_);
    frm_Grafici_->Button(5)->setChecked(true);
    colonna->addWidget(MSFlexGrid_StGiorno_, 1);
    colonna->addWidget(frm_Grafici_);

    msc_Giorno_->setGeometry(platform::Twips(platform::ResizeRuleOf(QStringLiteral("msc_Giorno")).left), 6, 400, 300);
    setMinimumSize(560, 330);
    resize(820, 460);
    Colore();
    Main();
}

void frmStGiorno::Colore() { Module1::ApplicaColori(this); }

void frmStGiorno::Main()
{
    store::Recordset rs = Module1::dbExe.OpenRecordset(QStringLiteral("SELECT [Data], Sum([GP])")
                                                       + QStringLiteral("AS SommaGP, Sum([GPPercentuale]) AS SommaGPperc From "
                                                                        "OperazioniChiuse GROUP BY [Data]"));
    const stats::SommeGiorni somme = stats::SommePerGiorno(rs);
    const QStringList& giorni = stats::NomiGiorni();

    const platform::Chart::Hold hold(msc_Giorno_);
    QVector<QVector<QVariant>> valori;
    for (const num::Figure& s : somme)
        valori.push_back({s ? QVariant(*s) : QVariant()}); // a day without rows has no value, not 0
    msc_Giorno_->ChartData(valori);
    msc_Giorno_->SetColumn(1);
    msc_Giorno_->SetColumnLabel(QStringLiteral("Totale"));
    for (int i = 0; i < 5; ++i) {
        msc_Giorno_->SetRow(i + 1);
        msc_Giorno_->SetRowLabel(giorni[i]);
    }

    // Never cleared: each refresh appends five rows and rewrites rows 1 to 5.
    MSFlexGrid_StGiorno_->SetFixedRows(1);
    MSFlexGrid_StGiorno_->SetTextMatrix(0, 0, QStringLiteral("Giorno"));
    MSFlexGrid_StGiorno_->SetTextMatrix(0, 1, QStringLiteral("Totale"));
    for (int i = 0; i < 5; ++i) {
        MSFlexGrid_StGiorno_->AddItem(QString());
        MSFlexGrid_StGiorno_->SetTextMatrix(i + 1, 0, giorni[i]);
        MSFlexGrid_StGiorno_->SetTextMatrix(i + 1, 1, num::Text(somme[static_cast<std::size_t>(i)]));
    }
}

void frmStGiorno::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    platform::ApplyChartResize(this, msc_Giorno_, frm_Grafici_, platform::ResizeRuleOf(msc_Giorno_->objectName()));
    sinistra_->setGeometry(0, 0, msc_Giorno_->x(), height());
}
