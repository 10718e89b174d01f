#pragma once
// Workbooks made for a test, as a user's spreadsheet program would leave them.
#include <QList>
#include <QString>
#include <QStringList>

#include <utility>

namespace testing_support {

// A sheet's name and its rows; a cell is "#n" a number, "@dd/mm/yyyy" a date, "" nothing, else a text.
using Foglio = std::pair<QString, QList<QStringList>>;
// Writes a workbook of these sheets, the first one active; gives the path back.
QString WriteWorkbook(const QString& path, const QList<Foglio>& fogli);

} // namespace testing_support
