#pragma once
// What every statistics window shares around its charts: the style switch
// (the option group frm_Grafici) and the resize rules, written as data.
#include <QGroupBox>
#include <QList>
#include <QStringList>

class QRadioButton;

namespace platform {

class Chart;

// The chart type number for a caption of the switch ("Torta" 14, "Barre" 1, "Barre 3D" 0, ...); -1 for none.
int ChartTypeOf(const QString& caption);

// The group of option buttons Option1(0..n-1) that sets the chart type of its charts.
class ChartStyleSwitch final : public QGroupBox {
    Q_OBJECT
public:
    ChartStyleSwitch(const QStringList& captions, QList<Chart*> charts, QWidget* parent = nullptr);
    // The same with the buttons in rows of `perRow`, for a narrow place.
    ChartStyleSwitch(const QStringList& captions, QList<Chart*> charts, int perRow, QWidget* parent);
    QRadioButton* Button(int index) const { return buttons_.value(index); }

private:
    void applica();
    QList<QRadioButton*> buttons_;
    QList<Chart*> charts_;
};

// Twips of the original layout rules to our pixels.
int Twips(int twips);

// How a window with one chart lays it out on resize (all in twips): the chart takes
// the width W - widthLess when W is above widthAbove, always Left `left` (unless
// keepLeft), and the height H - heightLess when H is above heightAbove.
struct ChartResizeRule {
    int widthLess = 0;
    int widthAbove = 0;
    int left = 0;
    bool keepLeft = false;
    int heightLess = 0;
    int heightAbove = 0;
    int switchTopLess = 0; // > 0: frm_Grafici goes to Top H - switchTopLess
};
void ApplyChartResize(QWidget* form, QWidget* chart, QWidget* styleSwitch, const ChartResizeRule& rule);

// The rules of the charting windows by their chart's name.
const ChartResizeRule& ResizeRuleOf(const QString& chartName);

} // namespace platform
