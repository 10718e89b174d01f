#pragma once
// Reads an exported workbook back through the unzip program, independently of the writer.
#include <QString>
#include <QStringList>

namespace testing_support {

struct XlsxCella {
    QString tipo;    // "s" text, "n" number (dates too), "" for a cell with no value, "-" for no cell
    QString valore;  // the text, or the number as written
    QString formato; // "<number format>[ bold][ fill RRGGBB][ locked]"
};

class Xlsx {
public:
    explicit Xlsx(const QString& path);

    // A member of the package; empty when it is not there.
    QByteArray Parte(const QString& member) const;
    QStringList Fogli() const { return fogli_; }
    // The XML of the n-th sheet, from 1.
    QString Foglio(int n) const;
    XlsxCella Cella(int foglio, const QString& ref) const;
    // The format of a column (from 1), "-" when it has none.
    QString FormatoColonna(int foglio, int col) const;

private:
    QString path_;
    QStringList fogli_, condivise_, formati_;
};

// Excel's day number of a date.
double SerialeExcel(int year, int month, int day);

} // namespace testing_support
