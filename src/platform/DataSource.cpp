#include "platform/DataSource.h"

#include "platform/Numbers.h"
#include "store/Database.h"
#include "store/DbError.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace platform {

DataSource::DataSource(QObject* parent) : QObject(parent) {}

void DataSource::SetSource(store::Database* db, const QString& sql)
{
    db_ = db;
    sql_ = sql;
}

void DataSource::Refresh()
{
    rs_ = db_->OpenRecordset(sql_);
    emit Reloaded();
    emit PositionChanged();
}

void DataSource::MoveFirst() { rs_.MoveFirst(); emit PositionChanged(); }
void DataSource::MoveLast() { rs_.MoveLast(); emit PositionChanged(); }
void DataSource::MoveNext() { rs_.MoveNext(); emit PositionChanged(); }
void DataSource::MovePrevious() { rs_.MovePrevious(); emit PositionChanged(); }
void DataSource::Move(int offset) { rs_.Move(offset); emit PositionChanged(); }

bool DataSource::FindFirst(const QString& criteria)
{
    const bool found = rs_.FindFirst(criteria);
    emit PositionChanged();
    return found;
}

void DataSource::Delete()
{
    rs_.Delete();
    emit RowsChanged();
}

void DataSource::SetPosition(int row)
{
    if (row == rs_.AbsolutePosition())
        return;
    rs_.SetAbsolutePosition(row);
    emit PositionChanged();
}

RecordsetModel::RecordsetModel(DataSource* source, QList<GridColumn> columns, QObject* parent)
    : QAbstractTableModel(parent), source_(source), columns_(std::move(columns))
{
    auto remap = [this]() {
        beginResetModel();
        fields_.clear();
        const store::Recordset& rs = source_->Recordset();
        for (const GridColumn& c : columns_) {
            int found = -1;
            for (int i = 0; i < rs.FieldCount(); ++i)
                if (rs.FieldName(i).compare(c.field, Qt::CaseInsensitive) == 0)
                    found = i;
            fields_ << found;
        }
        endResetModel();
    };
    connect(source_, &DataSource::Reloaded, this, remap);
    connect(source_, &DataSource::RowsChanged, this, [this]() {
        beginResetModel();
        endResetModel();
    });
    remap();
}

int RecordsetModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : source_->Recordset().RecordCount();
}

int RecordsetModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QString RecordsetModel::Text(int row, int column) const
{
    const int field = fields_.value(column, -1);
    if (field < 0 || row < 0 || row >= source_->Recordset().RecordCount())
        return {};
    return num::Text(source_->Recordset().ValueAt(row, field));
}

QVariant RecordsetModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= source_->Recordset().RecordCount())
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return Text(index.row(), index.column());
    if (role == Qt::TextAlignmentRole) {
        const int field = fields_.value(index.column(), -1);
        if (field < 0)
            return {};
        const int type = source_->Recordset().ValueAt(index.row(), field).typeId();
        const bool number = type == QMetaType::Double || type == QMetaType::LongLong;
        return QVariant::fromValue(Qt::AlignVCenter | (number ? Qt::AlignRight : Qt::AlignLeft));
    }
    return {};
}

QVariant RecordsetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Horizontal)
        return columns_.value(section).caption;
    return section + 1;
}

int EditableRecordsetModel::rowCount(const QModelIndex& parent) const
{
    return RecordsetModel::rowCount(parent) + (parent.isValid() || addNewTable_.isEmpty() ? 0 : 1);
}

QVariant EditableRecordsetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical && role == Qt::DisplayRole && IsAddNewRow(section))
        return QStringLiteral("*");
    return RecordsetModel::headerData(section, orientation, role);
}

bool EditableRecordsetModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    if (IsAddNewRow(index.row())) {
        if (value.toString().isEmpty())
            return false;
        QString literal = value.toString();
        literal.replace('\'', QStringLiteral("''"));
        try {
            source_->Database()->Execute("INSERT INTO " + addNewTable_ + " (" + columns_[index.column()].field + ") VALUES ('"
                                         + literal + "')");
        } catch (const store::DbError&) {
            emit EditRefused(value.toString());
            return false;
        }
        // Reloaded once the grid has closed the editor of the row that was new.
        QMetaObject::invokeMethod(source_, &DataSource::Refresh, Qt::QueuedConnection);
        return true;
    }
    store::Recordset& rs = source_->Recordset();
    rs.SetAbsolutePosition(index.row());
    rs.Edit();
    rs.SetField(columns_[index.column()].field, value.toString());
    try {
        rs.Update();
    } catch (const store::DbError&) {
        // The engine refused the value: the cell keeps what the table holds.
        rs.CancelUpdate();
        emit EditRefused(value.toString());
        return false;
    }
    emit dataChanged(index, index);
    return true;
}

Qt::ItemFlags EditableRecordsetModel::flags(const QModelIndex& index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

void EditableRecordsetModel::AppendRow(const QString& table, const QString& columns, const QString& values)
{
    source_->Database()->Execute("INSERT INTO " + table + " (" + columns + ") VALUES (" + values + ")");
    source_->Refresh();
}

void EditableRecordsetModel::RemoveRow(int row)
{
    source_->Recordset().SetAbsolutePosition(row);
    source_->Delete();
}

DataGrid::DataGrid(QWidget* parent) : QTableView(parent)
{
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(true);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
}

void DataGrid::Bind(DataSource* source, const QList<GridColumn>& columns)
{
    source_ = source;
    model_ = new RecordsetModel(source, columns, this);
    setModel(model_);
    connect(source_, &DataSource::PositionChanged, this, &DataGrid::follow);
    // A click on another row moves the cursor; on another cell of the same row it is a
    // column change, which the window hears of just the same.
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current, const QModelIndex& previous) {
                if (syncing_ || !current.isValid())
                    return;
                if (current.row() != source_->Recordset().AbsolutePosition())
                    source_->SetPosition(current.row());
                else if (current.column() != previous.column())
                    emit RowColChange();
            });
}

void DataGrid::follow()
{
    syncing_ = true;
    const int row = source_->Recordset().AbsolutePosition();
    if (row >= 0) {
        const QModelIndex idx = model_->index(row, std::max(0, currentIndex().column()));
        selectionModel()->setCurrentIndex(idx, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        scrollTo(idx);
    } else {
        // No current cell either: a click on the row that was current must still move the cursor.
        selectionModel()->clearCurrentIndex();
        selectionModel()->clearSelection();
    }
    syncing_ = false;
    emit RowColChange();
}

QString DataGrid::Column(int n) const
{
    return model_ ? model_->Text(source_->Recordset().AbsolutePosition(), n) : QString();
}

void DataGrid::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete && allowDelete_ && source_ && source_->Recordset().AbsolutePosition() >= 0) {
        source_->Delete();
        return;
    }
    QTableView::keyPressEvent(event);
}

void FillCombo(QComboBox* combo, store::Recordset rs, const QString& field)
{
    const QString text = combo->currentText();
    const QSignalBlocker block(combo);
    combo->clear();
    while (!rs.Eof()) {
        combo->addItem(rs.Text(field));
        rs.MoveNext();
    }
    if (combo->isEditable())
        combo->setEditText(text);
}

} // namespace platform
