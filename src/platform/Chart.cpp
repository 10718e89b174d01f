#include "platform/Chart.h"

#include "platform/Failure.h"
#include "platform/Numbers.h"

#include <QAreaSeries>
#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QGraphicsRectItem>
#include <QLegendMarker>
#include <QLineSeries>
#include <QLocale>
#include <QPieSeries>
#include <QScatterSeries>
#include <QVBoxLayout>
#include <QValueAxis>

#include <cmath>
#include <limits>

namespace platform {

namespace {

const QVector<QColor> kPalette = {QColor(46, 120, 210), QColor(230, 130, 40), QColor(60, 160, 90), QColor(200, 60, 60),
                                  QColor(130, 90, 180), QColor(120, 120, 120), QColor(30, 170, 180), QColor(200, 180, 40)};

bool is3D(int type) { return type == Chart::Bar3D || type == Chart::Line3D || type == Chart::Area3D; }

// Light to dark across a bar or an area: the face of a solid seen at an angle.
QBrush solidBrush(const QColor& c, bool depth)
{
    if (!depth)
        return QBrush(c);
    QLinearGradient g(0, 0, 1, 0);
    g.setCoordinateMode(QGradient::ObjectMode);
    g.setColorAt(0, c.lighter(150));
    g.setColorAt(0.45, c);
    g.setColorAt(1, c.darker(170));
    return QBrush(g);
}

} // namespace

Chart::Chart(QWidget* parent) : QWidget(parent)
{
    view_ = new QChartView(new QChart, this);
    view_->setRenderHint(QPainter::Antialiasing);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    setMinimumSize(120, 90);
    // The drawn depth of the 3D types: the plot stands out of the page and casts a shadow
    // up and to the right. An item of the chart, not a graphics effect: an effect keeps
    // painting the axes where they stood before a resize.
    depth_ = new QGraphicsRectItem(view_->chart());
    depth_->setPen(Qt::NoPen);
    depth_->setBrush(QColor(0, 0, 0, 70));
    depth_->setZValue(-0.5); // above the chart's background, below its plot area
    depth_->hide();
    connect(view_->chart(), &QChart::plotAreaChanged, this,
            [this](const QRectF& plot) { depth_->setRect(plot.translated(7, -7)); });
    // Axis figures in Italian, as every number of the program: decimal comma, no grouping.
    QLocale italiano(QLocale::Italian, QLocale::Italy);
    italiano.setNumberOptions(QLocale::OmitGroupSeparator);
    view_->chart()->setLocale(italiano);
    view_->chart()->setLocalizeNumbers(true);
    redraw();
}

QChart* Chart::ChartItem() const { return view_->chart(); }

Chart::Hold::Hold(Chart* chart) : chart_(chart) { ++chart_->holds_; }

Chart::Hold::~Hold()
{
    if (--chart_->holds_ == 0 && chart_->pending_)
        chart_->redraw();
}

void Chart::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fitRowLabels();
}

void Chart::fitRowLabels()
{
    for (QAbstractAxis* axis : view_->chart()->axes(Qt::Horizontal)) {
        auto* rows = qobject_cast<QBarCategoryAxis*>(axis);
        if (!rows || rows->count() == 0)
            continue;
        const QFontMetrics fm(rows->labelsFont());
        int widest = 0;
        for (const QString& label : rows->categories())
            widest = std::max(widest, fm.horizontalAdvance(label));
        const double each = width() * 0.85 / rows->count();
        rows->setLabelsVisible(each >= fm.height());
        rows->setLabelsAngle(widest + 8 <= each ? 0 : -90);
    }
}

void Chart::resizeGrid(int rows, int columns)
{
    data_.resize(rows);
    for (auto& r : data_)
        r.resize(columns);
    columns_ = columns;
    while (rowLabels_.size() < rows)
        rowLabels_ << QString();
    while (rowLabels_.size() > rows)
        rowLabels_.removeLast();
    while (columnLabels_.size() < columns)
        columnLabels_ << QString();
    while (columnLabels_.size() > columns)
        columnLabels_.removeLast();
}

void Chart::ChartData(const QVector<QVariant>& values) { ChartData(QVector<QVector<QVariant>>{values}); }

void Chart::ChartData(const QVector<QVector<QVariant>>& rows)
{
    int columns = 0;
    for (const auto& r : rows)
        columns = std::max(columns, static_cast<int>(r.size()));
    resizeGrid(static_cast<int>(rows.size()), columns);
    for (int i = 0; i < rows.size(); ++i)
        for (int j = 0; j < columns; ++j)
            data_[i][j] = j < rows[i].size() ? num::Text(rows[i][j]) : QString();
    redraw();
}

void Chart::SetRowCount(int n)
{
    resizeGrid(std::max(0, n), columns_);
    redraw();
}

void Chart::SetColumnCount(int n)
{
    resizeGrid(RowCount(), std::max(0, n));
    redraw();
}

