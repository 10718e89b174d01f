#pragma once
// The three forms of the export: workbook, database copy and text.
// Engine code: the window hands in its choice and shows what the writers report.
#include "platform/Failure.h"
#include "store/Recordset.h"

#include <QString>
#include <QStringList>

namespace store {
class Database;
}

namespace esporta {

enum class Tabella { OperazioniChiuse, Eseguiti, Portafoglio };

// The tables ticked in the window.
struct Scelta {
    bool operazioniChiuse = false;
    bool eseguiti = false;
    bool portafoglio = false;
    bool Contiene(Tabella t) const;
};

// What the window shows while an export runs; by default nothing.
class Avanzamento {
public:
    virtual ~Avanzamento() = default;
    virtual void MostraBarra(bool /*visibile*/) {}
    virtual void Massimo(int /*massimo*/) {}
    virtual void AvanzaProgresso() {}
    virtual void Etichetta(Tabella, const QString& /*testo*/) {}
};

// A file that could not be written or read.
class ErroreEsportazione : public platform::Failure {
public:
    explicit ErroreEsportazione(const QString& text) : platform::Failure(text.toStdString()) {}
};

// The tables in the order of the check boxes, and their names in the statements.
inline constexpr Tabella kTabelle[] = {Tabella::OperazioniChiuse, Tabella::Eseguiti, Tabella::Portafoglio};
QString NomeTabella(Tabella t);

// Opens a statement; with records, it goes to the last and back to the first, so the count is whole.
store::Recordset ApriContando(store::Database& db, const QString& sql);

// A table's sheet in the workbook: its headers in row 2, from column A; records from row 3.
QStringList IntestazioniFoglio(Tabella t);

// Workbook with one sheet per chosen table, in the places of "Foglio1".."Foglio3".
// A failure leaves the empty workbook written first.
void EsportaXls(store::Database& db, const QString& file, const Scelta& scelta, const QString& logo,
                Avanzamento& avanzamento);

// Copy of the portfolio file without the unchosen tables and the two working tables.
// Leaves dbExe open on sFilePortafoglio again; a failure leaves it where it was then.
void EsportaMdb(store::Database& dbExe, const QString& sFilePortafoglio, const QString& file, const Scelta& scelta,
                Avanzamento& avanzamento);

// Comma-separated text, one byte a character in Windows-1252, CR LF line ends.
void EsportaCsv(store::Database& db, const QString& file, const Scelta& scelta, Avanzamento& avanzamento);

} // namespace esporta
