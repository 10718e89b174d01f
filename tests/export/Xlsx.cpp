#include "export/Xlsx.h"

#include <QDate>
#include <QProcess>
#include <QXmlStreamReader>

#include <stdexcept>

namespace testing_support {

namespace {

QString attr(const QXmlStreamReader& x, const char* name) { return x.attributes().value(QLatin1String(name)).toString(); }

// "FFRRGGBB" to "RRGGBB".
QString rgb(const QString& argb) { return argb.right(6); }

struct Font {
    QString text; // bold, then name, size and colour unless they are the defaults
    QString name, size, color;
};

} // namespace

Xlsx::Xlsx(const QString& path) : path_(path)
{
    QXmlStreamReader wb(Parte(QStringLiteral("xl/workbook.xml")));
    while (!wb.atEnd()) {
        if (wb.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (wb.name() == QLatin1String("sheet"))
            fogli_ << attr(wb, "name");
        else if (wb.name() == QLatin1String("workbookView"))
            attivo_ = attr(wb, "activeTab").toInt();
    }
    QXmlStreamReader ss(Parte(QStringLiteral("xl/sharedStrings.xml")));
    while (!ss.atEnd())
        if (ss.readNext() == QXmlStreamReader::StartElement && ss.name() == QLatin1String("t"))
            condivise_ << ss.readElementText();

    QHash<QString, QString> numeri = {{QStringLiteral("0"), QStringLiteral("General")}};
    QList<Font> fonts;
    QStringList fills;
    bool inXfs = false;
    QXmlStreamReader st(Parte(QStringLiteral("xl/styles.xml")));
    while (!st.atEnd()) {
        const auto token = st.readNext();
        const auto n = st.name();
        if (token == QXmlStreamReader::EndElement && n == QLatin1String("font")) {
            Font& f = fonts.last();
            if (f.name != QLatin1String("Calibri") || f.size != QLatin1String("11") || !f.color.isEmpty())
                f.text += " " + f.name + " " + f.size + (f.color.isEmpty() ? QString() : " " + f.color);
        }
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (n == QLatin1String("numFmt"))
            numeri.insert(attr(st, "numFmtId"), attr(st, "formatCode"));
        else if (n == QLatin1String("font"))
            fonts.append(Font());
        else if (n == QLatin1String("b"))
            fonts.last().text = QStringLiteral(" bold");
        else if (n == QLatin1String("sz"))
            fonts.last().size = attr(st, "val");
        else if (n == QLatin1String("name"))
            fonts.last().name = attr(st, "val");
        else if (n == QLatin1String("color") && !fonts.isEmpty() && !attr(st, "rgb").isEmpty())
            fonts.last().color = rgb(attr(st, "rgb"));
        else if (n == QLatin1String("fill"))
            fills.append(QString());
        else if (n == QLatin1String("fgColor"))
            fills.last() = " fill " + rgb(attr(st, "rgb"));
        else if (n == QLatin1String("cellXfs"))
            inXfs = true;
        else if (inXfs && n == QLatin1String("xf"))
            formati_ << numeri.value(attr(st, "numFmtId"), QStringLiteral("?")) + fonts.value(attr(st, "fontId").toInt()).text
                    + fills.value(attr(st, "fillId").toInt()) + QStringLiteral(" locked");
        else if (inXfs && n == QLatin1String("protection") && attr(st, "locked") == QLatin1String("0"))
            formati_.last().chop(7);
    }
}

QByteArray Xlsx::Parte(const QString& member) const
{
    QProcess p;
    p.start(QStringLiteral("unzip"), {QStringLiteral("-p"), path_, member});
    if (!p.waitForFinished(20000))
        throw std::runtime_error("unzip did not finish");
    return p.exitCode() == 0 ? p.readAllStandardOutput() : QByteArray();
}

QString Xlsx::Foglio(int n) const { return QString::fromUtf8(Parte(QStringLiteral("xl/worksheets/sheet%1.xml").arg(n))); }

XlsxCella Xlsx::Cella(int foglio, const QString& ref) const
{
    QXmlStreamReader x(Foglio(foglio));
    while (!x.atEnd()) {
        if (x.readNext() != QXmlStreamReader::StartElement || x.name() != QLatin1String("c") || attr(x, "r") != ref)
            continue;
        XlsxCella c{attr(x, "t"), QString(), formati_.value(attr(x, "s").toInt())};
        while (!(x.readNext() == QXmlStreamReader::EndElement && x.name() == QLatin1String("c")))
            if (x.isStartElement() && x.name() == QLatin1String("v"))
                c.valore = x.readElementText();
        if (c.tipo.isEmpty() && !c.valore.isEmpty())
            c.tipo = QStringLiteral("n");
        if (c.tipo == QLatin1String("s"))
            c.valore = condivise_.value(c.valore.toInt());
        return c;
    }
    return {QStringLiteral("-"), QString(), QString()};
}

QString Xlsx::FormatoColonna(int foglio, int col) const
{
    QXmlStreamReader x(Foglio(foglio));
    while (!x.atEnd())
        if (x.readNext() == QXmlStreamReader::StartElement && x.name() == QLatin1String("col")
            && attr(x, "min").toInt() <= col && col <= attr(x, "max").toInt())
            return formati_.value(attr(x, "style").toInt());
    return QStringLiteral("-");
}

double SerialeExcel(int year, int month, int day)
{
    // Day 1 is 1 January 1900, and the format counts a 29 February 1900 that never was.
    return static_cast<double>(QDate(1899, 12, 30).daysTo(QDate(year, month, day)));
}

} // namespace testing_support
