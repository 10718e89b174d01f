#pragma once
// The statements are written the way the windows write them; this is the
// one place that turns that dialect into SQLite.
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace store {

struct Literal {
    enum class Kind { Text, Integer, Real };
    Kind kind;
    // The literal as written, a view into the Lifted's own copy of the statement;
    // for a text, without its quotes.
    QStringView view;
    QString unescaped; // a text that had '' in it, with them undone
    long long integer = 0;
    double real = 0.0;
    QStringView text() const { return unescaped.isNull() ? view : QStringView(unescaped); }
};

// A statement with its literals lifted into ? parameters, so that statements
// of the same shape share one prepared statement. It keeps the statement its
// literals view (a shared copy, no allocation), so a temporary statement is safe.
struct Lifted {
    QString shape;
    std::vector<Literal> params;
    QString source;
};
Lifted LiftLiterals(const QString& sql);

// What SQLite is given for one shape: one or more statements and, for each
// parameter, whether it is a value for a date column.
struct Translation {
    QStringList statements;
    std::vector<bool> dateParams;
};
using ColumnsOf = std::function<QStringList(const QString& table)>;
Translation Translate(const QString& shape, int paramCount, const ColumnsOf& columnsOf = {});

// The whole mapping with the literals written back inline: what the engine
// effectively runs. Used by tests and error texts.
QStringList ToSqlite(const QString& sql, const ColumnsOf& columnsOf = {});

// True when the statement's first word is `word` (ASCII, any case), without allocating.
bool StartsWithWord(const QString& sql, QLatin1StringView word);

// Dates live in columns named Data, stored as YYYY-MM-DD.
bool IsDateColumn(const QString& column);
// '17/01/2003' -> '2003-01-17' when the text is a short date; otherwise unchanged.
QString DateParamValue(QStringView text);

} // namespace store
