#pragma once
// Temporary program folders and portfolios for the tests.
#include "store/Database.h"
#include "support/QtPrinters.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

namespace testing_support {

// A fresh program folder with the delivered files installed.
class ProgramFolder {
public:
    ProgramFolder();
    QString Path() const { return dir_.path(); }
    QString File(const QString& name) const;
    // A copy of the empty portfolio under a new name in this folder.
    QString NewPortfolio(const QString& name = QStringLiteral("prova.qvp")) const;

private:
    QTemporaryDir dir_;
};

// Inserts a trade with the values as given (price and amount unrounded).
void AddTrade(store::Database& db, const QString& data, const QString& tipo, const QString& system, const QString& cod,
              double qta, double prezzo, const QString& errore = QStringLiteral("NE"),
              const QString& titolo = QString());

// Writes these bytes as the whole file (a failure to write fails the test); gives the path back.
QString WriteFile(const QString& path, const QByteArray& bytes);
// Bytes of a file, for proving it unchanged.
QByteArray FileBytes(const QString& path);
// Every row of a query, columns joined by '|', for compact comparisons.
QStringList Rows(store::Database& db, const QString& sql);

} // namespace testing_support
