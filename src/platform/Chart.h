#pragma once
// The one chart of the program: a grid of values (rows x columns, texts where
// the empty text is no value) drawn as pie, bars, lines, areas or XY, in 2D or
// with a drawn depth for the 3D types.
#include <QColor>
#include <QStringList>
#include <QVariant>
#include <QVector>
#include <QWidget>

class QChartView;
class QChart;
class QGraphicsRectItem;

namespace platform {

class Chart final : public QWidget {
    Q_OBJECT
public:
    // The chart type numbers of the original control.
    enum Type { Bar3D = 0, Bar2D = 1, Line3D = 2, Line2D = 3, Area3D = 4, Area2D = 5, Pie2D = 14, XY2D = 16 };

    explicit Chart(QWidget* parent = nullptr);

    // One row of values, one column (series) per value.
    void ChartData(const QVector<QVariant>& values);
    // Rows of values.
    void ChartData(const QVector<QVector<QVariant>>& rows);

    void SetRowCount(int n);
    void SetColumnCount(int n);
    // The current cell, counted from 1, that Data and the labels act on.
    void SetRow(int row);
    void SetColumn(int column);
    int Row() const { return row_; }
    int Column() const { return column_; }
    QString Data() const;
    void SetData(const QString& text);
    void SetRowLabel(const QString& label);
    void SetColumnLabel(const QString& label);
    void SetChartType(int type);
    // Colours of the series in order; unset series take the palette.
    void SetSeriesColors(const QVector<QColor>& colors);
    // Off for a window that shows its own legend beside the chart.
    void SetLegendVisible(bool visible);

    Q_INVOKABLE int RowCount() const { return static_cast<int>(data_.size()); }
    Q_INVOKABLE int ColumnCount() const { return columns_; }
    Q_INVOKABLE QString DataAt(int row, int column) const;
    Q_INVOKABLE QString RowLabelAt(int row) const;
    Q_INVOKABLE QString ColumnLabelAt(int column) const;
    Q_INVOKABLE int ChartType() const { return type_; }

    QChart* ChartItem() const;

    // Holds the drawing while a window sets many cells: the chart is drawn once,
    // when the last hold ends.
    class Hold {
    public:
        explicit Hold(Chart* chart);
        ~Hold();
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

    private:
        Chart* chart_;
    };

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    // Row labels at an angle when they don't fit side by side, none when they can't be read.
    void fitRowLabels();
    void resizeGrid(int rows, int columns);
    void redraw();
    double value(int row, int column, bool* ok) const;
    QColor colorOf(int series) const;

    QChartView* view_;
    QGraphicsRectItem* depth_;
    QVector<QVector<QString>> data_;
    QStringList rowLabels_;
    QStringList columnLabels_;
    QVector<QColor> colors_;
    int columns_ = 0;
    int row_ = 1;
    int column_ = 1;
    int type_ = Bar2D;
    bool legend_ = true;
    int holds_ = 0;
    bool pending_ = false;
};

} // namespace platform
