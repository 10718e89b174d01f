// The full replay on a ledger file on disk; every statement is durable when it returns.
#include "Ledgers.h"

#include "ledger/Replay.h"

#include <benchmark/benchmark.h>

#include <stdexcept>

// The replay in memory, as the program runs it, and the statement replay it is held to.
// In memory it writes only the rows that changed: "from empty" makes it write them all.
enum class Modo { Istruzioni, Memoria, MemoriaDaVuoto };

template <Modo M>
static void BM_Replay(benchmark::State& state)
{
    bench::GeneratedLedger ledger;
    bench::MakeLedger(ledger, static_cast<int>(state.range(0)));
    const ledger::PlainBox box = [](const QString& text) {
        throw std::runtime_error(text.toStdString()); // a generated ledger never stops
    };
    long long statements = 0;
    for (auto _ : state) {
        if (M == Modo::MemoriaDaVuoto) {
            state.PauseTiming();
            ledger.dbExe.Execute(QStringLiteral("DELETE * FROM Portafoglio"));
            ledger.dbExe.Execute(QStringLiteral("DELETE * FROM OperazioniChiuse"));
            state.ResumeTiming();
        }
        const long long before = ledger.dbExe.StatementsRun() + ledger.dbSet.StatementsRun();
        if (M == Modo::Istruzioni)
            ledger::RicalcolaPortafoglioPerIstruzioni(ledger.dbExe, ledger.dbSet, box);
        else if (!ledger::RicalcolaPortafoglio(ledger.dbExe, ledger.dbSet, box))
            state.SkipWithError("the ledger went through the statement replay");
        statements = ledger.dbExe.StatementsRun() + ledger.dbSet.StatementsRun() - before;
    }
    state.counters["statements"] = static_cast<double>(statements);
    state.counters["closed"] = ledger.dbExe.OpenRecordset("SELECT Data FROM OperazioniChiuse").RecordCount();
}
BENCHMARK(BM_Replay<Modo::Memoria>)->Name("BM_RicalcolaPortafoglio")->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Replay<Modo::MemoriaDaVuoto>)->Name("BM_RicalcolaPortafoglioDaVuoto")->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Replay<Modo::Istruzioni>)->Name("BM_RicalcolaPortafoglioPerIstruzioni")->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// The trade window's undo record, taken at each of its refreshes: inside the confirm's
// transaction, so its cost is the statements', not a sync of its own.
static void BM_CopiaEseguitiTemp(benchmark::State& state)
{
    bench::GeneratedLedger ledger;
    bench::MakeLedger(ledger, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        store::Transaction click(ledger.dbExe);
        ledger.dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
        ledger.dbExe.Execute(QStringLiteral("INSERT INTO EseguitiTemp SELECT * FROM Eseguiti"));
        click.Commit();
    }
}
BENCHMARK(BM_CopiaEseguitiTemp)->Arg(10000)->Unit(benchmark::kMillisecond);

// One trade typed and confirmed: a single durable statement, under both sync levels.
static void BM_DurableInsert(benchmark::State& state)
{
    bench::GeneratedLedger ledger;
    bench::MakeLedger(ledger, 10);
    if (state.range(0) == 0)
        ledger.dbExe.ExecuteScript(QStringLiteral("PRAGMA synchronous=NORMAL"));
    for (auto _ : state)
        ledger.dbExe.Execute(QStringLiteral("INSERT INTO Conto (Data, Tipo, Importo, Descrizione) VALUES ('01/02/2004','Versamento','10.5','.')"));
    state.SetLabel(state.range(0) == 0 ? "synchronous=NORMAL" : "synchronous=FULL");
}
BENCHMARK(BM_DurableInsert)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
