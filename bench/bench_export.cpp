// The three export forms on a replayed ledger: the trades, its closed operations and positions.
#include "Ledgers.h"

#include "export/Esportazione.h"
#include "ledger/Replay.h"
#include "store/Delivered.h"

#include <benchmark/benchmark.h>

#include <stdexcept>

namespace {

struct Esportazione {
    explicit Esportazione(int trades)
    {
        bench::MakeLedger(ledger, trades);
        ledger::RicalcolaPortafoglio(ledger.dbExe, ledger.dbSet, [](const QString& text) {
            throw std::runtime_error(text.toStdString());
        });
    }
    QString file(const char* name) const { return ledger.dir.filePath(QString::fromLatin1(name)); }
    bench::GeneratedLedger ledger;
    esporta::Avanzamento avanzamento;
    const esporta::Scelta tutte{true, true, true};
};

} // namespace

static void BM_EsportaXls(benchmark::State& state)
{
    Esportazione e(static_cast<int>(state.range(0)));
    for (auto _ : state)
        esporta::EsportaXls(e.ledger.dbExe, e.file("dati.xlsx"), e.tutte, e.file("logoxls.png"), e.avanzamento);
}
BENCHMARK(BM_EsportaXls)->Arg(10000)->Unit(benchmark::kMillisecond);

static void BM_EsportaCsv(benchmark::State& state)
{
    Esportazione e(static_cast<int>(state.range(0)));
    for (auto _ : state)
        esporta::EsportaCsv(e.ledger.dbExe, e.file("dati.csv"), e.tutte, e.avanzamento);
}
BENCHMARK(BM_EsportaCsv)->Arg(10000)->Unit(benchmark::kMillisecond);

static void BM_EsportaMdb(benchmark::State& state)
{
    Esportazione e(static_cast<int>(state.range(0)));
    const QString portafoglio = e.ledger.dbExe.Path();
    for (auto _ : state)
        esporta::EsportaMdb(e.ledger.dbExe, portafoglio, e.file("copia.db"), e.tutte, e.avanzamento);
}
BENCHMARK(BM_EsportaMdb)->Arg(10000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
