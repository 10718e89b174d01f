#pragma once
// A workbook file (.xlsx) opened for reading: a cell of its active sheet, as the
// sheet probe needs, or every row of a sheet by name, as the imports need.
// Cells written to it stay in memory: the file is never written.
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

namespace platform {

struct WorkbookZip;

class Workbook {
public:
    // Throws platform::Failure for a file that is no readable workbook.
    explicit Workbook(const QString& path);
    ~Workbook();
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    QString ActiveSheetName() const { return activeName_; }
    // The sheets' names in workbook order.
    QStringList SheetNames() const { return sheetNames_; }
    // A cell of the active sheet by its name ("A2"): a text, a number, a bool,
    // a QDate or QDateTime for date formats, null when the cell is empty.
    QVariant Cell(const QString& name);
    void SetCell(const QString& name, const QVariant& value);
    // Every row of a sheet up to its last used one (rows[0] is row 1), each with its
    // cells' values up to its last used column, typed as Cell() types them; rows and
    // cells in between that hold nothing are empty lists and nulls. The name is
    // compared without case, as spreadsheets do. Throws platform::Failure for a
    // missing sheet or an unreadable one.
    QList<QVariantList> Rows(const QString& sheetName);

    // A cell's value as a message shows it: Italian numbers and dates.
    static QString Text(const QVariant& value);

private:
    // A cell's raw text (the value or the shared string's index) as the value it stands for.
    QVariant value(const QString& type, int style, const QString& raw);
    // The package has one part open at a time: the shared texts are read whole before a sheet is streamed.
    void loadSharedStrings();
    const QString& sharedString(const QString& raw);
    // Calls `cell` for every cell with a value of a sheet's part, in the file's order,
    // until it returns false or the rows pass `lastRow` (0: to the end).
    void cells(const QString& part, int lastRow,
               const std::function<bool(int row, int column, const QString& type, int style, const QString& raw)>& cell);

    std::unique_ptr<WorkbookZip> zip_;
    QString path_;
    QStringList sheetNames_;
    QStringList sheetParts_; // by the same index
    QString sheetPart_;
    QString sharedStringsPart_;
    QString activeName_;
    std::vector<bool> dateStyles_; // by cell style index
    bool date1904_ = false;
    QHash<QString, QVariant> written_;
    std::optional<QStringList> sharedStrings_; // read before the first sheet is streamed
};

} // namespace platform
