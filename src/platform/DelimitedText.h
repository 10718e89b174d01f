#pragma once
// Delimited text as brokers export it (csv, txt): the bytes decoded, the records
// split into fields, and the guesses of the separator and of the header row.
#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace platform {

// Rows of cells, as a text file or a sheet holds them; row i is line i + 1.
using Tabella = QList<QStringList>;

// UTF-8 (its byte-order mark dropped) when the bytes are valid UTF-8, UTF-16 with its
// byte-order mark, else the Western Windows code page.
QString DecodificaTesto(const QByteArray& bytes);

// The records of a text, ended by CR LF, LF or CR, split at the separator. A field that
// begins with a double quote runs to the closing one and may hold separators and line
// breaks; "" inside it is one quote. A line break at the very end begins no record.
// At most `massimo` records when it is not negative.
Tabella DividiCampi(const QString& text, QChar separatore, qsizetype massimo = -1);

// The separator among ';', Tab and ',' that splits the most records into one common
// width; the comma only when it does better than the others, since decimal commas
// split records too.
QChar IndovinaSeparatore(const QString& text);

// The header among the first rows: the first of the rows whose filled cells are mostly
// words with the most filled cells; the first row with the most filled cells when none
// is mostly words. 0 for an empty table.
qsizetype IndovinaIntestazione(const Tabella& righe);

// True for a cell that reads as a number, an amount or a date rather than as a word.
bool SembraValore(QStringView cella);

} // namespace platform
