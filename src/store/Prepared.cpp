#include "store/Prepared.h"

#include "store/Connection.h"
#include "store/Database.h"

namespace store {

Prepared::Prepared(Database& db, const QString& sql) : conn_(db.connection()), sql_(sql)
{
    if (!conn_)
        throw DbError(QStringLiteral("Oggetto non valido o non impostato."), sql);
    const QByteArray utf8 = sql.toUtf8();
    if (sqlite3_prepare_v2(conn_->db, utf8.constData(), static_cast<int>(utf8.size()), &st_, nullptr) != SQLITE_OK || !st_) {
        sqlite3_finalize(st_);
        st_ = nullptr;
        conn_->fail(sql);
    }
}

Prepared::~Prepared() { sqlite3_finalize(st_); }

void Prepared::check(int rc) const
{
    if (rc != SQLITE_OK)
        conn_->fail(sql_);
}

Prepared& Prepared::Bind(int index, double value)
{
    check(sqlite3_bind_double(st_, index, value));
    return *this;
}

Prepared& Prepared::Bind(int index, long long value)
{
    check(sqlite3_bind_int64(st_, index, value));
    return *this;
}

Prepared& Prepared::Bind(int index, const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    check(sqlite3_bind_text(st_, index, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT));
    return *this;
}

void Prepared::Run()
{
    conn_->run(st_, sql_);
}

bool Prepared::Next()
{
    const int rc = sqlite3_step(st_);
    if (rc == SQLITE_ROW)
        return true;
    sqlite3_reset(st_);
    if (rc != SQLITE_DONE)
        conn_->fail(sql_);
    ++conn_->statementsRun;
    return false;
}

Prepared::Kind Prepared::KindOf(int column) const
{
    switch (sqlite3_column_type(st_, column)) {
    case SQLITE_INTEGER: return Kind::Integer;
    case SQLITE_FLOAT: return Kind::Real;
    case SQLITE_TEXT: return Kind::Text;
    case SQLITE_BLOB: return Kind::Blob;
    default: return Kind::Null;
    }
}

double Prepared::Real(int column) const { return sqlite3_column_double(st_, column); }

long long Prepared::Integer(int column) const { return sqlite3_column_int64(st_, column); }

QUtf8StringView Prepared::Utf8(int column) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(st_, column));
    return QUtf8StringView(text, sqlite3_column_bytes(st_, column));
}

} // namespace store
