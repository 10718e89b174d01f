#pragma once
// Our own workbook back: the trades of the sheet "Eseguiti" that the export writes.
#include "ledger/Staging.h"
#include "platform/Failure.h"

#include <QString>

namespace ledger {

// A file the import can't take; its text is what the user is told.
class FileNonValido : public platform::Failure {
public:
    explicit FileNonValido(const QString& text) : platform::Failure(text.toStdString()) {}
};

// The trades of the sheet "Eseguiti" of a workbook that the export wrote (a title row,
// the export's headers in row 2, one trade a row from row 3; empty rows left out), in
// date order, trades of one date in the sheet's order. Texts that the workbook keeps as numbers or dates come back as
// their text, and an empty optimal price as the price. Throws FileNonValido for a file
// that is no workbook, has no such sheet, or has a row that isn't a trade.
QList<EseguitoImportato> LeggiFoglioEseguiti(const QString& path);

} // namespace ledger
