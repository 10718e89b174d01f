#include "stats/FinestraSerie.h"

#include "platform/Chart.h"
#include "platform/ChartStyle.h"
#include "platform/FlexGrid.h"

#include <QChart>
#include <QLabel>
#include <QPainter>
#include <QRadioButton>
#include <QVBoxLayout>

namespace stats {

namespace {

// Space for the side text between the left column and the chart (pixels).
constexpr int kLato = 22;

// A text set on its side, read from the bottom up, as beside a vertical axis.
class TestoVerticale final : public QLabel {
public:
    using QLabel::QLabel;
    QSize sizeHint() const override { return QLabel::sizeHint().transposed(); }
    QSize minimumSizeHint() const override { return {fontMetrics().height() + 4, 20}; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.setPen(palette().color(QPalette::WindowText));
        p.translate(0, height());
        p.rotate(-90);
        p.drawText(QRect(0, 0, height(), width()), Qt::AlignCenter, text());
    }
};

QLabel* etichetta(const QString& name, const QString& text, QWidget* parent)
{
    auto* l = new QLabel(text, parent);
    l->setObjectName(name);
    return l;
}

} // namespace

FinestraSerie::FinestraSerie(const Disegno& d) : legendaSerie_(d.legendaSerie)
{
    setObjectName(d.nome);
    setWindowTitle(d.titolo);
    setWindowIcon(QIcon(QStringLiteral(":/icons/%1.svg").arg(d.icona)));

    serie_ = new platform::Chart(this);
    serie_->setObjectName(d.graficoSerie);
    serie_->ChartItem()->setTitle(d.titoloSerie);
    serie_->SetColumnCount(1);
    Text1_ = new TestoVerticale(d.testoLaterale, this);
    Text1_->setObjectName(QStringLiteral("Text1"));

    sinistra_ = new QWidget(this);
    colonna_ = new QVBoxLayout(sinistra_);
    colonna_->setContentsMargins(6, 6, 4, 6);
    griglia_ = new platform::FlexGrid(2, 2, sinistra_);
    griglia_->setObjectName(d.griglia);
    frequenze_ = new platform::Chart(sinistra_);
    frequenze_->setObjectName(d.graficoFrequenze);
    frm_Grafici_ = new platform::ChartStyleSwitch({"Barre", "Area", "Area3D", "Linee3D", "Linee", "Barre3D"}, {serie_}, 3,
                                                  sinistra_);
    frm_Grafici_->Button(5)->setChecked(true);
    colonna_->addWidget(etichetta(QStringLiteral("Label2"), d.etichettaGriglia, sinistra_));
    colonna_->addWidget(griglia_, 1);
    colonna_->addSpacing(4);
    colonna_->addWidget(etichetta(QStringLiteral("Label1"), d.etichettaFrequenze, sinistra_));
    colonna_->addWidget(frequenze_, 1);
    colonna_->addWidget(frm_Grafici_);

    const int sinistra = platform::Twips(platform::ResizeRuleOf(d.graficoSerie).left);
    serie_->setGeometry(sinistra, 6, 400, 300);
    setMinimumSize(sinistra + 280, 480);
    resize(sinistra + 620, 560);
}

void FinestraSerie::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    platform::ApplyChartResize(this, serie_, frm_Grafici_, platform::ResizeRuleOf(serie_->objectName()));
    const int sinistra = serie_->x();
    sinistra_->setGeometry(0, 0, sinistra - kLato, height());
    Text1_->setGeometry(sinistra - kLato, serie_->y(), kLato, serie_->height());
}

void FinestraSerie::MostraSerie(const TabellaSerie& valori, int n)
{
    const platform::Chart::Hold hold(serie_);
    QVector<QVector<QVariant>> righe;
    righe.reserve(n);
    for (int i = 1; i <= n; ++i)
        righe.push_back({valori[i]});
    if (n > 0)
        serie_->ChartData(righe);
    else
        serie_->SetRowCount(0);
    serie_->SetColumn(1);
    serie_->SetColumnLabel(legendaSerie_);
    serie_->SetChartType(platform::Chart::Bar3D);
}

void FinestraSerie::MostraTabella(const QString& intestazione0, const QString& intestazione1, const TabellaGrafico& g,
                                  int n, const QString& suffissoValore)
{
    griglia_->SetFixedRows(1);
    griglia_->SetTextMatrix(0, 0, intestazione0);
    griglia_->SetTextMatrix(0, 1, intestazione1);
    for (int i = 1; i <= n; ++i) {
        griglia_->AddItem(QString());
        griglia_->SetTextMatrix(i, 0, num::Text(g[i].x) + suffissoValore);
        griglia_->SetTextMatrix(i, 1, num::Text(g[i].y) + QStringLiteral("%"));
    }
}

void FinestraSerie::MostraFrequenze(const TabellaGrafico& g)
{
    const platform::Chart::Hold hold(frequenze_);
    frequenze_->SetRowCount(3);
    frequenze_->SetColumnCount(2);
    frequenze_->ChartData(DatiGrafico(g));
    frequenze_->SetChartType(platform::Chart::XY2D);
}

} // namespace stats
