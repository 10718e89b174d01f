#include "store/Database.h"

#include "store/Connection.h"

#include <QFile>

#include <algorithm>
#include <QFileInfo>
#include <QRegularExpression>

namespace store {

namespace {

// Durability of each statement. FULL syncs the write-ahead log at every commit;
// NORMAL was measured too (README, benchmarks).
constexpr const char* kPragmas = "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; PRAGMA foreign_keys=OFF;";
constexpr int kCacheLimit = 400;

const QRegularExpression& singleTableSelect()
{
    static const QRegularExpression re(
        QStringLiteral("^\\s*SELECT\\s+(?!DISTINCT\\b)([^()]*?)\\s+FROM\\s+(\\[[^\\]]+\\]|\\w+)\\s*($|WHERE\\b|ORDER\\b)"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    return re;
}

bool isSchemaChange(const QString& sql)
{
    return StartsWithWord(sql, QLatin1StringView("CREATE")) || StartsWithWord(sql, QLatin1StringView("DROP"))
        || StartsWithWord(sql, QLatin1StringView("ALTER"));
}

} // namespace

Connection::~Connection()
{
    clearCache();
    if (db)
        sqlite3_close_v2(db);
}

namespace {
void finalizeAll(QHash<QString, PreparedShape>& shapes)
{
    for (auto& shape : shapes)
        for (sqlite3_stmt* s : shape.stmts)
            sqlite3_finalize(s);
    shapes.clear();
}
} // namespace

void Connection::clearCache()
{
    finalizeAll(cache);
    finalizeAll(cursorCache);
    columns.clear();
}

void Connection::fail(const QString& statement) const
{
    throw DbError(QString::fromUtf8(sqlite3_errmsg(db)), statement, sqlite3_extended_errcode(db));
}

void Connection::run(sqlite3_stmt* st, const QString& statement)
{
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    }
    sqlite3_reset(st);
    if (rc != SQLITE_DONE)
        fail(statement);
    ++statementsRun;
}

QStringList Connection::columnsOf(const QString& table)
{
    const QString key = table.toLower();
    if (auto it = columns.find(key); it != columns.end())
        return *it;
    QStringList names;
    sqlite3_stmt* st = nullptr;
    const QByteArray q = QStringLiteral("PRAGMA table_info(\"%1\")").arg(table).toUtf8();
    if (sqlite3_prepare_v2(db, q.constData(), -1, &st, nullptr) == SQLITE_OK) {
        while (sqlite3_step(st) == SQLITE_ROW)
            names << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, 1)));
    }
    sqlite3_finalize(st);
    columns.insert(key, names);
    return names;
}

PreparedShape& Connection::prepare(const Lifted& lifted, bool cursor, const QString& original)
{
    QHash<QString, PreparedShape>& shapes = cursor ? cursorCache : cache;
    const QString& key = lifted.shape;
    if (auto it = shapes.find(key); it != shapes.end())
        return *it;
    if (shapes.size() >= kCacheLimit)
        finalizeAll(shapes);

    QString shapeText = lifted.shape;
    QString table;
    if (cursor) {
        const auto m = singleTableSelect().match(shapeText);
        if (m.hasMatch()) {
            table = m.captured(2);
            if (table.startsWith('['))
                table = table.mid(1, table.size() - 2);
            const int at = static_cast<int>(m.capturedStart(1));
            shapeText = shapeText.left(at) + QStringLiteral("rowid AS __rowid, ") + shapeText.mid(at);
        }
    }
    const Translation t = Translate(shapeText, static_cast<int>(lifted.params.size()),
                                    [this](const QString& tbl) { return columnsOf(tbl); });
    PreparedShape shape;
    shape.dateParams = t.dateParams;
    shape.table = table;
    for (const QString& text : t.statements) {
        sqlite3_stmt* st = nullptr;
        const QByteArray utf8 = text.toUtf8();
        if (sqlite3_prepare_v2(db, utf8.constData(), static_cast<int>(utf8.size()), &st, nullptr) != SQLITE_OK) {
            if (!table.isEmpty()) {
                // The rowid could not be added (a view, a join written oddly): a read-only cursor.
                for (sqlite3_stmt* s : shape.stmts)
                    sqlite3_finalize(s);
                const Translation t2 = Translate(lifted.shape, static_cast<int>(lifted.params.size()));
                PreparedShape ro;
                ro.dateParams = t2.dateParams;
                for (const QString& text2 : t2.statements) {
                    sqlite3_stmt* st2 = nullptr;
                    const QByteArray u2 = text2.toUtf8();
                    if (sqlite3_prepare_v2(db, u2.constData(), static_cast<int>(u2.size()), &st2, nullptr) != SQLITE_OK) {
                        for (sqlite3_stmt* s : ro.stmts)
                            sqlite3_finalize(s);
                        fail(original);
                    }
                    ro.stmts.push_back(st2);
                }
                return *shapes.insert(key, ro);
            }
            for (sqlite3_stmt* s : shape.stmts)
                sqlite3_finalize(s);
            fail(original);
        }
        if (st)
            shape.stmts.push_back(st);
    }
    return *shapes.insert(key, shape);
}

