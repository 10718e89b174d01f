#include "store/Recordset.h"

#include "platform/Numbers.h"
#include "store/Connection.h"
#include "store/DbError.h"

#include <QRegularExpression>

namespace store {

namespace {

const QString kNoCurrent = QStringLiteral("Nessun record corrente.");

int compareValues(const QVariant& a, const QVariant& b)
{
    const bool aNum = a.typeId() == QMetaType::Double || a.typeId() == QMetaType::LongLong;
    const bool bNum = b.typeId() == QMetaType::Double || b.typeId() == QMetaType::LongLong;
    if (aNum && bNum) {
        const double x = a.toDouble(), y = b.toDouble();
        return x < y ? -1 : (x > y ? 1 : 0);
    }
    if (a.typeId() == QMetaType::QDate && b.typeId() == QMetaType::QDate)
        return a.toDate() < b.toDate() ? -1 : (a.toDate() > b.toDate() ? 1 : 0);
    return QString::compare(num::Text(a), num::Text(b), Qt::CaseInsensitive);
}

} // namespace

QVariant RowStore::Value(int row, int column) const
{
    const Cell& c = cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column)];
    switch (c.kind) {
    case Integer: return static_cast<qlonglong>(c.integer);
    case Real: return c.real;
    case Text: return QString::fromUtf8(text_.data() + c.integer, static_cast<qsizetype>(c.bytes));
    case Date: {
        const QString t = QString::fromLatin1(text_.data() + c.integer, static_cast<qsizetype>(c.bytes));
        const QDate d = QDate::fromString(t, Qt::ISODate);
        return d.isValid() ? QVariant(d) : QVariant(t);
    }
    case Blob: return QByteArray(text_.data() + c.integer, static_cast<qsizetype>(c.bytes));
    default: return {};
    }
}

bool RowStore::Number(int row, int column, double* out) const
{
    const Cell& c = cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column)];
    if (c.kind == Real)
        *out = c.real;
    else if (c.kind == Integer)
        *out = static_cast<double>(c.integer);
    else if (c.kind == Null)
        *out = 0.0;
    else
        return false;
    return true;
}

bool RowStore::PlainText(int row, int column, QString* out) const
{
    const Cell& c = cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(column)];
    if (c.kind == Text)
        *out = QString::fromUtf8(text_.data() + c.integer, static_cast<qsizetype>(c.bytes));
    else if (c.kind == Null)
        out->clear();
    else
        return false;
    return true;
}

std::vector<QVariant> RowStore::Row(int row) const
{
    std::vector<QVariant> values;
    values.reserve(static_cast<std::size_t>(columns_));
    for (int c = 0; c < columns_; ++c)
        values.push_back(Value(row, c));
    return values;
}

void RowStore::encode(Cell& cell, const QVariant& v)
{
    cell = Cell{};
    if (!v.isValid() || v.isNull())
        return;
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
        cell.kind = Integer;
        cell.integer = v.toLongLong();
        return;
    case QMetaType::Double:
    case QMetaType::Float:
        cell.kind = Real;
        cell.real = v.toDouble();
        return;
    case QMetaType::QByteArray: {
        const QByteArray b = v.toByteArray();
        cell.kind = Blob;
        cell.integer = static_cast<qint64>(text_.size());
        cell.bytes = static_cast<quint32>(b.size());
        text_.append(b.constData(), static_cast<std::size_t>(b.size()));
        return;
    }
    default: {
        const bool date = v.typeId() == QMetaType::QDate;
        const QByteArray b = date ? v.toDate().toString(Qt::ISODate).toLatin1() : v.toString().toUtf8();
        cell.kind = date ? Date : Text;
        cell.integer = static_cast<qint64>(text_.size());
        cell.bytes = static_cast<quint32>(b.size());
        text_.append(b.constData(), static_cast<std::size_t>(b.size()));
    }
    }
}

void RowStore::SetRow(int row, const std::vector<QVariant>& values)
{
    for (int c = 0; c < columns_; ++c)
        encode(cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(c)],
               values[static_cast<std::size_t>(c)]);
}

void RowStore::Erase(int row)
{
    if (columns_ == 0) {
        --rows_;
        return;
    }
    const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(row) * columns_;
    cells_.erase(first, first + columns_);
}

