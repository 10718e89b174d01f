#include "platform/Workbook.h"

#include "platform/Failure.h"
#include "platform/Numbers.h"

#include <QDateTime>
#include <QFile>
#include <QXmlStreamReader>

#include <unzip.h>

#include <cmath>
#include <optional>

namespace platform {

namespace {

// Parts read whole (relations, workbook, styles) are small; anything larger is no workbook of ours.
constexpr qint64 kMaxPart = 32 << 20;
// A sheet is streamed and left as soon as the cell is passed; this bounds a hostile one.
constexpr qint64 kMaxStream = 256 << 20;
// The most shared texts kept in memory, for the same reason.
constexpr qsizetype kMaxSharedStrings = 2'000'000;

[[noreturn]] void fail(const QString& path, const QString& why)
{
    throw Failure(QString("La cartella di lavoro " + path + " non si può leggere: " + why).toStdString());
}

// "A2" -> column 1, row 2; false for anything else.
bool cellName(QStringView name, int* column, int* row)
{
    int c = 0, r = 0, i = 0;
    for (; i < name.size() && name[i].isLetter() && name[i].unicode() < 128; ++i) {
        c = c * 26 + (name[i].toUpper().unicode() - 'A' + 1);
        if (c > 16384)
            return false;
    }
    if (i == 0)
        return false;
    const int firstDigit = i;
    for (; i < name.size() && name[i] >= u'0' && name[i] <= u'9'; ++i) {
        r = r * 10 + (name[i].unicode() - '0');
        if (r > 1048576)
            return false;
    }
    if (i == firstDigit || i != name.size() || r == 0)
        return false;
    *column = c;
    *row = r;
    return true;
}

// The part a relation points at, from the folder of the part that holds the relation
// (the package's root for an empty part).
QString resolve(const QString& fromPart, const QString& target)
{
    if (target.startsWith('/'))
        return target.mid(1);
    QStringList parts = fromPart.split('/');
    parts.removeLast();
    for (const QString& p : target.split('/')) {
        if (p == QLatin1String(".."))
            parts.isEmpty() ? void() : parts.removeLast();
        else if (p != QLatin1String(".") && !p.isEmpty())
            parts << p;
    }
    return parts.join('/');
}

QString relsOf(const QString& part)
{
    const qsizetype slash = part.lastIndexOf('/');
    return part.left(slash + 1) + QStringLiteral("_rels/") + part.mid(slash + 1) + QStringLiteral(".rels");
}

// The relationship id attribute, whichever namespace flavour the file uses.
QString relationId(const QXmlStreamAttributes& attributes)
{
    for (const QXmlStreamAttribute& a : attributes)
        if (a.name() == QLatin1String("id") && !a.namespaceUri().isEmpty())
            return a.value().toString();
    return {};
}

bool isTrue(QStringView v) { return v == QLatin1String("1") || v == QLatin1String("true"); }

// Number formats that show a date or a time: the built-in ones and codes with date letters.
bool dateFormat(int id, const QString& code)
{
    if ((id >= 14 && id <= 22) || (id >= 27 && id <= 36) || (id >= 45 && id <= 47) || (id >= 50 && id <= 58))
        return true;
    if (code.isEmpty())
        return false;
    bool quoted = false, bracket = false;
    for (qsizetype i = 0; i < code.size(); ++i) {
        const QChar c = code[i];
        if (quoted) {
            quoted = c != u'"';
        } else if (c == u'"') {
            quoted = true;
        } else if (c == u'\\' || c == u'_' || c == u'*') {
            ++i; // the next character is literal
        } else if (bracket) {
            bracket = c != u']';
        } else if (c == u'[') {
            bracket = true;
        } else if (QStringLiteral("dmyhsDMYHS").contains(c)) {
            return true;
        }
    }
    return false;
}

QVariant fromSerial(double serial, bool date1904)
{
    if (serial < 0 || serial > 2958465.99999)
        return serial;
    double whole = std::floor(serial);
    QDate base = date1904 ? QDate(1904, 1, 1) : QDate(1899, 12, 30);
    // The 1900 system counts a 29 February 1900 that never was.
    if (!date1904 && whole < 61)
        base = QDate(1899, 12, 31);
    const QDate day = base.addDays(static_cast<qint64>(whole));
    const qint64 ms = std::llround((serial - whole) * 86400000.0);
    if (ms == 0)
        return day;
    return QDateTime(day, QTime(0, 0).addMSecs(static_cast<int>(std::min<qint64>(ms, 86399999))));
}

} // namespace

struct WorkbookZip {
    unzFile file = nullptr;
    QString path;
    ~WorkbookZip()
    {
        if (file)
            unzClose(file);
    }