void Chart::SetRow(int row)
{
    if (row < 1 || row > RowCount())
        throw IndexOutOfRange(row);
    row_ = row;
}

void Chart::SetColumn(int column)
{
    if (column < 1 || column > columns_)
        throw IndexOutOfRange(column);
    column_ = column;
}

QString Chart::Data() const { return DataAt(row_, column_); }

void Chart::SetData(const QString& text)
{
    if (row_ > RowCount() || column_ > columns_)
        throw IndexOutOfRange(row_);
    data_[row_ - 1][column_ - 1] = text;
    redraw();
}

void Chart::SetRowLabel(const QString& label)
{
    if (row_ > RowCount())
        throw IndexOutOfRange(row_);
    rowLabels_[row_ - 1] = label;
    redraw();
}

void Chart::SetColumnLabel(const QString& label)
{
    if (column_ > columns_)
        throw IndexOutOfRange(column_);
    columnLabels_[column_ - 1] = label;
    redraw();
}

void Chart::SetChartType(int type)
{
    type_ = type;
    redraw();
}

void Chart::SetSeriesColors(const QVector<QColor>& colors)
{
    colors_ = colors;
    redraw();
}

void Chart::SetLegendVisible(bool visible)
{
    legend_ = visible;
    redraw();
}

QString Chart::DataAt(int row, int column) const
{
    if (row < 1 || row > RowCount() || column < 1 || column > columns_)
        return {};
    return data_[row - 1][column - 1];
}

QString Chart::RowLabelAt(int row) const { return row >= 1 && row <= rowLabels_.size() ? rowLabels_[row - 1] : QString(); }
QString Chart::ColumnLabelAt(int column) const
{
    return column >= 1 && column <= columnLabels_.size() ? columnLabels_[column - 1] : QString();
}

double Chart::value(int row, int column, bool* ok) const
{
    const std::optional<double> v = num::Parse(data_[row][column]);
    *ok = v.has_value();
    return v.value_or(0.0);
}

QColor Chart::colorOf(int series) const
{
    if (series < colors_.size() && colors_[series].isValid())
        return colors_[series];
    return kPalette[series % kPalette.size()];
}

