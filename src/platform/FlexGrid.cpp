#include "platform/FlexGrid.h"

#include "platform/Failure.h"
#include "platform/Numbers.h"

#include <QHeaderView>

namespace platform {

namespace {
// Numbers (and percentages) to the right, text to the left, as the grid's general alignment.
Qt::Alignment allineamento(const QString& text)
{
    QString t = text;
    if (t.endsWith('%'))
        t.chop(1);
    return Qt::AlignVCenter | (num::Parse(t) ? Qt::AlignRight : Qt::AlignLeft);
}
} // namespace

FlexGrid::FlexGrid(int rows, int cols, QWidget* parent) : QTableWidget(rows, cols, parent)
{
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::NoSelection);
    setFocusPolicy(Qt::NoFocus);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->hide();
}

void FlexGrid::SetFixedRows(int n)
{
    if (n < 0 || n > 1 || n >= rowCount())
        throw IndexOutOfRange(n);
    fixedRows_ = n;
    setRowHidden(0, n == 1);
    horizontalHeader()->setVisible(n == 1);
    for (int c = 0; c < columnCount(); ++c)
        setHorizontalHeaderItem(c, new QTableWidgetItem(TextMatrix(0, c)));
}

void FlexGrid::AddItem(const QString& item)
{
    const int row = rowCount();
    insertRow(row);
    const QStringList cells = item.split('\t');
    for (int c = 0; c < cells.size() && c < columnCount(); ++c)
        SetTextMatrix(row, c, cells[c]);
}

void FlexGrid::SetTextMatrix(int row, int col, const QString& text)
{
    if (row < 0 || row >= rowCount() || col < 0 || col >= columnCount())
        throw IndexOutOfRange(row < 0 || row >= rowCount() ? row : col);
    QTableWidgetItem* it = item(row, col);
    if (!it) {
        it = new QTableWidgetItem;
        setItem(row, col, it);
    }
    it->setText(text);
    it->setTextAlignment(allineamento(text));
    if (row < fixedRows_)
        setHorizontalHeaderItem(col, new QTableWidgetItem(text));
}

QString FlexGrid::TextMatrix(int row, int col) const
{
    if (row < 0 || row >= rowCount() || col < 0 || col >= columnCount())
        throw IndexOutOfRange(row < 0 || row >= rowCount() ? row : col);
    const QTableWidgetItem* it = item(row, col);
    return it ? it->text() : QString();
}

} // namespace platform
