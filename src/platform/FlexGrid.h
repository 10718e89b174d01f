#pragma once
// The flex grid of the original: a grid of texts addressed by row and column,
// whose rows are only ever appended. Its fixed row is shown as the header, so it
// stays in view while the rows scroll.
#include <QTableWidget>

namespace platform {

class FlexGrid final : public QTableWidget {
    Q_OBJECT
public:
    // As designed: `rows` rows and `cols` columns, no fixed row or column.
    FlexGrid(int rows, int cols, QWidget* parent = nullptr);

    // 0 or 1: with 1, row 0 is the header.
    void SetFixedRows(int n);
    // Appends an empty row at the bottom (tabs in `item` fill its cells from the left).
    void AddItem(const QString& item);
    void SetTextMatrix(int row, int col, const QString& text);

    Q_INVOKABLE int FixedRows() const { return fixedRows_; }
    Q_INVOKABLE int Rows() const { return rowCount(); }
    Q_INVOKABLE int Cols() const { return columnCount(); }
    Q_INVOKABLE QString TextMatrix(int row, int col) const;

private:
    int fixedRows_ = 0;
};

} // namespace platform