    bool open(const QString& part)
    {
        const QByteArray name = part.toUtf8();
        if (unzLocateFile(file, name.constData(), 2) != UNZ_OK)
            return false;
        if (unzOpenCurrentFile(file) != UNZ_OK)
            fail(path, QStringLiteral("parte illeggibile ") + part);
        return true;
    }
    // The next bytes of the open part; empty at its end.
    QByteArray chunk(const QString& part)
    {
        QByteArray buf(64 * 1024, Qt::Uninitialized);
        const int n = unzReadCurrentFile(file, buf.data(), static_cast<unsigned>(buf.size()));
        if (n < 0)
            fail(path, QStringLiteral("parte danneggiata ") + part);
        buf.truncate(n);
        return buf;
    }
    void close(const QString& part)
    {
        if (unzCloseCurrentFile(file) == UNZ_CRCERROR)
            fail(path, QStringLiteral("parte danneggiata ") + part);
    }
    std::optional<QByteArray> read(const QString& part)
    {
        if (!open(part))
            return std::nullopt;
        QByteArray all;
        for (QByteArray b = chunk(part); !b.isEmpty(); b = chunk(part)) {
            all += b;
            if (all.size() > kMaxPart)
                fail(path, QStringLiteral("parte troppo grande ") + part);
        }
        close(part);
        return all;
    }
};

namespace {

// Pulls the tokens of one part, feeding the reader as it runs dry.
class PartStream {
public:
    PartStream(WorkbookZip& zip, const QString& part) : zip_(zip), part_(part)
    {
        if (!zip_.open(part))
            fail(zip_.path, QStringLiteral("manca la parte ") + part);
        open_ = true;
    }
    ~PartStream()
    {
        if (open_)
            unzCloseCurrentFile(zip_.file);
    }
    // False at the end of the document.
    bool next()
    {
        for (;;) {
            const QXmlStreamReader::TokenType t = xml.readNext();
            if (xml.error() == QXmlStreamReader::PrematureEndOfDocumentError) {
                if (ended_)
                    return false;
                const QByteArray b = zip_.chunk(part_);
                fed_ += b.size();
                if (fed_ > kMaxStream)
                    fail(zip_.path, QStringLiteral("parte troppo grande ") + part_);
                if (b.isEmpty())
                    ended_ = true;
                else
                    xml.addData(b);
                continue;
            }
            if (xml.hasError())
                fail(zip_.path, xml.errorString());
            return t != QXmlStreamReader::EndDocument;
        }
    }
    // Text of the current element up to its end: its own text for a value, the text
    // runs (<t>) for a string, phonetic runs left out.
    QString text()
    {
        const bool runs = xml.name() != QLatin1String("v");
        QString out;
        int depth = 1, phonetic = 0, inRun = 0;
        while (depth > 0 && next()) {
            if (xml.isStartElement()) {
                ++depth;
                phonetic += xml.name() == QLatin1String("rPh");
                inRun += xml.name() == QLatin1String("t");
            } else if (xml.isEndElement()) {
                --depth;
                phonetic -= xml.name() == QLatin1String("rPh");
                inRun -= xml.name() == QLatin1String("t");
            } else if (xml.isCharacters() && phonetic == 0 && (!runs || inRun > 0)) {
                out += xml.text();
            }
        }
        return out;
    }

    QXmlStreamReader xml;

private:
    WorkbookZip& zip_;
    QString part_;
    qint64 fed_ = 0;
    bool open_ = false;
    bool ended_ = false;
};

// The relations of a part: id -> target part, and type suffix -> target part.
struct Relations {
    QHash<QString, QString> byId;
    QHash<QString, QString> byType;
};

Relations relations(WorkbookZip& zip, const QString& part)
{
    Relations out;
    const std::optional<QByteArray> bytes = zip.read(part.isEmpty() ? QStringLiteral("_rels/.rels") : relsOf(part));
    if (!bytes)
        return out;
    QXmlStreamReader xml(*bytes);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement() || xml.name() != QLatin1String("Relationship"))
            continue;
        const QXmlStreamAttributes a = xml.attributes();
        if (a.value(QLatin1String("TargetMode")) == QLatin1String("External"))
            continue;
        const QString target = resolve(part, a.value(QLatin1String("Target")).toString());
        out.byId.insert(a.value(QLatin1String("Id")).toString(), target);
        const QString type = a.value(QLatin1String("Type")).toString();
        out.byType.insert(type.mid(type.lastIndexOf('/') + 1), target);
    }
    if (xml.hasError())
        fail(zip.path, xml.errorString());
    return out;
}

