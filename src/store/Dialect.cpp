#include "store/Dialect.h"

#include "platform/Numbers.h"

#include <QRegularExpression>

#include <algorithm>
#include <charconv>

namespace store {

namespace {

bool isAsciiLetter(char16_t u) { return (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z'); }
bool isAsciiDigit(char16_t u) { return u >= '0' && u <= '9'; }
bool isIdentStart(QChar c)
{
    const char16_t u = c.unicode();
    return isAsciiLetter(u) || u == '_' || (u > 127 && c.isLetter());
}
bool isIdentChar(QChar c)
{
    const char16_t u = c.unicode();
    return isAsciiLetter(u) || isAsciiDigit(u) || u == '_' || u == '$' || (u > 127 && c.isLetterOrNumber());
}


// Splits at commas that are not inside brackets or quotes.
QStringList splitTopLevel(const QString& text)
{
    QStringList parts;
    int depth = 0;
    bool inQuote = false;
    int start = 0;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (inQuote) {
            if (c == '\'')
                inQuote = false;
        } else if (c == '\'') {
            inQuote = true;
        } else if (c == '(' || c == '[') {
            ++depth;
        } else if (c == ')' || c == ']') {
            --depth;
        } else if (c == ',' && depth == 0) {
            parts << text.mid(start, i - start);
            start = i + 1;
        }
    }
    parts << text.mid(start);
    return parts;
}

QString unbracket(QString name)
{
    name = name.trimmed();
    if (name.startsWith('[') && name.endsWith(']'))
        name = name.mid(1, name.size() - 2);
    return name;
}

int paramsBefore(const QString& shape, int pos)
{
    int n = 0;
    for (int i = 0; i < pos && i < shape.size(); ++i)
        if (shape[i] == '?')
            ++n;
    return n;
}

void markDates(const QString& shape, int valueStart, const QStringList& values, const QStringList& columns,
               std::vector<bool>& flags)
{
    int pos = valueStart;
    for (int i = 0; i < values.size(); ++i) {
        const QString& v = values[i];
        if (v.trimmed() == QLatin1String("?") && i < columns.size() && IsDateColumn(unbracket(columns[i]))) {
            const int index = paramsBefore(shape, pos + v.indexOf('?'));
            if (index < static_cast<int>(flags.size()))
                flags[static_cast<std::size_t>(index)] = true;
        }
        pos += static_cast<int>(v.size()) + 1;
    }
}

} // namespace

bool StartsWithWord(const QString& sql, QLatin1StringView word)
{
    qsizetype i = 0;
    while (i < sql.size() && sql[i].isSpace())
        ++i;
    if (sql.size() - i < word.size())
        return false;
    for (qsizetype k = 0; k < word.size(); ++k) {
        char16_t c = sql[i + k].unicode();
        if (c >= 'a' && c <= 'z')
            c = char16_t(c - 32);
        if (c != char16_t(word[k].unicode()))
            return false;
    }
    return i + word.size() == sql.size() || !isIdentChar(sql[i + word.size()]);
}

bool IsDateColumn(const QString& column)
{
    return column.compare(QLatin1String("Data"), Qt::CaseInsensitive) == 0;
}

QString DateParamValue(QStringView text)
{
    const QDate date = num::ParseShortDate(text);
    if (!date.isValid())
        return text.toString();
    int y = 0, m = 0, d = 0;
    date.getDate(&y, &m, &d);
    const char16_t iso[10] = {char16_t('0' + y / 1000), char16_t('0' + y / 100 % 10), char16_t('0' + y / 10 % 10),
                              char16_t('0' + y % 10), '-', char16_t('0' + m / 10), char16_t('0' + m % 10), '-',
                              char16_t('0' + d / 10), char16_t('0' + d % 10)};
    return QString(reinterpret_cast<const QChar*>(iso), 10);
}

Lifted LiftLiterals(const QString& sql)
{
    const bool liftable = StartsWithWord(sql, QLatin1StringView("SELECT")) || StartsWithWord(sql, QLatin1StringView("INSERT"))
        || StartsWithWord(sql, QLatin1StringView("UPDATE")) || StartsWithWord(sql, QLatin1StringView("DELETE"));
    if (!liftable)
        return {sql, {}, sql};

    Lifted out;
    out.source = sql;
    out.shape.reserve(sql.size());
    out.params.reserve(12);
    bool liftNumbers = true; // ORDER BY 2 and LIMIT must stay literal
    const int n = static_cast<int>(sql.size());
    const QChar* d = out.source.constData();
    int copied = 0; // text before this index is already in the shape
    auto flush = [&](int upTo) {
        out.shape.append(d + copied, upTo - copied);
    };
    int i = 0;
    while (i < n) {
        const QChar c = d[i];
        if (c == '\'') {
            int j = i + 1;
            bool closed = false;
            bool doubled = false;
            while (j < n) {
                if (d[j] == '\'') {
                    if (j + 1 < n && d[j + 1] == '\'') {
                        doubled = true;
                        j += 2;
                        continue;
                    }
                    closed = true;
                    break;
                }
                ++j;
            }
            if (!closed) // broken text: let the engine refuse it as written
                return {sql, {}, sql};
            Literal lit{Literal::Kind::Text, QStringView(d + i + 1, j - i - 1), {}};
            if (doubled)
                lit.unescaped = lit.view.toString().replace(QLatin1String("''"), QLatin1String("'"));
            flush(i);
            out.shape += '?';
            out.params.push_back(std::move(lit));
            i = j + 1;
            copied = i;
        } else if (c == '[' || c == '"' || c == '`') {
            const QChar close = c == '[' ? QChar(']') : c;
            const int j = static_cast<int>(sql.indexOf(close, i + 1));
            if (j < 0)
                return {sql, {}, sql};
            i = j + 1;
        } else if (isIdentStart(c)) {
            int j = i;
            while (j < n && isIdentChar(d[j]))
                ++j;
            if (j - i <= 5) {
                const QStringView word(d + i, j - i);
                if (word.compare(QLatin1String("BY"), Qt::CaseInsensitive) == 0
                    || word.compare(QLatin1String("LIMIT"), Qt::CaseInsensitive) == 0)
                    liftNumbers = false;
            }
            i = j;
        } else if (liftNumbers && (isAsciiDigit(c.unicode()) || (c == '.' && i + 1 < n && isAsciiDigit(d[i + 1].unicode())))) {
            int j = i;
            bool real = false;
            while (j < n && isAsciiDigit(d[j].unicode()))
                ++j;
            if (j < n && d[j] == '.') {
                real = true;
                ++j;
                while (j < n && isAsciiDigit(d[j].unicode()))
                    ++j;
            }
            if (j < n && (d[j] == 'e' || d[j] == 'E')) {
                int k = j + 1;
                if (k < n && (d[k] == '+' || d[k] == '-'))
                    ++k;
                if (k < n && isAsciiDigit(d[k].unicode())) {
                    real = true;
                    j = k;
                    while (j < n && isAsciiDigit(d[j].unicode()))
                        ++j;
                }
            }
            if (j < n && isIdentStart(d[j])) { // 1abc: not a number token
                i = j;
                continue;
            }
            Literal lit{Literal::Kind::Integer, QStringView(d + i, j - i), {}};
            char buf[64];
            const int len = std::min(j - i, static_cast<int>(sizeof buf));
            for (int k = 0; k < len; ++k)
                buf[k] = static_cast<char>(d[i + k].unicode());
            const auto parsed = real ? std::from_chars_result{buf, std::errc::invalid_argument}
                                     : std::from_chars(buf, buf + len, lit.integer);
            if (real || parsed.ec != std::errc()) {
                lit.kind = Literal::Kind::Real;
                std::from_chars(buf, buf + len, lit.real);
            }
            flush(i);
            out.shape += '?';
            out.params.push_back(std::move(lit));
            i = j;
            copied = i;
        } else {
            ++i;
        }
    }
    flush(n);
    return out;
}

Translation Translate(const QString& shape, int paramCount, const ColumnsOf& columnsOf)
{
    Translation t;
    t.dateParams.assign(static_cast<std::size_t>(paramCount), false);
    const auto ci = QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption;

    static const QRegularExpression deleteStar(QStringLiteral("^(\\s*DELETE)\\s+\\*\\s+(FROM\\b)"), ci);
    static const QRegularExpression dropTables(QStringLiteral("^\\s*DROP\\s+TABLE\\s+(.+?)\\s*;?\\s*$"), ci);
    static const QRegularExpression insertValues(
        QStringLiteral("^\\s*INSERT\\s+INTO\\s+(\\[[^\\]]+\\]|\\w+)\\s*(?:\\(([^)]*)\\))?\\s*VALUES\\s*\\((.*)\\)\\s*;?\\s*$"), ci);
    static const QRegularExpression updateSet(QStringLiteral("^\\s*UPDATE\\s+(\\[[^\\]]+\\]|\\w+)\\s+SET\\b(.*?)(\\bWHERE\\b.*)?$"), ci);
    static const QRegularExpression orderedSelect(
        QStringLiteral("^\\s*SELECT\\s+(?!DISTINCT\\b)([^()]*?)\\s+FROM\\s+(\\[[^\\]]+\\]|\\w+)\\s*(?:WHERE\\b(?:(?!\\bGROUP\\b|\\bJOIN\\b).)*?)?\\bORDER\\s+BY\\b(?:(?!\\bLIMIT\\b|\\browid\\b).)*$"), ci);

    QString sql = shape;
    if (auto m = deleteStar.match(sql); m.hasMatch()) {
        sql = m.captured(1) + ' ' + sql.mid(m.capturedStart(2));
        t.statements << sql;
        return t;
    }
    if (auto m = dropTables.match(sql); m.hasMatch()) {
        for (const QString& table : splitTopLevel(m.captured(1)))
            t.statements << QStringLiteral("DROP TABLE ") + table.trimmed();
        return t;
    }
    if (auto m = insertValues.match(sql); m.hasMatch()) {
        QStringList columns;
        if (m.capturedStart(2) >= 0)
            columns = splitTopLevel(m.captured(2));
        else if (columnsOf)
            columns = columnsOf(unbracket(m.captured(1)));
        markDates(sql, static_cast<int>(m.capturedStart(3)), splitTopLevel(m.captured(3)), columns, t.dateParams);
    } else if (auto m = updateSet.match(sql); m.hasMatch()) {
        const QStringList assignments = splitTopLevel(m.captured(2));
        int pos = static_cast<int>(m.capturedStart(2));
        for (const QString& a : assignments) {
            const int eq = a.indexOf('=');
            if (eq > 0 && a.mid(eq + 1).trimmed() == QLatin1String("?") && IsDateColumn(unbracket(a.left(eq)))) {
                const int index = paramsBefore(sql, pos + static_cast<int>(a.indexOf('?', eq)));
                if (index < paramCount)
                    t.dateParams[static_cast<std::size_t>(index)] = true;
            }
            pos += static_cast<int>(a.size()) + 1;
        }
    } else if (orderedSelect.match(sql).hasMatch() && !sql.contains(QLatin1String("GROUP"), Qt::CaseInsensitive)) {
        // Rows of equal sort key come in record order, as the original engine gave them.
        QString trimmed = sql.trimmed();
        if (trimmed.endsWith(';'))
            trimmed.chop(1);
        sql = trimmed + QStringLiteral(", rowid");
    }
    t.statements << sql;
    return t;
}

QStringList ToSqlite(const QString& sql, const ColumnsOf& columnsOf)
{
    const Lifted lifted = LiftLiterals(sql);
    const Translation t = Translate(lifted.shape, static_cast<int>(lifted.params.size()), columnsOf);
    if (lifted.params.empty())
        return t.statements;
    QStringList out;
    std::size_t p = 0;
    for (const QString& stmt : t.statements) {
        QString s;
        for (QChar c : stmt) {
            if (c == '?' && p < lifted.params.size()) {
                const Literal& lit = lifted.params[p];
                if (lit.kind == Literal::Kind::Text) {
                    QString v = t.dateParams[p] ? DateParamValue(lit.text()) : lit.text().toString();
                    v.replace('\'', QLatin1String("''"));
                    s += '\'' + v + '\'';
                } else {
                    s += lit.view;
                }
                ++p;
            } else {
                s += c;
            }
        }
        out << s;
    }
    return out;
}

} // namespace store
