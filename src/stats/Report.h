#pragma once
// The balance of the closed operations: one pass over OperazioniChiuse.
#include "platform/Numbers.h"

#include <QString>

namespace store {
class Database;
class Recordset;
} // namespace store

namespace stats {

struct Bilancio {
    double sommaGain = 0, sommaPerdite = 0, percGain = 0, percPerdite = 0;
    double totaleGP = 0, totaleCommissioni = 0;
    int numGain = 0, numPerdite = 0, numPari = 0, numOperazioni = 0;
};

// Walks the cursor to its end; each row is classified on gp alone.
Bilancio CalcolaBilancio(store::Recordset& rs);

// The capital-gain tax: tested on the gross result, then taken whole and positive
// on the result after commissions, as the journal always computed it.
double CapitalGain(double totaleGP, double totaleCommissioni, double aliquota);

// A whole-number figure as a label shows it: floored, then in the default text of a
// number, so a huge one takes the exponent form (and never overflows an integer).
QString TestoIntero(double value);

// Net result of all closed operations; unset without a portfolio or without rows.
num::Figure UtileNetto(store::Database& dbExe, store::Database& dbSet, const QString& filePortafoglio);

} // namespace stats
