#include "export/Xlsx.h"

#include <QDate>
#include <QHash>
#include <QProcess>
#include <QXmlStreamReader>

#include <stdexcept>

namespace testing_support {

namespace {

QString attr(const QXmlStreamReader& x, const char* name) { return x.attributes().value(QLatin1String(name)).toString(); }

// The start elements of an XML text, each handed to `f` with the reader on it.
template <class F> void perOgni(const QByteArray& xml, F f)
{
    QXmlStreamReader x(xml);
    while (!x.atEnd())
        if (x.readNext() == QXmlStreamReader::StartElement)
            f(x);
}

} // namespace

Xlsx::Xlsx(const QString& path) : path_(path)
{
    perOgni(Parte("xl/workbook.xml"), [this](QXmlStreamReader& x) {
        if (x.name() == u"sheet")
            fogli_ << attr(x, "name");
    });
    perOgni(Parte("xl/sharedStrings.xml"), [this](QXmlStreamReader& x) {
        if (x.name() == u"t")
            condivise_ << x.readElementText();
    });
    QHash<QString, QString> numeri = {{"0", "General"}};
    QStringList fonts, fills;
    bool inXfs = false;
    perOgni(Parte("xl/styles.xml"), [&](QXmlStreamReader& x) {
        const auto n = x.name();
        if (n == u"numFmt")
            numeri.insert(attr(x, "numFmtId"), attr(x, "formatCode"));
        else if (n == u"font")
            fonts.append(QString());
        else if (n == u"b")
            fonts.last() = " bold";
        else if (n == u"fill")
            fills.append(QString());
        else if (n == u"fgColor")
            fills.last() = " fill " + attr(x, "rgb").right(6);
        else if (n == u"cellXfs")
            inXfs = true;
        else if (inXfs && n == u"xf")
            formati_ << numeri.value(attr(x, "numFmtId"), "?") + fonts.value(attr(x, "fontId").toInt())
                            + fills.value(attr(x, "fillId").toInt()) + " locked";
        else if (inXfs && n == u"protection" && attr(x, "locked") == "0")
            formati_.last().chop(7);
    });
}

QByteArray Xlsx::Parte(const QString& member) const
{
    QProcess p;
    p.start("unzip", {"-p", path_, member});
    if (!p.waitForFinished(20000))
        throw std::runtime_error("unzip did not finish");
    return p.exitCode() == 0 ? p.readAllStandardOutput() : QByteArray();
}

QString Xlsx::Foglio(int n) const { return QString::fromUtf8(Parte(QString("xl/worksheets/sheet%1.xml").arg(n))); }

XlsxCella Xlsx::Cella(int foglio, const QString& ref) const
{
    QXmlStreamReader x(Foglio(foglio));
    while (!x.atEnd()) {
        if (x.readNext() != QXmlStreamReader::StartElement || x.name() != u"c" || attr(x, "r") != ref)
            continue;
        XlsxCella c{attr(x, "t"), QString(), formati_.value(attr(x, "s").toInt())};
        while (!(x.readNext() == QXmlStreamReader::EndElement && x.name() == u"c"))
            if (x.isStartElement() && x.name() == u"v")
                c.valore = x.readElementText();
        if (c.tipo.isEmpty() && !c.valore.isEmpty())
            c.tipo = "n";
        if (c.tipo == "s")
            c.valore = condivise_.value(c.valore.toInt());
        return c;
    }
    return {"-", QString(), QString()};
}

QString Xlsx::FormatoColonna(int foglio, int col) const
{
    QString formato = "-";
    perOgni(Foglio(foglio).toUtf8(), [&](QXmlStreamReader& x) {
        if (formato == "-" && x.name() == u"col" && attr(x, "min").toInt() <= col && col <= attr(x, "max").toInt())
            formato = formati_.value(attr(x, "style").toInt());
    });
    return formato;
}

double SerialeExcel(int year, int month, int day)
{
    // Day 1 is 1 January 1900, and the format counts a 29 February 1900 that never was.
    return static_cast<double>(QDate(1899, 12, 30).daysTo(QDate(year, month, day)));
}

} // namespace testing_support
