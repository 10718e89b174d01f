#include "platform/ChartStyle.h"

#include "platform/Chart.h"

#include <QGridLayout>
#include <QHash>
#include <QRadioButton>

namespace platform {

int ChartTypeOf(const QString& caption)
{
    static const QHash<QString, int> types = {
        {"Torta", 14},   {"Barre", 1},   {"Barre 3D", 0}, {"Barre3D", 0}, {"Linee", 3},
        {"Linee 3D", 2}, {"Linee3D", 2}, {"Area", 5},     {"Area 3D", 4}, {"Area3D", 4},
    };
    return types.value(caption, -1);
}

ChartStyleSwitch::ChartStyleSwitch(const QStringList& captions, QList<Chart*> charts, QWidget* parent)
    : ChartStyleSwitch(captions, std::move(charts), 0, parent)
{
}

ChartStyleSwitch::ChartStyleSwitch(const QStringList& captions, QList<Chart*> charts, int perRow, QWidget* parent)
    : QGroupBox(parent), charts_(std::move(charts))
{
    setObjectName(QStringLiteral("frm_Grafici"));
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(8, 2, 8, 2);
    const int perRiga = perRow > 0 ? perRow : static_cast<int>(captions.size());
    for (int i = 0; i < captions.size(); ++i) {
        auto* b = new QRadioButton(captions[i], this);
        b->setObjectName(QStringLiteral("Option1(%1)").arg(i));
        connect(b, &QRadioButton::clicked, this, &ChartStyleSwitch::applica);
        layout->addWidget(b, i / perRiga, i % perRiga);
        buttons_ << b;
    }
    layout->setColumnStretch(perRiga, 1);
}

void ChartStyleSwitch::applica()
{
    for (QRadioButton* b : buttons_) {
        if (!b->isChecked())
            continue;
        const int type = ChartTypeOf(b->text());
        for (Chart* c : charts_)
            c->SetChartType(type);
    }
}

int Twips(int twips) { return twips / 12; }

void ApplyChartResize(QWidget* form, QWidget* chart, QWidget* styleSwitch, const ChartResizeRule& rule)
{
    const int W = form->width() * 12;
    const int H = form->height() * 12;
    QRect g = chart->geometry();
    if (W > rule.widthAbove)
        g.setWidth(Twips(W - rule.widthLess));
    if (!rule.keepLeft)
        g.moveLeft(Twips(rule.left));
    if (H > rule.heightAbove)
        g.setHeight(Twips(H - rule.heightLess));
    chart->setGeometry(g);
    if (styleSwitch && rule.switchTopLess > 0)
        styleSwitch->move(styleSwitch->x(), Twips(H - rule.switchTopLess));
}

const ChartResizeRule& ResizeRuleOf(const QString& chartName)
{
    static const QHash<QString, ChartResizeRule> rules = {
        {"msc_Portafoglio", {3900, 3901, 4000, false, 290, 1000, 0}},
        {"msc_Errori", {4600, 4601, 4760, false, 400, 1000, 0}},
        {"msc_Giorno", {2600, 2601, 2400, false, 290, 1000, 0}},
        {"msc_MDD", {3700, 3701, 3700, false, 290, 1000, 0}},
        {"msc_SeqPosNeg", {5000, 5000, 5000, false, 390, 1000, 0}},
        {"msc_Capitale", {0, -1, 0, true, 800, 801, 900}},
        {"msc_GrOperazioni", {0, -1, 0, true, 1100, 1101, 900}},
    };
    static const ChartResizeRule none;
    const auto it = rules.constFind(chartName);
    return it == rules.constEnd() ? none : *it;
}

} // namespace platform
