#pragma once
#include "store/DbError.h"
#include "store/ForwardOnly.h"
#include "store/Recordset.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace store {

struct Connection;

// One SQLite file, taking statements in the dialect the windows write.
// Every statement is on disk when Execute returns, unless a Transaction groups it.
class Database {
public:
    Database();
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // Opens an existing database file in place of the one held.
    // Throws DbError for a missing file or one that is not a database.
    void Open(const QString& path);
    void Close();
    bool IsOpen() const;
    QString Path() const;

    void Execute(const QString& sql);
    Recordset OpenRecordset(const QString& sql);
    // The same snapshot read through one getter per cell and kind: the plain reading the
    // usual one is checked against.
    Recordset OpenRecordsetPlain(const QString& sql);
    // A cursor that reads the rows in place as it moves, for long walks that only read.
    ForwardOnly OpenForwardOnly(const QString& sql);

    // Runs a script of plain SQLite statements (schema files), no dialect mapping.
    void ExecuteScript(const QString& script);
    // Creates a new database file from a schema script; throws if it exists.
    static void Create(const QString& path, const QString& script);
    // Copies a closed database file over another.
    static void CopyFile(const QString& from, const QString& to);

    // Cumulative count of statements run, for benchmarks and tests.
    long long StatementsRun() const;

    std::shared_ptr<Connection> connection() const { return conn_; }

private:
    Recordset openRecordset(const QString& sql, bool plain);
    std::shared_ptr<Connection> conn_;
};

// Groups statements into one durable transaction; rolls back unless committed.
// Nests through savepoints.
class Transaction {
public:
    explicit Transaction(Database& db);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void Commit();

private:
    std::shared_ptr<Connection> conn_;
    QString name_;
    bool done_ = false;
};

} // namespace store
