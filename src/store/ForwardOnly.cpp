#include "store/ForwardOnly.h"

#include "platform/Numbers.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/DbError.h"

namespace store {

ForwardOnly Database::OpenForwardOnly(const QString& sql)
{
    if (!conn_)
        throw DbError(QStringLiteral("Oggetto non valido o non impostato."), sql);
    const Lifted lifted = LiftLiterals(sql);
    const Translation t = Translate(lifted.shape, static_cast<int>(lifted.params.size()));
    if (t.statements.size() != 1)
        throw DbError(QStringLiteral("Istruzione non valida per un recordset"), sql);
    // A statement of its own: the walk may outlive any other statement run meanwhile.
    sqlite3_stmt* st = nullptr;
    const QByteArray utf8 = t.statements.front().toUtf8();
    if (sqlite3_prepare_v2(conn_->db, utf8.constData(), static_cast<int>(utf8.size()), &st, nullptr) != SQLITE_OK || !st) {
        sqlite3_finalize(st);
        conn_->fail(sql);
    }
    ForwardOnly cursor(conn_, st, sql);
    PreparedShape shape;
    shape.stmts = {st};
    shape.dateParams = t.dateParams;
    conn_->bind(shape, lifted, sql, true);
    ++conn_->statementsRun;
    cursor.eof_ = false;
    cursor.MoveNext();
    return cursor;
}

ForwardOnly::ForwardOnly(std::shared_ptr<Connection> conn, sqlite3_stmt* st, QString statement)
    : conn_(std::move(conn)), st_(st), statement_(std::move(statement))
{
    const int n = sqlite3_column_count(st_);
    for (int c = 0; c < n; ++c) {
        names_.push_back(QString::fromUtf8(sqlite3_column_name(st_, c)));
        dates_.push_back(IsDateColumn(names_.back()));
    }
}

ForwardOnly::ForwardOnly(ForwardOnly&& other) noexcept
    : conn_(std::move(other.conn_)), st_(other.st_), statement_(std::move(other.statement_)),
      names_(std::move(other.names_)), dates_(std::move(other.dates_)), eof_(other.eof_)
{
    other.st_ = nullptr;
}

ForwardOnly::~ForwardOnly() { sqlite3_finalize(st_); }

void ForwardOnly::MoveNext()
{
    if (eof_)
        throw DbError(QStringLiteral("Nessun record corrente."), statement_);
    const int rc = sqlite3_step(st_);
    if (rc == SQLITE_DONE)
        eof_ = true;
    else if (rc != SQLITE_ROW)
        conn_->fail(statement_);
}

int ForwardOnly::Index(const QString& name) const
{
    for (std::size_t i = 0; i < names_.size(); ++i)
        if (names_[i].compare(name, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    throw DbError(QStringLiteral("Elemento non trovato in questo insieme: ") + name, statement_);
}

void ForwardOnly::requireCurrent(int field) const
{
    if (eof_)
        throw DbError(QStringLiteral("Nessun record corrente."), statement_);
    if (field < 0 || field >= static_cast<int>(names_.size()))
        throw DbError(QStringLiteral("Elemento non trovato in questo insieme: ") + QString::number(field), statement_);
}

QVariant ForwardOnly::Field(int field) const
{
    requireCurrent(field);
    switch (sqlite3_column_type(st_, field)) {
    case SQLITE_INTEGER:
        return static_cast<qlonglong>(sqlite3_column_int64(st_, field));
    case SQLITE_FLOAT:
        return sqlite3_column_double(st_, field);
    case SQLITE_TEXT: {
        const QString text = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st_, field)),
                                               sqlite3_column_bytes(st_, field));
        if (dates_[static_cast<std::size_t>(field)]) {
            const QDate d = QDate::fromString(text, Qt::ISODate);
            if (d.isValid())
                return d;
        }
        return text;
    }
    case SQLITE_BLOB:
        return QByteArray(static_cast<const char*>(sqlite3_column_blob(st_, field)), sqlite3_column_bytes(st_, field));
    default:
        return {};
    }
}

QString ForwardOnly::Text(int field) const
{
    QString out;
    Text(field, &out);
    return out;
}

void ForwardOnly::Text(int field, QString* out) const
{
    requireCurrent(field);
    if (sqlite3_column_type(st_, field) != SQLITE_TEXT || dates_[static_cast<std::size_t>(field)]) {
        *out = num::Text(Field(field));
        return;
    }
    const auto* utf8 = reinterpret_cast<const char*>(sqlite3_column_text(st_, field));
    const int bytes = sqlite3_column_bytes(st_, field);
    // ASCII, the common case, is widened into the buffer the caller already has.
    out->resize(bytes);
    QChar* to = out->data();
    for (int i = 0; i < bytes; ++i) {
        if (static_cast<unsigned char>(utf8[i]) >= 128) {
            *out = QString::fromUtf8(utf8, bytes);
            return;
        }
        to[i] = QLatin1Char(utf8[i]);
    }
}

double ForwardOnly::Number(int field) const
{
    requireCurrent(field);
    switch (sqlite3_column_type(st_, field)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT:
        return sqlite3_column_double(st_, field);
    case SQLITE_NULL:
        return 0.0;
    default: {
        bool ok = false;
        const double d = Field(field).toDouble(&ok);
        if (!ok)
            throw DbError(QStringLiteral("Tipi non corrispondenti: ") + names_[static_cast<std::size_t>(field)], statement_);
        return d;
    }
    }
}

} // namespace store
