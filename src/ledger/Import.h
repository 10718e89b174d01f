#pragma once
// Trades staged in EseguitiTemp (the rows of Real Tick III day files, or the trades
// another reader made) and brought from there into Eseguiti one at a time.
#include "ledger/Staging.h"

#include <QString>

#include <functional>

namespace store {
class Database;
class Recordset;
} // namespace store

namespace ledger {

// The one message for a day file that can't be read.
inline constexpr char kRealTickNonValido[] = "file di Real Tick non valido: i dati non contengono valori validi";

// "dd/mm/yyyy" from a path that ends in yyyymmdd and a three-letter extension.
// Throws platform::Failure when those characters give no date.
QString DataDaNomeFile(const QString& path);

// Appends the trades of one day file to EseguitiTemp. False when the file
// can't be read or a line is too short: the lines before it stay staged.
bool LeggiRealTick(store::Database& dbExe, const QString& path);

// A text from another program's file as it can be stored: its apostrophes become
// typographic ones, since every statement carries texts between single quotes.
QString TestoImportato(QString text);

// Appends trades to EseguitiTemp for the preview, in their order, in one transaction.
void PreparaEseguiti(store::Database& dbExe, const QList<EseguitoImportato>& eseguiti);

// The statement that writes a staged row of a day file: price rounded to 4
// decimals, amount to 1, error "NE", the price as optimal price.
QString InsertRealTick(const store::Recordset& r);
// The statement that writes a staged row as the preview holds it, the amount
// computed as the trade window computes it (quantity x price, unrounded).
QString InsertComeInAnteprima(const store::Recordset& r);

// Brings the rows of EseguitiTemp into Eseguiti, each with its own backup and
// sequence check; the caller answers for the rows the check refuses.
class ImportaEseguiti {
public:
    // The rows about to go in (the progress bar's maximum).
    std::function<void(int righe)> inizio;
    // After each insert, before its check.
    std::function<void()> rigaInserita;
    // The question for a refused row; true keeps it.
    std::function<bool(const QString& domanda)> importareComunque;
    // How a staged row is written.
    std::function<QString(const store::Recordset& r)> inserimento = InsertRealTick;

    // Number of staged rows; 0 (nothing done) when EseguitiTemp is empty.
    // A failure takes Eseguiti back to what it was before the call.
    int Esegui(store::Database& dbExe);
    // The same rows, questions, failures and end state, the check kept in memory
    // between rows instead of walking the table for each: a refused row answered
    // No is taken out by its ID, and the undo record is taken before the last row only.
    int EseguiVeloce(store::Database& dbExe);

private:
    // The staged rows, counted, with `inizio` told; empty when there are none.
    store::Recordset staged(store::Database& dbExe);
    // After a refused row: whether it stays.
    bool tieni(const QString& errore);
};

} // namespace ledger