void RowStore::Reserve(std::size_t cells, std::size_t textBytes)
{
    cells_.reserve(cells);
    text_.reserve(textBytes);
}

void RowStore::AddNull() { cells_.emplace_back(); }

void RowStore::AddInteger(qint64 v)
{
    Cell& c = cells_.emplace_back();
    c.kind = Integer;
    c.integer = v;
}

void RowStore::AddReal(double v)
{
    Cell& c = cells_.emplace_back();
    c.kind = Real;
    c.real = v;
}

void RowStore::AddText(const char* utf8, int bytes, bool date)
{
    Cell& c = cells_.emplace_back();
    c.kind = date ? Date : Text;
    c.integer = static_cast<qint64>(text_.size());
    c.bytes = static_cast<quint32>(bytes);
    if (bytes > 0)
        text_.append(utf8, static_cast<std::size_t>(bytes));
}

void RowStore::AddBlob(const char* data, int bytes)
{
    Cell& c = cells_.emplace_back();
    c.kind = Blob;
    c.integer = static_cast<qint64>(text_.size());
    c.bytes = static_cast<quint32>(bytes);
    if (bytes > 0)
        text_.append(data, static_cast<std::size_t>(bytes));
}

bool Recordset::Eof() const { return rows_.Empty() || pos_ >= rows_.Size(); }
bool Recordset::Bof() const { return rows_.Empty() || pos_ < 0; }

void Recordset::MoveFirst()
{
    if (rows_.Empty())
        throw DbError(kNoCurrent, statement_);
    pos_ = 0;
    afterDelete_ = false;
}

void Recordset::MoveLast()
{
    if (rows_.Empty())
        throw DbError(kNoCurrent, statement_);
    pos_ = rows_.Size() - 1;
    afterDelete_ = false;
}

void Recordset::MoveNext()
{
    if (afterDelete_) { // the next row has already slid into place
        afterDelete_ = false;
        return;
    }
    if (Eof())
        throw DbError(kNoCurrent, statement_);
    ++pos_;
}

void Recordset::MovePrevious()
{
    afterDelete_ = false;
    if (Bof())
        throw DbError(kNoCurrent, statement_);
    --pos_;
}

void Recordset::Move(int offset)
{
    if (rows_.Empty())
        throw DbError(kNoCurrent, statement_);
    if (afterDelete_ && offset > 0)
        --offset;
    afterDelete_ = false;
    const long long target = static_cast<long long>(pos_) + offset;
    if (target < -1 || target > static_cast<long long>(rows_.Size()))
        throw DbError(kNoCurrent, statement_);
    pos_ = static_cast<int>(target);
}

int Recordset::AbsolutePosition() const
{
    if (afterDelete_ || Eof() || Bof())
        return -1;
    return pos_;
}

void Recordset::SetAbsolutePosition(int position)
{
    if (position < 0 || position >= rows_.Size())
        throw DbError(QStringLiteral("Argomento non valido."), statement_);
    pos_ = position;
    afterDelete_ = false;
}

bool Recordset::FindFirst(const QString& criteria)
{
    static const QRegularExpression re(QStringLiteral("^\\s*\\[?(\\w+)\\]?\\s*(<>|<=|>=|=|<|>)\\s*(.+?)\\s*$"));
    const auto m = re.match(criteria);
    if (!m.hasMatch())
        throw DbError(QStringLiteral("Criterio non valido"), criteria);
    const int col = column(m.captured(1));
    const QString op = m.captured(2);
    QString raw = m.captured(3);
    QVariant target;
    if (raw.size() >= 2 && (raw.startsWith('\'') || raw.startsWith('#')) && raw.endsWith(raw[0])) {
        raw = raw.mid(1, raw.size() - 2);
        const QDate d = num::ParseShortDate(raw);
        target = d.isValid() ? QVariant(d) : QVariant(raw);
    } else {
        bool ok = false;
        const double v = raw.toDouble(&ok);
        if (!ok)
            throw DbError(QStringLiteral("Criterio non valido"), criteria);
        target = v;
    }
    for (int i = 0; i < rows_.Size(); ++i) {
        const QVariant value = rows_.Value(i, col);
        if (value.isNull())
            continue;
        const int c = compareValues(value, target);
        const bool hit = (op == QLatin1String("=") && c == 0) || (op == QLatin1String("<>") && c != 0)
            || (op == QLatin1String("<") && c < 0) || (op == QLatin1String(">") && c > 0)
            || (op == QLatin1String("<=") && c <= 0) || (op == QLatin1String(">=") && c >= 0);
        if (hit) {
            pos_ = i;
            afterDelete_ = false;
            noMatch_ = false;
            return true;
        }
    }
    noMatch_ = true;
    pos_ = -1; // no current row after a failed search
    afterDelete_ = false;
    return false;
}