namespace {
// Appends a text as UTF-8 to the bound-text buffer and binds it there without a copy.
int bindText(std::string& buffer, sqlite3_stmt* st, int index, QStringView text, bool copy)
{
    const std::size_t at = buffer.size();
    bool ascii = true;
    for (const QChar c : text) {
        if (c.unicode() >= 128) {
            ascii = false;
            break;
        }
    }
    if (ascii) {
        for (const QChar c : text)
            buffer.push_back(static_cast<char>(c.unicode()));
    } else {
        const QByteArray u = text.toUtf8();
        buffer.append(u.constData(), static_cast<std::size_t>(u.size()));
    }
    return sqlite3_bind_text(st, index, buffer.data() + at, static_cast<int>(buffer.size() - at),
                             copy ? SQLITE_TRANSIENT : SQLITE_STATIC);
}

// Room for every text of a statement, so that binding never moves the buffer.
std::size_t textRoom(const Lifted& lifted)
{
    std::size_t room = 0;
    for (const Literal& lit : lifted.params)
        if (lit.kind == Literal::Kind::Text)
            room += static_cast<std::size_t>(lit.text().size()) * 3 + 16;
    return room;
}
} // namespace

void Connection::bind(const PreparedShape& shape, const Lifted& lifted, const QString& original, bool copyTexts)
{
    boundText.clear();
    boundText.reserve(textRoom(lifted));
    int p = 0;
    for (sqlite3_stmt* st : shape.stmts) {
        sqlite3_reset(st);
        const int count = sqlite3_bind_parameter_count(st);
        for (int i = 1; i <= count; ++i, ++p) {
            if (p >= static_cast<int>(lifted.params.size()))
                throw DbError(QStringLiteral("Parametri insufficienti"), original);
            const Literal& lit = lifted.params[static_cast<std::size_t>(p)];
            int rc = SQLITE_OK;
            switch (lit.kind) {
            case Literal::Kind::Text: {
                if (shape.dateParams[static_cast<std::size_t>(p)])
                    rc = bindText(boundText, st, i, DateParamValue(lit.text()), copyTexts);
                else
                    rc = bindText(boundText, st, i, lit.text(), copyTexts);
                break;
            }
            case Literal::Kind::Integer:
                rc = sqlite3_bind_int64(st, i, lit.integer);
                break;
            case Literal::Kind::Real:
                rc = sqlite3_bind_double(st, i, lit.real);
                break;
            }
            if (rc != SQLITE_OK)
                fail(original);
        }
    }
}

void Connection::exec(const QString& sql)
{
    char* err = nullptr;
    if (sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &err) != SQLITE_OK) {
        const QString msg = QString::fromUtf8(err ? err : "errore");
        sqlite3_free(err);
        throw DbError(msg, sql);
    }
}

Database::Database() = default;
Database::~Database() = default;

namespace {
// Before the library's first use: no global memory statistics, whose mutex every
// allocation would otherwise take.
void configureOnce()
{
    static const bool done = [] {
        sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
        return true;
    }();
    (void)done;
}
} // namespace