// The text of the cell element the stream stands on (its <v>, or the runs of its
// inline <is>), read to the cell's end; nullopt for a cell without a value.
std::optional<QString> rawValue(PartStream& s)
{
    std::optional<QString> value;
    for (int depth = 1; depth > 0 && s.next();) {
        if (s.xml.isStartElement()) {
            if (s.xml.name() == QLatin1String("v") || s.xml.name() == QLatin1String("is"))
                value = s.text();
            else
                ++depth;
        } else if (s.xml.isEndElement()) {
            --depth;
        }
    }
    return value;
}

} // namespace

Workbook::Workbook(const QString& path) : zip_(std::make_unique<WorkbookZip>()), path_(path)
{
    zip_->path = path;
    zip_->file = unzOpen64(QFile::encodeName(path).constData());
    if (!zip_->file)
        fail(path, QStringLiteral("non è un file .xlsx"));

    const QString workbookPart = relations(*zip_, QString()).byType.value(QStringLiteral("officeDocument"), QStringLiteral("xl/workbook.xml"));
    const std::optional<QByteArray> workbook = zip_->read(workbookPart);
    if (!workbook)
        fail(path, QStringLiteral("manca la parte ") + workbookPart);

    int activeTab = 0;
    QStringList sheetIds, sheetNames;
    QXmlStreamReader xml(*workbook);
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement())
            continue;
        const QXmlStreamAttributes a = xml.attributes();
        if (xml.name() == QLatin1String("workbookPr"))
            date1904_ = isTrue(a.value(QLatin1String("date1904")));
        else if (xml.name() == QLatin1String("workbookView") && a.hasAttribute(QLatin1String("activeTab")))
            activeTab = a.value(QLatin1String("activeTab")).toInt();
        else if (xml.name() == QLatin1String("sheet")) {
            sheetIds << relationId(a);
            sheetNames << a.value(QLatin1String("name")).toString();
        }
    }
    if (xml.hasError())
        fail(path, xml.errorString());
    if (sheetIds.isEmpty())
        fail(path, QStringLiteral("nessun foglio"));
    if (activeTab < 0 || activeTab >= sheetIds.size())
        activeTab = 0;

    const Relations rels = relations(*zip_, workbookPart);
    for (const QString& id : sheetIds)
        sheetParts_ << rels.byId.value(id);
    sheetNames_ = sheetNames;
    sheetPart_ = sheetParts_[activeTab];
    if (sheetPart_.isEmpty())
        fail(path, QStringLiteral("foglio attivo senza parte"));
    activeName_ = sheetNames[activeTab];
    sharedStringsPart_ = rels.byType.value(QStringLiteral("sharedStrings"));

    const QString stylesPart = rels.byType.value(QStringLiteral("styles"));
    if (stylesPart.isEmpty())
        return;
    const std::optional<QByteArray> styles = zip_->read(stylesPart);
    if (!styles)
        return;
    QHash<int, QString> codes;
    QXmlStreamReader st(*styles);
    bool inCellXfs = false;
    while (!st.atEnd()) {
        st.readNext();
        if (st.isEndElement() && st.name() == QLatin1String("cellXfs"))
            inCellXfs = false;
        if (!st.isStartElement())
            continue;
        const QXmlStreamAttributes a = st.attributes();
        if (st.name() == QLatin1String("numFmt"))
            codes.insert(a.value(QLatin1String("numFmtId")).toInt(), a.value(QLatin1String("formatCode")).toString());
        else if (st.name() == QLatin1String("cellXfs"))
            inCellXfs = true;
        else if (inCellXfs && st.name() == QLatin1String("xf")) {
            const int id = a.value(QLatin1String("numFmtId")).toInt();
            dateStyles_.push_back(dateFormat(id, codes.value(id)));
        }
    }
    if (st.hasError())
        fail(path, st.errorString());
}

Workbook::~Workbook() = default;

void Workbook::SetCell(const QString& name, const QVariant& value)
{
    int column = 0, row = 0;
    if (!cellName(name, &column, &row))
        throw Failure(QString("Riferimento di cella non valido: " + name).toStdString());
    written_.insert(name.toUpper(), value);
}

QVariant Workbook::Cell(const QString& name)
{
    int column = 0, row = 0;
    if (!cellName(name, &column, &row))
        throw Failure(QString("Riferimento di cella non valido: " + name).toStdString());
    if (auto it = written_.constFind(name.toUpper()); it != written_.constEnd())
        return *it;

    QVariant found;
    loadSharedStrings();
    cells(sheetPart_, row, [&](int r, int c, const QString& type, int style, const QString& raw) {
        if (r != row || c != column)
            return true;
        found = value(type, style, raw);
        return false;
    });
    return found;
}