void Chart::redraw()
{
    if (holds_ > 0) {
        pending_ = true;
        return;
    }
    pending_ = false;
    // One chart for the widget's life: emptied and filled again, never replaced under the view.
    QChart* chart = view_->chart();
    chart->removeAllSeries();
    for (QAbstractAxis* axis : chart->axes())
        chart->removeAxis(axis), delete axis;
    chart->setAnimationOptions(QChart::NoAnimation);
    chart->setMargins(QMargins(4, 4, 4, 4));
    chart->legend()->setAlignment(Qt::AlignBottom);
    QFont small = font();
    small.setPointSizeF(std::max(7.0, small.pointSizeF() - 1));
    chart->legend()->setFont(small);
    const bool depth = is3D(type_);
    const int rows = RowCount();
    auto label = [this](int c) { return columnLabels_.value(c).isEmpty() ? QStringLiteral("C%1").arg(c + 1) : columnLabels_[c]; };
    double lo = 0, hi = 0;
    auto widen = [&](double v) {
        lo = std::min(lo, v);
        hi = std::max(hi, v);
    };

    if (type_ == Pie2D) {
        // One pie per row, side by side.
        for (int r = 0; r < rows; ++r) {
            auto* pie = new QPieSeries;
            for (int c = 0; c < columns_; ++c) {
                bool ok = false;
                const double v = std::fabs(value(r, c, &ok));
                if (!ok || v == 0)
                    continue;
                QPieSlice* s = pie->append(label(c), v);
                s->setBrush(colorOf(c));
                s->setLabelFont(small);
            }
            pie->setPieSize(std::min(0.85, 0.9 / std::max(1, rows)));
            pie->setHorizontalPosition((r + 0.5) / std::max(1, rows));
            chart->addSeries(pie);
        }
    } else if (type_ == XY2D) {
        // Columns in pairs: x, then y.
        auto* axisX = new QValueAxis;
        auto* axisY = new QValueAxis;
        for (QValueAxis* axis : {axisX, axisY}) {
            axis->setLabelsFont(small);
            axis->setLabelFormat(QStringLiteral("%.10g"));
        }
        chart->addAxis(axisX, Qt::AlignBottom);
        chart->addAxis(axisY, Qt::AlignLeft);
        double xlo = 0, xhi = 1;
        for (int c = 0; c + 1 < columns_; c += 2) {
            auto* line = new QLineSeries;
            line->setName(label(c + 1));
            line->setPen(QPen(colorOf(c / 2), 2));
            // One point draws no line: its marker shows it.
            line->setPointsVisible(true);
            line->setMarkerSize(8);
            for (int r = 0; r < rows; ++r) {
                bool okx = false, oky = false;
                const double x = value(r, c, &okx), y = value(r, c + 1, &oky);
                if (okx && oky) {
                    line->append(x, y);
                    xlo = std::min(xlo, x);
                    xhi = std::max(xhi, x);
                    widen(y);
                }
            }
            chart->addSeries(line);
            line->attachAxis(axisX);
            line->attachAxis(axisY);
        }
        axisX->setRange(xlo, xhi);
        axisX->applyNiceNumbers();
        axisY->setRange(lo, hi > lo ? hi : lo + 1);
        axisY->applyNiceNumbers();
    } else {
        QStringList categories;
        for (int r = 0; r < rows; ++r)
            categories << (rowLabels_.value(r).isEmpty() ? QString::number(r + 1) : rowLabels_[r]);
        auto* axisX = new QBarCategoryAxis;
        axisX->append(categories.isEmpty() ? QStringList{QString()} : categories);
        axisX->setLabelsFont(small);
        auto* axisY = new QValueAxis;
        axisY->setLabelsFont(small);
        axisY->setLabelFormat(QStringLiteral("%.10g"));
        chart->addAxis(axisX, Qt::AlignBottom);
        chart->addAxis(axisY, Qt::AlignLeft);
        if (type_ == Bar2D || type_ == Bar3D) {
            auto* bars = new QBarSeries;
            for (int c = 0; c < columns_; ++c) {
                auto* set = new QBarSet(label(c));
                for (int r = 0; r < rows; ++r) {
                    bool ok = false;
                    const double v = value(r, c, &ok);
                    *set << (ok ? v : 0.0);
                    if (ok)
                        widen(v);
                }
                set->setBrush(solidBrush(colorOf(c), depth));
                set->setPen(depth ? QPen(colorOf(c).darker(200), 1) : QPen(Qt::NoPen));
                bars->append(set);
            }
            chart->addSeries(bars);
            bars->attachAxis(axisX);
            bars->attachAxis(axisY);
        } else {
            const bool area = type_ == Area2D || type_ == Area3D;
            for (int c = 0; c < columns_; ++c) {
                auto* line = new QLineSeries;
                for (int r = 0; r < rows; ++r) {
                    bool ok = false;
                    const double v = value(r, c, &ok);
                    if (ok) {
                        line->append(r, v);
                        widen(v);
                    }
                }
                if (area) {
                    // Filled between the values and 0, so that a loss reads below the line.
                    auto* zero = new QLineSeries;
                    for (const QPointF& p : line->points())
                        zero->append(p.x(), 0);
                    auto* a = new QAreaSeries(line, zero);
                    line->setParent(a); // the area doesn't own its boundaries
                    zero->setParent(a);
                    a->setName(label(c));
                    QColor fill = colorOf(c);
                    fill.setAlpha(depth ? 255 : 170);
                    a->setBrush(solidBrush(fill, depth));
                    a->setPen(QPen(colorOf(c).darker(depth ? 180 : 120), depth ? 2 : 1));
                    chart->addSeries(a);
                    a->attachAxis(axisX);
                    a->attachAxis(axisY);
                    // An area of one point has no surface: its points are marked as a line's are.
                    auto* points = new QScatterSeries;
                    points->append(line->points());
                    points->setColor(colorOf(c).darker(depth ? 180 : 120));
                    points->setBorderColor(points->color());
                    points->setMarkerSize(depth ? 10 : 8);
                    chart->addSeries(points);
                    points->attachAxis(axisX);
                    points->attachAxis(axisY);
                    for (QLegendMarker* m : chart->legend()->markers(points))
                        m->setVisible(false);
                } else {
                    line->setName(label(c));
                    line->setPen(QPen(colorOf(c), depth ? 5 : 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
                    // A line of one point draws nothing: its marker is what shows it.
                    line->setPointsVisible(true);
                    line->setMarkerSize(depth ? 10 : 8);
                    chart->addSeries(line);
                    line->attachAxis(axisX);
                    line->attachAxis(axisY);
                }
            }
            if (rows > 0)
                axisX->setRange(categories.first(), categories.last());
            // Room above and below, so that the marker of the highest or lowest point shows whole.
            const double margin = (hi > lo ? hi - lo : 1) * 0.05;
            lo -= lo < 0 ? margin : 0;
            hi += hi > 0 ? margin : 0;
            if (hi == lo) { // every point at zero: keep the markers off the plot's edge
                lo -= margin;
                hi += margin;
            }
        }
        axisY->setRange(lo, hi > lo ? hi : lo + 1);
        axisY->applyNiceNumbers();
    }
    chart->setPlotAreaBackgroundVisible(depth);
    chart->setPlotAreaBackgroundBrush(Qt::white);
    depth_->setVisible(depth);
    chart->legend()->setVisible(legend_ && (columns_ > 0 && type_ != XY2D ? true : columns_ > 2));
    fitRowLabels();
}

} // namespace platform