void Database::Open(const QString& path)
{
    configureOnce();
    // The file held stays open until the new one has opened.
    auto conn = std::make_shared<Connection>();
    conn->path = path;
    const int rc = sqlite3_open_v2(path.toUtf8().constData(), &conn->db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (rc != SQLITE_OK) {
        const QString msg = conn->db ? QString::fromUtf8(sqlite3_errmsg(conn->db)) : QStringLiteral("out of memory");
        throw DbError(msg + QStringLiteral(": ") + path, QString(), rc);
    }
    sqlite3_extended_result_codes(conn->db, 1);
    // Reading the schema tells a database from any other file.
    conn->exec(QStringLiteral("SELECT count(*) FROM sqlite_master"));
    // Statement and savepoint journals in memory: a long transaction (the import) would
    // otherwise write every page it touches again and again to a temporary file.
    conn->exec(QStringLiteral("PRAGMA temp_store=MEMORY"));
    if (!sqlite3_db_readonly(conn->db, "main")) {
        try {
            conn->exec(QString::fromLatin1(kPragmas));
        } catch (const DbError&) {
            // A folder where the log can't live (read-only media): the classic journal still keeps each statement whole.
            conn->exec(QStringLiteral("PRAGMA journal_mode=DELETE; PRAGMA synchronous=FULL;"));
        }
    }
    conn_ = std::move(conn);
}

void Database::Close() { conn_.reset(); }

bool Database::IsOpen() const { return conn_ != nullptr; }

QString Database::Path() const { return conn_ ? conn_->path : QString(); }

long long Database::StatementsRun() const { return conn_ ? conn_->statementsRun : 0; }

void Database::Execute(const QString& sql)
{
    if (!conn_)
        throw DbError(QStringLiteral("Oggetto non valido o non impostato."), sql);
    const Lifted lifted = LiftLiterals(sql);
    PreparedShape& shape = conn_->prepare(lifted, false, sql);
    conn_->bind(shape, lifted, sql);
    const bool several = shape.stmts.size() > 1;
    std::unique_ptr<Transaction> group;
    if (several)
        group = std::make_unique<Transaction>(*this);
    for (sqlite3_stmt* st : shape.stmts)
        conn_->run(st, sql);
    if (group)
        group->Commit();
    if (isSchemaChange(sql))
        conn_->clearCache();
}

Recordset Database::OpenRecordset(const QString& sql) { return openRecordset(sql, false); }
Recordset Database::OpenRecordsetPlain(const QString& sql) { return openRecordset(sql, true); }

namespace {
// One row through the column getters, each of which checks the statement on its own.
void readRowPlain(sqlite3_stmt* st, int first, int n, const std::vector<bool>& isDate, RowStore& rows)
{
    for (int c = first; c < n; ++c) {
        switch (sqlite3_column_type(st, c)) {
        case SQLITE_INTEGER:
            rows.AddInteger(sqlite3_column_int64(st, c));
            break;
        case SQLITE_FLOAT:
            rows.AddReal(sqlite3_column_double(st, c));
            break;
        case SQLITE_TEXT:
            rows.AddText(reinterpret_cast<const char*>(sqlite3_column_text(st, c)), sqlite3_column_bytes(st, c),
                         isDate[static_cast<std::size_t>(c - first)]);
            break;
        case SQLITE_BLOB:
            rows.AddBlob(static_cast<const char*>(sqlite3_column_blob(st, c)), sqlite3_column_bytes(st, c));
            break;
        default:
            rows.AddNull();
        }
    }
}

// The same row, one getter call per cell: the value is read in place, on this thread, before
// the next step (the connection is opened without mutexes and used by one thread).
void readRow(sqlite3_stmt* st, int first, int n, const std::vector<bool>& isDate, RowStore& rows)
{
    for (int c = first; c < n; ++c) {
        sqlite3_value* v = sqlite3_column_value(st, c);
        switch (sqlite3_value_type(v)) {
        case SQLITE_INTEGER:
            rows.AddInteger(sqlite3_value_int64(v));
            break;
        case SQLITE_FLOAT:
            rows.AddReal(sqlite3_value_double(v));
            break;
        case SQLITE_TEXT: {
            const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(v));
            rows.AddText(text, sqlite3_value_bytes(v), isDate[static_cast<std::size_t>(c - first)]);
            break;
        }
        case SQLITE_BLOB: {
            const auto* blob = static_cast<const char*>(sqlite3_value_blob(v));
            rows.AddBlob(blob, sqlite3_value_bytes(v));
            break;
        }
        default:
            rows.AddNull();
        }
    }
}
} // namespace

