#pragma once
// The statements with which one trade is written, changed or taken back.
#include <QDate>
#include <QString>

namespace store {
class Database;
}

namespace ledger {

// The entry fields as the statements take them: texts as typed.
struct CampiEseguito {
    QDate data;
    QString tipo, sistema, codice, titolo, quantita, prezzo, ottimale, errore;
};

// number(text) of the entry fields: comma decimals, read up to the first character
// that isn't part of a number, so pasted letters give 0.
double Numero(const QString& text);
// The same for a value that must be a number: anything else is a type mismatch failure.
double NumeroStretto(const QString& text);
// The amount Qta x Prezzo, unrounded, as it goes into a statement.
double Importo(const CampiEseguito& c);

// "INSERT INTO <table> (...)VALUES (...)": price and optimal price unrounded, quantity raw.
QString InsertEseguito(const QString& table, const CampiEseguito& c);
// "UPDATE Eseguiti SET ... WHERE ID =<id>": prices rounded to 4 decimals.
QString UpdateEseguito(const CampiEseguito& c, long long id);

// Puts Eseguiti back as EseguitiTemp holds it, in one step.
void RipristinaEseguiti(store::Database& dbExe);

} // namespace ledger
