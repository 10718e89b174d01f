#pragma once
// Reads an exported workbook back through the unzip program, independently of the writer.
#include <QHash>
#include <QString>
#include <QStringList>

namespace testing_support {

struct XlsxStile {
    QString numFmt;   // the format code ("General", "dd/mm/yy", ...)
    QString font;     // name
    double size = 0;
    bool bold = false;
    QString color;    // font colour RRGGBB, empty for the default
    QString fill;     // solid fill RRGGBB, empty for none
    bool locked = true;
};

struct XlsxCella {
    bool esiste = false;
    QString tipo;     // "s" shared string, "n" number (also dates), "" with no value
    QString valore;   // the text, or the number as written
    int stile = 0;
};

class Xlsx {
public:
    explicit Xlsx(const QString& path);

    // A member of the package; empty when it is not there.
    QByteArray Parte(const QString& member) const;
    QStringList Membri() const;

    QStringList Fogli() const { return fogli_; }
    int FoglioAttivo() const { return attivo_; }
    // The XML of the n-th sheet, from 1.
    QString Foglio(int n) const;
    XlsxCella Cella(int foglio, const QString& ref) const;
    XlsxStile Stile(int index) const { return stili_.value(index); }
    // The style of a column (from 1), -1 when the column has none.
    int StileColonna(int foglio, int col) const;
    // Number of cells holding a value in a sheet.
    int CelleConValore(int foglio) const;

private:
    QString path_;
    QStringList fogli_;
    int attivo_ = 0;
    QStringList condivise_;
    QList<XlsxStile> stili_;
};

// Excel's day number of a date.
double SerialeExcel(int year, int month, int day);

} // namespace testing_support
