#pragma once
// The ledger replay computed in memory: the same rows and counters that the
// statement replay leaves, found without a statement per trade.
#include <QDate>
#include <QHash>
#include <QSet>
#include <QString>

#include <optional>
#include <vector>

namespace store {
class Database;
}

namespace ledger {

// One trade as the replay reads it: a null text reads as empty, a null number as 0.
struct Eseguito {
    QDate data;
    QString tipo, system, cod, titolo, errore;
    double qta = 0, prezzo = 0, importo = 0;
};

struct Sistema {
    double commissioni = 0, minimo = 0;
};

// Everything a replay reads.
struct Libro {
    std::vector<Eseguito> eseguiti;  // in date order, ties in record order
    QHash<QString, Sistema> sistemi; // by NocaseKey of Cod: the first row of each
    QSet<QString> errori;            // NocaseKey of every Cod of Errori
};

struct Posizione {
    long long rowid = 0;
    QString system, cod, titolo;
    double qta = 0, pzoCarico = 0, importo = 0, commissioni = 0;
};

struct Chiusa {
    long long rowid = 0;
    QDate data;
    int giorno = 0;
    QString system, cod, titolo;
    double pzoCarico = 0, qta = 0, prezzo = 0, gp = 0, gpPercentuale = 0, commissioni = 0;
};

struct Ricalcolo {
    std::vector<Posizione> portafoglio; // in rowid order
    std::vector<Chiusa> chiuse;         // in rowid order
    QHash<QString, double> contatori;   // by NocaseKey; codes not counted stay 0
    QString messaggio;                  // the message of a stopping sale, empty otherwise
};

// Every value is the one the statement replay stores. Empty where that replay's
// statements would fail or might store something else (an apostrophe in a text,
// a load price of zero, a date or number its statements can't carry): the caller
// then runs the statement replay itself.
std::optional<Ricalcolo> Ricalcola(const Libro& libro);

// The trades and the settings as the statement replay reads them; empty for a value
// read otherwise (a table of a foreign file with texts for numbers, say).
std::optional<Libro> LeggiLibro(store::Database& dbExe, store::Database& dbSet);
// Leaves Portafoglio, OperazioniChiuse and the counters of Errori as the result says,
// rowids included, in one transaction per file. Rows already as they must be stay untouched.
void ScriviRicalcolo(store::Database& dbExe, store::Database& dbSet, const Ricalcolo& r);

// A text as SQLite's NOCASE compares it: ASCII letters folded, nothing else.
QString NocaseKey(const QString& text);
// The double a REAL column holds after the number went into a statement as its SQL
// text (15 significant digits); empty when that text is no number (inf, NaN).
std::optional<double> ValoreScritto(double value);

} // namespace ledger
