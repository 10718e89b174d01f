// A day file of 500 trades imported into a 2,000-trade ledger, row by row: parsing,
// the backup and the sequence check of every row, the questions, then the replay.
#include "Ledgers.h"

#include "ledger/Import.h"
#include "ledger/Replay.h"
#include "store/Database.h"

#include <QFile>

#include <benchmark/benchmark.h>

#include <map>
#include <random>
#include <stdexcept>

namespace {

// Buys and sales of the ledger's own codes, never selling more than is held,
// but for every `oversellEvery`-th row (0: none), which sells 100 more than is held.
QByteArray dayFile(store::Database& db, int rows, int oversellEvery)
{
    std::map<QString, double> held;
    for (store::Recordset r = db.OpenRecordset(QStringLiteral("SELECT Tipo, Cod, Qta FROM Eseguiti")); !r.Eof(); r.MoveNext())
        held[r.Text(QStringLiteral("Cod"))] += (r.Text(QStringLiteral("Tipo")).toUpper() == QLatin1String("BUY") ? 1 : -1)
            * r.Number(QStringLiteral("Qta"));
    std::vector<QString> codes;
    for (const auto& [cod, qta] : held)
        codes.push_back(cod);
    std::mt19937 rng(7);
    QByteArray out = "Account,Time,Exchange,Route,Side,Qty,Symbol,Price,Status,System,Id\r\n";
    for (int i = 1; i <= rows; ++i) {
        const QString& cod = codes[rng() % codes.size()];
        double& pieces = held[cod];
        const bool sell = pieces >= 100 && rng() % 2 == 0;
        double qta = sell ? 100 * (1 + static_cast<int>(rng() % static_cast<unsigned>(pieces / 100))) : 100 * (1 + rng() % 5);
        const bool oversell = oversellEvery > 0 && i % oversellEvery == 0;
        if (oversell)
            qta = pieces + 100; // refused and answered no: the holding stays
        else
            pieces += sell ? -qta : qta;
        out += QStringLiteral("A1,09:%1,MTA,R,%2,%3,%4,%5,F,DAY,%6\r\n")
                   .arg(i % 60, 2, 10, QLatin1Char('0'))
                   .arg(sell || oversell ? "SELL" : "BUY")
                   .arg(qta)
                   .arg(cod)
                   .arg(2.0 + static_cast<double>(rng() % 4000) / 100.0, 0, 'f', 2)
                   .arg(i)
                   .toLatin1();
    }
    return out;
}

void BM_ImportaGiornata(benchmark::State& state)
{
    const int oversellEvery = static_cast<int>(state.range(0));
    bench::GeneratedLedger ledger;
    bench::MakeLedger(ledger, 2000);
    const QString portfolio = ledger.dbExe.Path();
    const QString original = ledger.dir.filePath(QStringLiteral("ledger-2000.qvd"));
    const QString file = ledger.dir.filePath(QStringLiteral("RT_20201231.csv"));
    {
        QFile f(file);
        if (!f.open(QIODevice::WriteOnly) || f.write(dayFile(ledger.dbExe, 500, oversellEvery)) < 0)
            throw std::runtime_error("day file not written");
    }
    ledger.dbExe.Close();
    store::Database::CopyFile(portfolio, original);

    int questions = 0;
    int kept = 0;
    for (auto _ : state) {
        state.PauseTiming();
        store::Database::CopyFile(original, portfolio);
        ledger.dbExe.Open(portfolio);
        questions = 0;
        state.ResumeTiming();

        ledger.dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
        if (!ledger::LeggiRealTick(ledger.dbExe, file))
            throw std::runtime_error("day file refused");
        ledger::ImportaEseguiti importa;
        importa.importareComunque = [&](const QString&) {
            ++questions;
            return false;
        };
        importa.Esegui(ledger.dbExe);
        ledger.dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
        ledger::RicalcolaPortafoglio(ledger.dbExe, ledger.dbSet, [](const QString& text) {
            throw std::runtime_error(text.toStdString());
        });

        state.PauseTiming();
        kept = ledger.dbExe.OpenRecordset(QStringLiteral("SELECT Data FROM Eseguiti")).RecordCount();
        ledger.dbExe.Close();
        state.ResumeTiming();
    }
    state.counters["questions"] = questions;
    state.counters["trades"] = kept;
}

} // namespace

BENCHMARK(BM_ImportaGiornata)->Arg(0)->Arg(50)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

BENCHMARK_MAIN();
