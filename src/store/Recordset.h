#pragma once
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <string>
#include <vector>

namespace store {

struct Connection;

// The values of a snapshot, packed: numbers inline, texts in one buffer,
// turned into QVariants only when read.
class RowStore {
public:
    void SetColumns(int columns) { columns_ = columns; }
    int Size() const { return columns_ ? static_cast<int>(cells_.size() / static_cast<std::size_t>(columns_)) : rows_; }
    bool Empty() const { return Size() == 0; }
    QVariant Value(int row, int column) const;
    // Fast readers for the common kinds; false when the cell is of another kind.
    bool Number(int row, int column, double* out) const;
    bool PlainText(int row, int column, QString* out) const;
    std::vector<QVariant> Row(int row) const;
    void SetRow(int row, const std::vector<QVariant>& values);
    void Erase(int row);

    // Room for what the last snapshot of the same statement held.
    void Reserve(std::size_t cells, std::size_t textBytes);
    std::size_t Cells() const { return cells_.size(); }
    std::size_t TextBytes() const { return text_.size(); }

    void AddNull();
    void AddInteger(qint64 v);
    void AddReal(double v);
    void AddText(const char* utf8, int bytes, bool date);
    void AddBlob(const char* data, int bytes);
    void EndRow() { ++rows_; }

private:
    enum Kind : unsigned char { Null, Integer, Real, Text, Date, Blob };
    struct Cell {
        Kind kind = Null;
        quint32 bytes = 0; // length of a text or blob
        union {
            qint64 integer = 0; // also the offset of a text in the buffer
            double real;
        };
    };
    void encode(Cell& cell, const QVariant& value);
    int columns_ = 0;
    int rows_ = 0; // rows of a cursor with no columns
    std::vector<Cell> cells_;
    std::string text_;
};

// A snapshot cursor: the rows as they were when it was opened.
// On a cursor over one table, Edit/Update/Delete write through at once.
class Recordset {
public:
    Recordset() = default;

    bool Eof() const;
    bool Bof() const;
    int RecordCount() const { return rows_.Size(); }
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    void Move(int offset);
    // -1 with no current row.
    int AbsolutePosition() const;
    void SetAbsolutePosition(int position);

    // Criteria of the form "Field op value", op one of = <> < > <= >=,
    // value a number or a quoted text. Sets NoMatch.
    bool FindFirst(const QString& criteria);
    bool NoMatch() const { return noMatch_; }

    int FieldCount() const { return static_cast<int>(columns_ ? columns_->size() : 0); }
    QString FieldName(int index) const;
    bool HasField(const QString& name) const;
    // Field of the current row by name, without regard to case.
    QVariant Field(const QString& name) const;
    QVariant Field(int index) const;
    // A value of any row of the snapshot, without moving (for grids).
    QVariant ValueAt(int row, int column) const;
    QVariant operator[](const QString& name) const { return Field(name); }
    // Text of a field as the original engine gave it (null as empty).
    QString Text(const QString& name) const;
    double Number(const QString& name) const;

    bool Updatable() const { return !table_.isEmpty(); }
    void Edit();
    void SetField(const QString& name, const QVariant& value);
    void Update();
    void CancelUpdate();
    void Delete();

private:
    friend class Database;
    int column(const QString& name) const;
    QVariant current(int column) const;
    void requireCurrent() const;

    std::weak_ptr<Connection> conn_;
    std::shared_ptr<const std::vector<QString>> columns_;
    std::shared_ptr<const std::vector<bool>> realColumns_;
    RowStore rows_;
    std::vector<long long> rowids_;
    QString table_;
    QString statement_;
    int pos_ = 0;
    bool afterDelete_ = false;
    bool noMatch_ = true;
    bool editing_ = false;
    std::vector<QVariant> buffer_;
    std::vector<bool> dirty_;
};

} // namespace store
