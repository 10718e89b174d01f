// The two small routines every statement of a replay passes through: the
// lifting of literals and the rounding of prices.
#include "platform/Numbers.h"
#include "store/Dialect.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

// Statements of the shapes a replay writes, with their literals.
static void BM_LiftLiterals(benchmark::State& state)
{
    const QString statements[] = {
        QStringLiteral("SELECT * FROM System WHERE Cod ='DAY'"),
        QStringLiteral("SELECT *  FROM portafoglio where Cod = 'C042'"),
        QStringLiteral("UPDATE Portafoglio SET Qta = 300 ,PzoCarico = 12.3456,Importo =3703.68 WHERE Cod ='C042'"),
        QStringLiteral("INSERT INTO OperazioniChiuse (Data ,giornoDiSettimana ,System , Cod, Titolo,PzoCarico , Qta, Prezzo, "
                       "GP , GPPercentuale, Commissioni)VALUES ('17/01/2003',6,'DAY','C042','Titolo C042',12.3456,50,13.1,"
                       "-0.1234,-0.01,6.25)"),
        QStringLiteral("UPDATE Errori SET  Contatore = 12 WHERE Cod ='NE'"),
    };
    std::size_t params = 0;
    for (auto _ : state) {
        for (const QString& s : statements) {
            const store::Lifted l = store::LiftLiterals(s);
            params += l.params.size();
            benchmark::DoNotOptimize(l.shape.constData());
        }
    }
    benchmark::DoNotOptimize(params);
    state.SetItemsProcessed(state.iterations() * 5);
}
BENCHMARK(BM_LiftLiterals);

// Prices and amounts as a replay rounds them to 4 decimals. Arg 0: mostly far from a
// tie; arg 1: typed prices with one decimal more than kept, ending in 5, each a tie.
static void BM_Round(benchmark::State& state)
{
    const bool ties = state.range(0) == 1;
    std::mt19937_64 gen(ties ? 11 : 7);
    std::uniform_int_distribution<long long> units(1, 10'000'000);
    std::vector<double> values;
    for (int i = 0; i < 1024; ++i) {
        const auto u = static_cast<double>(units(gen));
        values.push_back(ties ? (u * 10 + 5) / 100000.0 : u / (i % 8 == 0 ? 1000.0 : 7.0));
    }
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(num::Round(values[i++ & 1023], 4));
    }
    state.SetLabel(ties ? "ties" : "mixed");
}
BENCHMARK(BM_Round)->Arg(0)->Arg(1);
