#pragma once
// A broker's file read for the mapping window: a delimited text or the first sheet
// of a workbook, as rows of cells.
#include "platform/DelimitedText.h"

#include <QString>

namespace ledger {

class FileBroker {
public:
    // Reads the file; throws platform::Failure with the user's message when it can't.
    explicit FileBroker(const QString& path);

    bool Foglio() const { return foglio_; }
    QChar Separatore() const { return separatore_; }
    const platform::Tabella& Righe() const { return righe_; }
    // The text split anew at another separator; a workbook's rows stay as they are.
    void Dividi(QChar separatore);

private:
    QString testo_;
    bool foglio_ = false;
    QChar separatore_ = u',';
    platform::Tabella righe_;
};

} // namespace ledger
