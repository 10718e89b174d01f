#include "stats/Curve.h"

#include "app/Module1.h"
#include "platform/Chart.h"
#include "platform/ChartStyle.h"
#include "platform/Forms.h"
#include "platform/Numbers.h"

#include <QChart>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

using Module1::dbExe;
using Module1::dbSet;

namespace {
const QColor kVerde(0, 192, 0);
const QColor kRossoScuro(192, 0, 0);
// The switch's height, and the caption line under it (pixels).
constexpr int kAltezzaSwitch = 34;
constexpr int kRiga = 22;

QFrame* campione(QWidget* parent, const QString& name, const QColor& color)
{
    auto* f = new QFrame(parent);
    f->setObjectName(name);
    f->setFixedSize(14, 14);
    f->setFrameStyle(QFrame::Box);
    QPalette p = f->palette();
    p.setColor(QPalette::Window, color);
    f->setPalette(p);
    f->setAutoFillBackground(true);
    return f;
}
} // namespace

CurvaOperazioni::CurvaOperazioni(const QString& name, const QString& caption, const QString& chartName)
{
    setObjectName(name);
    setWindowTitle(caption);
    chart_ = new platform::Chart(this);
    chart_->setObjectName(chartName);
    chart_->SetLegendVisible(false);
    chart_->SetColumnCount(1);
    frm_Grafici_ = new platform::ChartStyleSwitch({"Barre", "Barre 3D", "Linee", "Linee 3D", "Area", "Area 3D"},
                                                  {chart_}, this);
    frm_Grafici_->Button(2)->setChecked(true);
    chart_->SetChartType(platform::Chart::Line2D);
    chart_->setGeometry(0, 0, 400, 300);
    frm_Grafici_->setGeometry(0, 300, frm_Grafici_->sizeHint().width(), kAltezzaSwitch);
}

QLineEdit* CurvaOperazioni::testo(const QString& name, const QString& text)
{
    auto* t = new QLineEdit(text, this);
    t->setObjectName(name);
    t->setReadOnly(true);
    t->setFrame(false);
    t->setFocusPolicy(Qt::NoFocus);
    return t;
}

void CurvaOperazioni::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    ridisponi();
}

void CurvaOperazioni::ridisponi()
{
    platform::ApplyChartResize(this, chart_, frm_Grafici_, platform::ResizeRuleOf(chart_->objectName()));
    disponiLegenda(frm_Grafici_->geometry());
}

frmCapitale* frmCapitale::Instance() { return platform::Form<frmCapitale>(); }

frmCapitale::frmCapitale()
    : CurvaOperazioni(QStringLiteral("frmCapitale"), QStringLiteral("Grafico del capitale"), QStringLiteral("msc_Capitale"))
{
    setWindowIcon(QIcon(QStringLiteral(":/icons/12.svg")));
    chart_->ChartItem()->setTitle(QStringLiteral("Curva cumulativa del capitale"));
    chart_->SetColumn(1);
    chart_->SetColumnLabel(QStringLiteral("Capitale"));
    chart_->SetSeriesColors({QColor(40, 100, 200)});
    Text1_ = testo(QStringLiteral("Text1"), QStringLiteral("Capitale / operazioni"));
    setMinimumSize(500, 320);
    resize(900, 520);
    Colore();
    ridisponi();
    Main();
}

void frmCapitale::Colore() { Module1::ApplicaColori(this); }

void frmCapitale::Main()
{
    store::Recordset rs = dbExe.OpenRecordset(QStringLiteral("SELECT GP  FROM OperazioniChiuse"));
    rs.MoveLast();
    rs.MoveFirst();
    const platform::Chart::Hold hold(chart_);
    chart_->SetRowCount(num::ToInt16(rs.RecordCount()));
    int r = 0;
    double c = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        chart_->SetRow(++r);
        c += rs.Number(QStringLiteral("gp"));
        chart_->SetData(num::Text(c));
    }
}

void frmCapitale::disponiLegenda(const QRect& sw)
{
    Text1_->setGeometry(8, sw.bottom() + 4, std::max(0, width() - 16), kRiga);
}

frmGrOperazioni* frmGrOperazioni::Instance() { return platform::Form<frmGrOperazioni>(); }

frmGrOperazioni::frmGrOperazioni()
    : CurvaOperazioni(QStringLiteral("frmGrOperazioni"), QStringLiteral("Grafico Operazioni"),
                      QStringLiteral("msc_GrOperazioni"))
{
    setWindowIcon(QIcon(QStringLiteral(":/icons/6.svg")));
    chart_->SetColumnCount(2);
    chart_->SetSeriesColors({kVerde, kRossoScuro});
    Picture1_ = campione(this, QStringLiteral("Picture1"), kVerde);
    Text1_ = testo(QStringLiteral("Text1"), QStringLiteral("Profitto-perdita/Operazioni"));
    Picture2_ = campione(this, QStringLiteral("Picture2"), kRossoScuro);
    Text2_ = testo(QStringLiteral("Text2"), QStringLiteral("Money management Stop Loss"));
    const QString legende[2] = {Text1_->text(), Text2_->text()};
    for (int c = 1; c <= 2; ++c) {
        chart_->SetColumn(c);
        chart_->SetColumnLabel(legende[c - 1]);
    }
    lab_Didascalia_ = new QLabel(
        QStringLiteral("Sequenza delle operarioni effettuate. Ad ogni punto corrisponde un' operazione chiusa "), this);
    lab_Didascalia_->setObjectName(QStringLiteral("lab_Didascalia"));
    // The switch and the two legends side by side.
    setMinimumSize(720, 360);
    resize(900, 540);
    Colore();
    ridisponi();
    Main();
}

void frmGrOperazioni::Colore() { Module1::ApplicaColori(this); }

void frmGrOperazioni::Main()
{
    store::Recordset rs = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM OperazioniChiuse"));
    const store::Recordset settaggi = dbSet.OpenRecordset(QStringLiteral("SELECT *  FROM Settaggi"));
    rs.MoveLast();
    rs.MoveFirst();
    const platform::Chart::Hold hold(chart_);
    chart_->SetColumnCount(2);
    chart_->SetRowCount(num::ToInt16(rs.RecordCount()));
    // The second series is a flat line at minus the stop level.
    const QString stop = num::Text(-settaggi.Number(QStringLiteral("SLMM")));
    int r = 0;
    for (; !rs.Eof(); rs.MoveNext()) {
        chart_->SetColumn(1);
        chart_->SetRow(++r);
        chart_->SetData(num::Text(rs.Number(QStringLiteral("gp"))));
        chart_->SetColumn(2);
        chart_->SetData(stop);
    }
}

void frmGrOperazioni::disponiLegenda(const QRect& sw)
{
    const int x = sw.right() + 16;
    const int w = std::max(0, width() - x - 8);
    const int mezzo = sw.height() / 2;
    Picture1_->move(x, sw.top() + (mezzo - Picture1_->height()) / 2);
    Text1_->setGeometry(x + 22, sw.top(), w - 22, mezzo);
    Picture2_->move(x, sw.top() + mezzo + (mezzo - Picture2_->height()) / 2);
    Text2_->setGeometry(x + 22, sw.top() + mezzo, w - 22, mezzo);
    lab_Didascalia_->setGeometry(8, sw.bottom() + 4, std::max(0, width() - 16), kRiga);
}
