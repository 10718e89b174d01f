#pragma once
// Real Tick III day files: reading them into EseguitiTemp and bringing the
// staged rows into Eseguiti one at a time.
#include <QString>

#include <functional>

namespace store {
class Database;
}

namespace ledger {

// The one message for a day file that can't be read.
inline constexpr char kRealTickNonValido[] = "file di Real Tick non valido: i dati non contengono valori validi";

// "dd/mm/yyyy" from a path that ends in yyyymmdd and a three-letter extension.
// Throws platform::Failure when those characters give no date.
QString DataDaNomeFile(const QString& path);

// Appends the trades of one day file to EseguitiTemp. False when the file
// can't be read or a line is too short: the lines before it stay staged.
bool LeggiRealTick(store::Database& dbExe, const QString& path);

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

    // Number of staged rows; 0 (nothing done) when EseguitiTemp is empty.
    // A failure takes Eseguiti back to what it was before the call.
    int Esegui(store::Database& dbExe);
};

} // namespace ledger
