#pragma once
// A forward-only cursor: the rows as the engine steps them, each field read in
// place when asked for, nothing copied. For walks that only read; it sees the
// table as it is while it walks, and can't move back or write.
#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

struct sqlite3_stmt;

namespace store {

struct Connection;

class ForwardOnly {
public:
    ForwardOnly(ForwardOnly&& other) noexcept;
    ForwardOnly& operator=(ForwardOnly&&) = delete;
    ForwardOnly(const ForwardOnly&) = delete;
    ~ForwardOnly();

    bool Eof() const { return eof_; }
    void MoveNext();

    // The index of a field by name, without regard to case: read it once before the walk.
    int Index(const QString& name) const;
    // As a Recordset gives them: dates dd/mm/yyyy, numbers in their default text, null as empty.
    QString Text(int field) const;
    // The same into a text the caller keeps, whose room is reused from row to row.
    void Text(int field, QString* out) const;
    double Number(int field) const;
    QVariant Field(int field) const;

private:
    friend class Database;
    ForwardOnly(std::shared_ptr<Connection> conn, sqlite3_stmt* st, QString statement);
    void requireCurrent(int field) const;

    std::shared_ptr<Connection> conn_;
    sqlite3_stmt* st_ = nullptr;
    QString statement_;
    std::vector<QString> names_;
    std::vector<bool> dates_;
    bool eof_ = true;
};

} // namespace store
