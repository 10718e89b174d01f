#pragma once
// Runs of consecutive winning and losing closed operations, and the tables of
// how often each value comes, with the fixed bounds that are the journal's limits.
#include "platform/Numbers.h"

#include <QVariant>
#include <QVector>

#include <vector>

namespace store {
class Recordset;
}

namespace stats {

// Entries used from 1; index 0 stays empty.
using TabellaSerie = num::FixedTable<double, 0, 1000>;

struct Serie {
    TabellaSerie valore;    // percentage sum of each recorded run, signed
    TabellaSerie lunghezza; // length of each recorded run, negative for a losing one
    int numSerie = 0;
};

// GPPercentuale of every row, in the cursor's order, from its current row to the end.
std::vector<double> Percentuali(store::Recordset& rs);

// A result above 0 wins, anything else (0 included) loses. A run is recorded only
// when a result of the other side arrives, so the run still open at the end is
// left out, and a zero after wins closes them without a losing run of its own.
Serie ContaSerie(const std::vector<double>& percentuali);

// The percentage list of the second pass: one entry per row, from 1.
struct ListaPercentuali {
    TabellaSerie valori;
    int numOperazioni = 0;
};
ListaPercentuali LeggiPercentuali(store::Recordset& rs);

// One row of a frequency table: the value (column 1) and how many times it came (column 2).
struct Frequenza {
    double valore = 0;
    double conteggio = 0;
};

// Distinct values in order of first appearance, rows from 1 up to a fixed bound.
template <long long Righe>
struct Frequenze {
    num::FixedTable<Frequenza, 1, Righe> righe;
    int numDistinti = 0;
};
using FrequenzeMDD = Frequenze<100>;
using FrequenzeRisk = Frequenze<1000>;

// Counts entries 1..n of a table; values merge only when exactly equal.
template <long long Righe, class Tabella>
Frequenze<Righe> ContaFrequenze(const Tabella& valori, int n)
{
    Frequenze<Righe> f;
    for (int i = 1; i <= n; ++i) {
        bool trovato = false;
        for (int k = 1; k <= f.numDistinti; ++k) {
            if (f.righe[k].valore == valori[i]) {
                f.righe[k].conteggio += 1;
                trovato = true;
                break;
            }
        }
        if (!trovato) {
            ++f.numDistinti;
            f.righe[f.numDistinti] = Frequenza{valori[i], 1};
        }
    }
    return f;
}

// Highest value first, by the journal's exchange over every pair of rows.
template <long long Righe>
void Ordina(Frequenze<Righe>& f)
{
    for (int i = 1; i <= f.numDistinti; ++i)
        for (int j = 1; j <= f.numDistinti; ++j)
            if (f.righe[i].valore > f.righe[j].valore)
                std::swap(f.righe[i], f.righe[j]);
}

// The table behind the frequency chart: rows 0 to 50, x the value and y its
// share in percent; row 0 and the rows past the data stay empty.
struct PuntoGrafico {
    num::Figure x;
    num::Figure y;
};
using TabellaGrafico = num::FixedTable<PuntoGrafico, 0, 50>;

// Share = (100 x count) / totale, rounded to 2 decimals.
template <long long Righe>
TabellaGrafico Grafico(const Frequenze<Righe>& f, double totale)
{
    TabellaGrafico g;
    for (int i = 1; i <= f.numDistinti; ++i) {
        g[i].x = f.righe[i].valore;
        g[i].y = num::Round(num::Divide(100 * f.righe[i].conteggio, totale), 2);
    }
    return g;
}

// All 51 rows of the table as chart data (x, y), unset cells as no value.
QVector<QVector<QVariant>> DatiGrafico(const TabellaGrafico& g);

} // namespace stats
