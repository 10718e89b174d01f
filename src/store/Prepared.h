#pragma once
// A plain SQLite statement, prepared once and run many times with bound values:
// for batches of computed rows, where a statement text per row would cost more
// than the rows themselves. No dialect mapping and no literals: the text is SQLite's own.
#include <QString>
#include <QUtf8StringView>

#include <memory>

struct sqlite3_stmt;

namespace store {

class Database;
struct Connection;

class Prepared {
public:
    Prepared(Database& db, const QString& sql);
    ~Prepared();
    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;

    // Parameters counted from 1, as SQLite counts them.
    Prepared& Bind(int index, double value);
    Prepared& Bind(int index, long long value);
    Prepared& Bind(int index, const QString& text);
    // Runs the statement to its end with the values bound; they stay bound for the next run.
    void Run();

    // A query a row at a time: false at its end, when it is ready to run again.
    bool Next();
    // Columns of the current row, counted from 0.
    enum class Kind { Null, Integer, Real, Text, Blob };
    Kind KindOf(int column) const;
    double Real(int column) const;
    long long Integer(int column) const;
    // Valid until the next step.
    QUtf8StringView Utf8(int column) const;

private:
    void check(int rc) const;

    std::shared_ptr<Connection> conn_;
    sqlite3_stmt* st_ = nullptr;
    QString sql_;
};

} // namespace store