QList<QVariantList> Workbook::Rows(const QString& sheetName)
{
    qsizetype sheet = -1;
    for (qsizetype i = 0; i < sheetNames_.size() && sheet < 0; ++i)
        if (sheetNames_[i].compare(sheetName, Qt::CaseInsensitive) == 0)
            sheet = i;
    if (sheet < 0)
        fail(path_, QStringLiteral("manca il foglio ") + sheetName);
    if (sheetParts_[sheet].isEmpty())
        fail(path_, QStringLiteral("foglio senza parte ") + sheetName);

    // Cells of a hostile sheet can stand anywhere: the grid they span is bounded.
    constexpr qint64 kMaxCells = 5'000'000;
    qint64 used = 0;
    QList<QVariantList> rows;
    loadSharedStrings();
    cells(sheetParts_[sheet], 0, [&](int r, int c, const QString& type, int style, const QString& raw) {
        if (r < 1 || r > 1048576 || c > 16384)
            fail(path_, QStringLiteral("riferimento di cella non valido"));
        if (rows.size() < r)
            rows.resize(r);
        QVariantList& row = rows[r - 1];
        if (row.size() < c) {
            used += c - row.size();
            if (used > kMaxCells)
                fail(path_, QStringLiteral("foglio troppo grande ") + sheetName);
            row.resize(c);
        }
        row[c - 1] = value(type, style, raw);
        return true;
    });
    return rows;
}

void Workbook::cells(const QString& part, int lastRow,
                     const std::function<bool(int row, int column, const QString& type, int style, const QString& raw)>& cell)
{
    // Rows and cells come in order; a missing r counts on from the one before.
    PartStream s(*zip_, part);
    int r = 0, c = 0;
    while (s.next()) {
        if (!s.xml.isStartElement())
            continue;
        const QXmlStreamAttributes a = s.xml.attributes();
        if (s.xml.name() == QLatin1String("row")) {
            r = a.hasAttribute(QLatin1String("r")) ? a.value(QLatin1String("r")).toInt() : r + 1;
            c = 0;
            if (lastRow > 0 && r > lastRow)
                return;
            continue;
        }
        if (s.xml.name() != QLatin1String("c"))
            continue;
        int cc = c + 1, rr = r;
        if (a.hasAttribute(QLatin1String("r")) && !cellName(a.value(QLatin1String("r")), &cc, &rr))
            fail(path_, QStringLiteral("riferimento di cella non valido"));
        c = cc;
        const QString type = a.value(QLatin1String("t")).toString();
        const int style = a.value(QLatin1String("s")).toInt();
        const std::optional<QString> raw = rawValue(s);
        if (raw && !cell(rr, cc, type, style, *raw))
            return;
    }
}

QVariant Workbook::value(const QString& type, int style, const QString& raw)
{
    if (type == QLatin1String("s"))
        return sharedString(raw);
    if (type == QLatin1String("inlineStr") || type == QLatin1String("str") || type == QLatin1String("e"))
        return raw;
    if (type == QLatin1String("b"))
        return isTrue(raw);
    if (type == QLatin1String("d")) {
        const QDateTime when = QDateTime::fromString(raw, Qt::ISODate);
        return when.time() == QTime(0, 0) ? QVariant(when.date()) : QVariant(when);
    }
    bool ok = false;
    const double number = raw.toDouble(&ok);
    if (!ok)
        fail(path_, QStringLiteral("numero non valido ") + raw);
    if (style >= 0 && style < static_cast<int>(dateStyles_.size()) && dateStyles_[static_cast<std::size_t>(style)])
        return fromSerial(number, date1904_);
    return number;
}

void Workbook::loadSharedStrings()
{
    if (sharedStrings_)
        return;
    QStringList strings;
    if (!sharedStringsPart_.isEmpty()) {
        PartStream s(*zip_, sharedStringsPart_);
        while (s.next()) {
            if (!s.xml.isStartElement() || s.xml.name() != QLatin1String("si"))
                continue;
            if (strings.size() >= kMaxSharedStrings)
                fail(path_, QStringLiteral("troppi testi condivisi"));
            strings << s.text();
        }
    }
    sharedStrings_ = std::move(strings);
}

const QString& Workbook::sharedString(const QString& raw)
{
    bool ok = false;
    const int index = raw.toInt(&ok);
    if (!sharedStrings_ || !ok || index < 0 || index >= sharedStrings_->size())
        fail(path_, QStringLiteral("testo condiviso mancante"));
    return (*sharedStrings_)[index];
}

QString Workbook::Text(const QVariant& value)
{
    if (value.typeId() == QMetaType::QDateTime) {
        const QDateTime t = value.toDateTime();
        return num::DateText(t.date()) + ' ' + t.time().toString(QStringLiteral("HH:mm:ss"));
    }
    return num::Text(value);
}

} // namespace platform