QString Recordset::FieldName(int index) const
{
    if (!columns_ || index < 0 || index >= FieldCount())
        throw DbError(QStringLiteral("Elemento non trovato in questo insieme."), statement_);
    return (*columns_)[static_cast<std::size_t>(index)];
}

bool Recordset::HasField(const QString& name) const
{
    if (!columns_)
        return false;
    for (const QString& c : *columns_)
        if (c.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

namespace {
// Field names are plain ASCII; this is hit for every field read.
bool sameName(const QString& a, const QString& b)
{
    if (a.size() != b.size())
        return false;
    const QChar* x = a.constData();
    const QChar* y = b.constData();
    for (qsizetype i = 0; i < a.size(); ++i) {
        char16_t p = x[i].unicode(), q = y[i].unicode();
        if (p == q)
            continue;
        if (p < 128 && q < 128) {
            if (p >= 'A' && p <= 'Z')
                p = char16_t(p + 32);
            if (q >= 'A' && q <= 'Z')
                q = char16_t(q + 32);
            if (p == q)
                continue;
            return false;
        }
        if (QChar(p).toCaseFolded() != QChar(q).toCaseFolded())
            return false;
    }
    return true;
}
} // namespace

int Recordset::column(const QString& name) const
{
    if (columns_) {
        for (std::size_t i = 0; i < columns_->size(); ++i)
            if (sameName((*columns_)[i], name))
                return static_cast<int>(i);
    }
    throw DbError(QStringLiteral("Elemento non trovato in questo insieme: ") + name, statement_);
}

void Recordset::requireCurrent() const
{
    if (afterDelete_ || Eof() || Bof())
        throw DbError(kNoCurrent, statement_);
}

QVariant Recordset::current(int column) const
{
    requireCurrent();
    return rows_.Value(pos_, column);
}

QVariant Recordset::Field(const QString& name) const
{
    const int c = column(name);
    if (editing_)
        return buffer_[static_cast<std::size_t>(c)];
    return current(c);
}

QVariant Recordset::Field(int index) const
{
    FieldName(index);
    return current(index);
}

QVariant Recordset::ValueAt(int row, int column) const
{
    if (row < 0 || row >= RecordCount() || column < 0 || column >= FieldCount())
        return {};
    return rows_.Value(row, column);
}

QString Recordset::Text(const QString& name) const
{
    if (!editing_) {
        const int c = column(name);
        requireCurrent();
        QString text;
        if (rows_.PlainText(pos_, c, &text))
            return text;
    }
    return num::Text(Field(name));
}

double Recordset::Number(const QString& name) const
{
    if (!editing_) {
        const int c = column(name);
        requireCurrent();
        double d = 0;
        if (rows_.Number(pos_, c, &d))
            return d;
    }
    const QVariant v = Field(name);
    if (v.isNull())
        return 0.0;
    bool ok = false;
    const double d = v.toDouble(&ok);
    if (!ok)
        throw DbError(QStringLiteral("Tipi non corrispondenti: ") + name, statement_);
    return d;
}

void Recordset::Edit()
{
    if (!Updatable())
        throw DbError(QStringLiteral("Impossibile aggiornare. Database o oggetto di sola lettura."), statement_);
    requireCurrent();
    buffer_ = rows_.Row(pos_);
    dirty_.assign(buffer_.size(), false);
    editing_ = true;
}

void Recordset::SetField(const QString& name, const QVariant& value)
{
    if (!editing_)
        throw DbError(QStringLiteral("Aggiornamento o CancelUpdate senza AddNew o Edit."), statement_);
    const auto c = static_cast<std::size_t>(column(name));
    buffer_[c] = value;
    dirty_[c] = true;
}

void Recordset::CancelUpdate()
{
    editing_ = false;
    buffer_.clear();
    dirty_.clear();
}

void Recordset::Update()
{
    if (!editing_)
        throw DbError(QStringLiteral("Aggiornamento o CancelUpdate senza AddNew o Edit."), statement_);
    auto conn = conn_.lock();
    if (!conn)
        throw DbError(QStringLiteral("Oggetto non valido o non impostato."), statement_);
    QStringList sets;
    std::vector<std::size_t> changed;
    for (std::size_t i = 0; i < dirty_.size(); ++i) {
        if (dirty_[i]) {
            sets << QStringLiteral("\"%1\" = ?").arg((*columns_)[i]);
            changed.push_back(i);
        }
    }
    if (!changed.empty()) {
        const QString sql = QStringLiteral("UPDATE \"%1\" SET %2 WHERE rowid = ?").arg(table_, sets.join(", "));
        sqlite3_stmt* st = nullptr;
        const QByteArray u = sql.toUtf8();
        if (sqlite3_prepare_v2(conn->db, u.constData(), -1, &st, nullptr) != SQLITE_OK)
            conn->fail(sql);
        int p = 1;
        for (std::size_t i : changed) {
            const QVariant& v = buffer_[i];
            if (v.isNull() || !v.isValid()) {
                sqlite3_bind_null(st, p);
            } else if (v.typeId() == QMetaType::QDate) {
                const QByteArray t = v.toDate().toString(Qt::ISODate).toUtf8();
                sqlite3_bind_text(st, p, t.constData(), static_cast<int>(t.size()), SQLITE_TRANSIENT);
            } else if (v.typeId() == QMetaType::Double || v.typeId() == QMetaType::Float) {
                sqlite3_bind_double(st, p, v.toDouble());
            } else if (v.typeId() == QMetaType::Int || v.typeId() == QMetaType::LongLong) {
                sqlite3_bind_int64(st, p, v.toLongLong());
            } else if (IsDateColumn((*columns_)[i]) && num::ParseShortDate(v.toString()).isValid()) {
                // A date typed into a grid, in the short form it shows.
                const QByteArray t = DateParamValue(v.toString()).toUtf8();
                sqlite3_bind_text(st, p, t.constData(), static_cast<int>(t.size()), SQLITE_TRANSIENT);
            } else if (realColumns_ && (*realColumns_)[i] && num::Parse(v.toString())) {
                // A typed number with its decimal comma, as the cursor converts it.
                sqlite3_bind_double(st, p, *num::Parse(v.toString()));
            } else {
                const QByteArray t = v.toString().toUtf8();
                sqlite3_bind_text(st, p, t.constData(), static_cast<int>(t.size()), SQLITE_TRANSIENT);
            }
            ++p;
        }
        sqlite3_bind_int64(st, p, rowids_[static_cast<std::size_t>(pos_)]);
        const int rc = sqlite3_step(st);
        sqlite3_finalize(st);
        if (rc != SQLITE_DONE)
            conn->fail(sql);
        ++conn->statementsRun;
    }
    rows_.SetRow(pos_, buffer_);
    CancelUpdate();
}

void Recordset::Delete()
{
    if (!Updatable())
        throw DbError(QStringLiteral("Impossibile aggiornare. Database o oggetto di sola lettura."), statement_);
    requireCurrent();
    auto conn = conn_.lock();
    if (!conn)
        throw DbError(QStringLiteral("Oggetto non valido o non impostato."), statement_);
    const QString sql = QStringLiteral("DELETE FROM \"%1\" WHERE rowid = ?").arg(table_);
    sqlite3_stmt* st = nullptr;
    if (sqlite3_prepare_v2(conn->db, sql.toUtf8().constData(), -1, &st, nullptr) != SQLITE_OK)
        conn->fail(sql);
    sqlite3_bind_int64(st, 1, rowids_[static_cast<std::size_t>(pos_)]);
    const int rc = sqlite3_step(st);
    sqlite3_finalize(st);
    if (rc != SQLITE_DONE)
        conn->fail(sql);
    ++conn->statementsRun;
    rows_.Erase(pos_);
    rowids_.erase(rowids_.begin() + pos_);
    afterDelete_ = true;
}

} // namespace store