Recordset Database::openRecordset(const QString& sql, bool plain)
{
    if (!conn_)
        throw DbError(QStringLiteral("Oggetto non valido o non impostato."), sql);
    const Lifted lifted = LiftLiterals(sql);
    PreparedShape& shape = conn_->prepare(lifted, true, sql);
    if (shape.stmts.size() != 1)
        throw DbError(QStringLiteral("Istruzione non valida per un recordset"), sql);
    conn_->bind(shape, lifted, sql);
    sqlite3_stmt* st = shape.stmts.front();

    Recordset rs;
    rs.conn_ = conn_;
    rs.statement_ = sql;
    rs.table_ = shape.table;
    const int first = shape.table.isEmpty() ? 0 : 1;
    const int n = sqlite3_column_count(st);
    if (!shape.names) {
        auto names = std::make_shared<std::vector<QString>>();
        auto reals = std::make_shared<std::vector<bool>>();
        for (int c = first; c < n; ++c) {
            names->push_back(QString::fromUtf8(sqlite3_column_name(st, c)));
            shape.dateColumns.push_back(IsDateColumn(names->back()));
            const char* decl = sqlite3_column_decltype(st, c);
            reals->push_back(decl && QByteArray(decl).toUpper() == "REAL");
        }
        shape.names = names;
        shape.realColumns = reals;
    }
    rs.columns_ = shape.names;
    rs.realColumns_ = shape.realColumns;
    const std::vector<bool>& isDate = shape.dateColumns;
    rs.rows_.SetColumns(n - first);
    // A little more than last time: a snapshot mostly grows by a row or two.
    const std::size_t cells = shape.lastCells + shape.lastCells / 8;
    rs.rows_.Reserve(cells, shape.lastTextBytes + shape.lastTextBytes / 8);
    if (first)
        rs.rowids_.reserve(cells / static_cast<std::size_t>(std::max(1, n - first)));
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
        if (first)
            rs.rowids_.push_back(sqlite3_column_int64(st, 0));
        if (plain)
            readRowPlain(st, first, n, isDate, rs.rows_);
        else
            readRow(st, first, n, isDate, rs.rows_);
        rs.rows_.EndRow();
    }
    shape.lastCells = rs.rows_.Cells();
    shape.lastTextBytes = rs.rows_.TextBytes();
    sqlite3_reset(st);
    if (rc != SQLITE_DONE)
        conn_->fail(sql);
    ++conn_->statementsRun;
    rs.pos_ = 0;
    return rs;
}

void Database::ExecuteScript(const QString& script)
{
    if (!conn_)
        throw DbError(QStringLiteral("Oggetto non valido o non impostato."), script.left(200));
    conn_->exec(script);
    conn_->clearCache();
}

void Database::Create(const QString& path, const QString& script)
{
    configureOnce();
    if (QFileInfo::exists(path))
        throw DbError(QStringLiteral("Il file esiste già"), path);
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) != SQLITE_OK) {
        const QString msg = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QStringLiteral("out of memory");
        sqlite3_close_v2(db);
        throw DbError(msg, path);
    }
    char* err = nullptr;
    const QByteArray all = (QStringLiteral("PRAGMA journal_mode=WAL; BEGIN; ") + script + QStringLiteral("\nCOMMIT;")).toUtf8();
    if (sqlite3_exec(db, all.constData(), nullptr, nullptr, &err) != SQLITE_OK) {
        const QString msg = QString::fromUtf8(err ? err : "errore");
        sqlite3_free(err);
        sqlite3_close_v2(db);
        QFile::remove(path);
        throw DbError(msg, path);
    }
    sqlite3_close_v2(db);
}

void Database::CopyFile(const QString& from, const QString& to)
{
    // Over itself the copy would remove the file before reading it.
    const QString source = QFileInfo(from).canonicalFilePath();
    if (!source.isEmpty() && source == QFileInfo(to).canonicalFilePath())
        throw DbError(QStringLiteral("Impossibile copiare un file su se stesso"), from + QStringLiteral(" -> ") + to);
    // A stale log beside the target would be replayed into the copy.
    QFile::remove(to + QStringLiteral("-wal"));
    QFile::remove(to + QStringLiteral("-shm"));
    if (QFileInfo::exists(to) && !QFile::remove(to))
        throw DbError(QStringLiteral("Impossibile sovrascrivere il file"), to);
    if (!QFile::copy(from, to))
        throw DbError(QStringLiteral("Impossibile copiare il file"), from + QStringLiteral(" -> ") + to);
    QFile::setPermissions(to, QFile::permissions(to) | QFileDevice::WriteOwner);
}

Transaction::Transaction(Database& db) : conn_(db.connection())
{
    if (!conn_)
        throw DbError(QStringLiteral("Oggetto non valido o non impostato."), QStringLiteral("SAVEPOINT"));
    name_ = QStringLiteral("q%1").arg(++conn_->savepoints);
    conn_->exec(QStringLiteral("SAVEPOINT ") + name_);
}

Transaction::~Transaction()
{
    if (!done_) {
        // The engine may already have rolled back on a hard error; nothing more to undo then.
        sqlite3_exec(conn_->db, ("ROLLBACK TO " + name_ + "; RELEASE " + name_).toUtf8().constData(), nullptr, nullptr, nullptr);
    }
    --conn_->savepoints;
}

void Transaction::Commit()
{
    conn_->exec(QStringLiteral("RELEASE ") + name_);
    done_ = true;
}

} // namespace store
