#include "export/Xlsx.h"

#include <QDate>
#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <stdexcept>

namespace testing_support {

namespace {

QByteArray unzip(const QStringList& args)
{
    QProcess p;
    p.start(QStringLiteral("unzip"), args);
    if (!p.waitForFinished(20000) || p.exitStatus() != QProcess::NormalExit)
        throw std::runtime_error("unzip did not finish");
    return p.exitCode() == 0 ? p.readAllStandardOutput() : QByteArray();
}

QString attr(const QXmlStreamReader& x, const char* name) { return x.attributes().value(QLatin1String(name)).toString(); }

// "FFRRGGBB" to "RRGGBB".
QString rgb(const QString& argb) { return argb.size() == 8 ? argb.mid(2) : argb; }

} // namespace

Xlsx::Xlsx(const QString& path) : path_(path)
{
    QXmlStreamReader wb(Parte(QStringLiteral("xl/workbook.xml")));
    while (!wb.atEnd()) {
        if (wb.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (wb.name() == QLatin1String("sheet"))
            fogli_ << attr(wb, "name");
        else if (wb.name() == QLatin1String("workbookView") && !attr(wb, "activeTab").isEmpty())
            attivo_ = attr(wb, "activeTab").toInt();
    }

    QXmlStreamReader ss(Parte(QStringLiteral("xl/sharedStrings.xml")));
    while (!ss.atEnd())
        if (ss.readNext() == QXmlStreamReader::StartElement && ss.name() == QLatin1String("t"))
            condivise_ << ss.readElementText();

    QHash<int, QString> formati = {{0, QStringLiteral("General")}, {14, QStringLiteral("[short date]")}};
    QList<XlsxStile> fonts;
    QList<QString> fills;
    enum { Altro, Fonts, Fills, Xfs } sezione = Altro;
    QXmlStreamReader st(Parte(QStringLiteral("xl/styles.xml")));
    while (!st.atEnd()) {
        const auto token = st.readNext();
        if (token == QXmlStreamReader::EndElement) {
            if (st.name() == QLatin1String("fonts") || st.name() == QLatin1String("fills")
                || st.name() == QLatin1String("cellXfs"))
                sezione = Altro;
            continue;
        }
        if (token != QXmlStreamReader::StartElement)
            continue;
        const auto n = st.name();
        if (n == QLatin1String("numFmt"))
            formati.insert(attr(st, "numFmtId").toInt(), attr(st, "formatCode"));
        else if (n == QLatin1String("fonts"))
            sezione = Fonts;
        else if (n == QLatin1String("fills"))
            sezione = Fills;
        else if (n == QLatin1String("cellXfs"))
            sezione = Xfs;
        else if (sezione == Fonts && n == QLatin1String("font"))
            fonts.append(XlsxStile());
        else if (sezione == Fonts && n == QLatin1String("b"))
            fonts.last().bold = true;
        else if (sezione == Fonts && n == QLatin1String("sz"))
            fonts.last().size = attr(st, "val").toDouble();
        else if (sezione == Fonts && n == QLatin1String("name"))
            fonts.last().font = attr(st, "val");
        else if (sezione == Fonts && n == QLatin1String("color"))
            fonts.last().color = rgb(attr(st, "rgb"));
        else if (sezione == Fills && n == QLatin1String("fill"))
            fills.append(QString());
        else if (sezione == Fills && n == QLatin1String("fgColor"))
            fills.last() = rgb(attr(st, "rgb"));
        else if (sezione == Xfs && n == QLatin1String("xf")) {
            XlsxStile s = fonts.value(attr(st, "fontId").toInt());
            s.fill = fills.value(attr(st, "fillId").toInt());
            s.numFmt = formati.value(attr(st, "numFmtId").toInt(), QStringLiteral("?"));
            stili_.append(s);
        } else if (sezione == Xfs && n == QLatin1String("protection"))
            stili_.last().locked = attr(st, "locked") != QLatin1String("0");
    }
}

QByteArray Xlsx::Parte(const QString& member) const { return unzip({QStringLiteral("-p"), path_, member}); }

QStringList Xlsx::Membri() const
{
    QStringList out;
    for (const QString& line : QString::fromUtf8(unzip({QStringLiteral("-Z1"), path_})).split('\n', Qt::SkipEmptyParts))
        out << line.trimmed();
    return out;
}

QString Xlsx::Foglio(int n) const
{
    return QString::fromUtf8(Parte(QStringLiteral("xl/worksheets/sheet%1.xml").arg(n)));
}

XlsxCella Xlsx::Cella(int foglio, const QString& ref) const
{
    XlsxCella c;
    QXmlStreamReader x(Foglio(foglio));
    while (!x.atEnd()) {
        if (x.readNext() != QXmlStreamReader::StartElement || x.name() != QLatin1String("c") || attr(x, "r") != ref)
            continue;
        c.esiste = true;
        c.stile = attr(x, "s").toInt();
        c.tipo = attr(x, "t");
        while (!(x.readNext() == QXmlStreamReader::EndElement && x.name() == QLatin1String("c")) && !x.atEnd()) {
            if (x.isStartElement() && x.name() == QLatin1String("v")) {
                c.valore = x.readElementText();
                if (c.tipo.isEmpty())
                    c.tipo = QStringLiteral("n");
            }
        }
        if (c.tipo == QLatin1String("s"))
            c.valore = condivise_.value(c.valore.toInt());
        return c;
    }
    return c;
}

int Xlsx::StileColonna(int foglio, int col) const
{
    QXmlStreamReader x(Foglio(foglio));
    while (!x.atEnd())
        if (x.readNext() == QXmlStreamReader::StartElement && x.name() == QLatin1String("col")
            && attr(x, "min").toInt() <= col && col <= attr(x, "max").toInt())
            return attr(x, "style").toInt();
    return -1;
}

int Xlsx::CelleConValore(int foglio) const
{
    return static_cast<int>(Foglio(foglio).count(QRegularExpression(QStringLiteral("<v>"))));
}

double SerialeExcel(int year, int month, int day)
{
    // Day 1 is 1 January 1900, and the format counts a 29 February 1900 that never was.
    return static_cast<double>(QDate(1899, 12, 30).daysTo(QDate(year, month, day)));
}

} // namespace testing_support
