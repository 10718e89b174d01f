#pragma once
// A data source holding a snapshot cursor, and the grid and combo boxes bound to it.
#include "store/Recordset.h"

#include <QAbstractTableModel>
#include <QComboBox>
#include <QTableView>

namespace store {
class Database;
}

namespace platform {

class DataSource final : public QObject {
    Q_OBJECT
public:
    explicit DataSource(QObject* parent = nullptr);
    // The statement behind the cursor; Refresh opens it.
    void SetSource(store::Database* db, const QString& sql);
    void Refresh();
    store::Recordset& Recordset() { return rs_; }
    store::Database* Database() const { return db_; }

    // Moves of the cursor that the bound grid follows.
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    void Move(int offset);
    bool FindFirst(const QString& criteria);
    void Delete();
    // From the grid: the row the user selected.
    void SetPosition(int row);

signals:
    void Reloaded();
    void PositionChanged();
    void RowsChanged();

private:
    store::Database* db_ = nullptr;
    QString sql_;
    store::Recordset rs_;
};

struct GridColumn {
    QString caption;
    QString field;
};

// Rows of a data source's cursor: dates dd/mm/yyyy, numbers in the Italian default text,
// right-aligned. An editable model writes each changed cell to its row at once.
class RecordsetModel : public QAbstractTableModel {
    Q_OBJECT
public:
    RecordsetModel(DataSource* source, QList<GridColumn> columns, QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // Text of a column of a row, as the grid shows it.
    QString Text(int row, int column) const;

protected:
    DataSource* source_;
    QList<GridColumn> columns_;
    QList<int> fields_;
};

class EditableRecordsetModel final : public RecordsetModel {
    Q_OBJECT
public:
    using RecordsetModel::RecordsetModel;
    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // Adds a row with the given values (SQL literals) and reloads.
    void AppendRow(const QString& table, const QString& columns, const QString& values);
    void RemoveRow(int row);
    // An empty last row, marked "*": a value typed into it adds a row to `table`.
    void SetAllowAddNew(const QString& table) { beginResetModel(); addNewTable_ = table; endResetModel(); }
    bool IsAddNewRow(int row) const { return !addNewTable_.isEmpty() && row == source_->Recordset().RecordCount(); }

signals:
    void EditRefused(const QString& value);

private:
    QString addNewTable_;
};

// A read-only grid over a data source; the selected row is the cursor's row.
class DataGrid final : public QTableView {
    Q_OBJECT
public:
    explicit DataGrid(QWidget* parent = nullptr);
    void Bind(DataSource* source, const QList<GridColumn>& columns);
    RecordsetModel* Model() const { return model_; }
    // Text of column n of the selected row ("" without a row).
    QString Column(int n) const;
    void SetAllowDelete(bool allow) { allowDelete_ = allow; }

signals:
    // The selected row or column changed (by the user or by a move of the cursor).
    void RowColChange();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void follow();
    DataSource* source_ = nullptr;
    RecordsetModel* model_ = nullptr;
    bool syncing_ = false;
    bool allowDelete_ = false;
};

// Fills a combo box with one column of a cursor, keeping the text typed in an editable one.
void FillCombo(QComboBox* combo, store::Recordset rs, const QString& field);

} // namespace platform
