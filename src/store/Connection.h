#pragma once
// Internal to the store: one open SQLite handle and its cache of prepared shapes.
#include "store/Dialect.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

namespace store {

struct PreparedShape {
    std::vector<sqlite3_stmt*> stmts;
    std::vector<bool> dateParams;
    QString table; // non-empty when the cursor can write through (first column is the rowid)
    // Filled at the first cursor over this shape.
    std::shared_ptr<const std::vector<QString>> names;
    std::vector<bool> dateColumns;
    std::shared_ptr<const std::vector<bool>> realColumns; // declared REAL: texts are read as numbers on update
    // Size of the last snapshot, to allocate the next one at once.
    std::size_t lastCells = 0;
    std::size_t lastTextBytes = 0;
};

struct Connection {
    sqlite3* db = nullptr;
    QString path;
    QHash<QString, PreparedShape> cache;       // statements run by Execute
    QHash<QString, PreparedShape> cursorCache; // statements behind a Recordset
    QHash<QString, QStringList> columns;
    int savepoints = 0;
    // The texts bound to the statement about to run; kept alive until it has run.
    std::string boundText;
    long long statementsRun = 0;

    ~Connection();
    void clearCache();
    [[noreturn]] void fail(const QString& statement) const;
    // Steps a bound statement to its end and resets it; a failure throws with `statement`.
    void run(sqlite3_stmt* st, const QString& statement);
    QStringList columnsOf(const QString& table);
    // The prepared statements for a shape; for a cursor, with the rowid in front when possible.
    PreparedShape& prepare(const Lifted& lifted, bool cursor, const QString& original);
    // Texts are bound in place, valid until the next bind, unless copyTexts makes the engine keep its own copy.
    void bind(const PreparedShape& shape, const Lifted& lifted, const QString& original, bool copyTexts = false);
    void exec(const QString& sql);
};

} // namespace store
