#pragma once
// A workbook file (.xlsx) opened for reading cells of its active sheet, as the
// sheet probe needs. Cells written to it stay in memory: the file is never written.
#include <QHash>
#include <QString>
#include <QVariant>

#include <memory>

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
    // A cell of the active sheet by its name ("A2"): a text, a number, a bool,
    // a QDate or QDateTime for date formats, null when the cell is empty.
    QVariant Cell(const QString& name);
    void SetCell(const QString& name, const QVariant& value);

    // A cell's value as a message shows it: Italian numbers and dates.
    static QString Text(const QVariant& value);

private:
    std::unique_ptr<WorkbookZip> zip_;
    QString path_;
    QString sheetPart_;
    QString sharedStringsPart_;
    QString activeName_;
    std::vector<bool> dateStyles_; // by cell style index
    bool date1904_ = false;
    QHash<QString, QVariant> written_;
};

} // namespace platform
