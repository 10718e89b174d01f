// A day file of 500 trades imported into a 2,000-trade ledger, row by row: parsing,
// the backup and the sequence check of every row, the questions, then the replay.
// And a broker's 3,000 mapped trades staged and brought in with the check kept in
// memory, then the replay, with the row-by-row import of the same rows beside it.
#include "Ledgers.h"

#include "ledger/FileBroker.h"
#include "ledger/Import.h"
#include "ledger/Mappatura.h"
#include "ledger/Replay.h"
#include "store/Database.h"

#include <QDate>
#include <QFile>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <stdexcept>

namespace {

struct Riga {
    bool vendita;
    double qta;
    QString cod;
    double prezzo;
};

// Buys and sales of the ledger's own codes, never selling more than is held,
// but for every `oversellEvery`-th row (0: none), which sells 100 more than is held.
std::vector<Riga> righe(store::Database& db, int rows, int oversellEvery)
{
    std::map<QString, double> held;
    for (store::Recordset r = db.OpenRecordset(QStringLiteral("SELECT Tipo, Cod, Qta FROM Eseguiti")); !r.Eof(); r.MoveNext())
        held[r.Text(QStringLiteral("Cod"))] += (r.Text(QStringLiteral("Tipo")).toUpper() == QLatin1String("BUY") ? 1 : -1)
            * r.Number(QStringLiteral("Qta"));
    std::vector<QString> codes;
    for (const auto& [cod, qta] : held)
        codes.push_back(cod);
    std::mt19937 rng(7);
    std::vector<Riga> out;
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
        out.push_back({sell || oversell, qta, cod, 2.0 + static_cast<double>(rng() % 4000) / 100.0});
    }
    return out;
}

QByteArray dayFile(store::Database& db, int rows, int oversellEvery)
{
    QByteArray out = "Account,Time,Exchange,Route,Side,Qty,Symbol,Price,Status,System,Id\r\n";
    int i = 0;
    for (const Riga& r : righe(db, rows, oversellEvery)) {
        ++i;
        out += QStringLiteral("A1,09:%1,MTA,R,%2,%3,%4,%5,F,DAY,%6\r\n")
                   .arg(i % 60, 2, 10, QLatin1Char('0'))
                   .arg(r.vendita ? "SELL" : "BUY")
                   .arg(r.qta)
                   .arg(r.cod)
                   .arg(r.prezzo, 0, 'f', 2)
                   .arg(i)
                   .toLatin1();
    }
    return out;
}

// A copy of the generated ledger for each run, and its replay.
struct Portafoglio {
    bench::GeneratedLedger ledger;
    QString file, originale;
    explicit Portafoglio(int trades)
    {
        bench::MakeLedger(ledger, trades);
        file = ledger.dbExe.Path();
        originale = ledger.dir.filePath(QStringLiteral("ledger-%1.qvd").arg(trades));
    }
    void Salva()
    {
        ledger.dbExe.Close();
        store::Database::CopyFile(file, originale);
    }
    void Ripristina()
    {
        store::Database::CopyFile(originale, file);
        ledger.dbExe.Open(file);
    }
    void Ricalcola()
    {
        ledger::RicalcolaPortafoglio(ledger.dbExe, ledger.dbSet, [](const QString& text) {
            throw std::runtime_error(text.toStdString());
        });
    }
    int Eseguiti() { return ledger.dbExe.OpenRecordset(QStringLiteral("SELECT Data FROM Eseguiti")).RecordCount(); }
};

// Runs `importa` on a fresh copy of the ledger each time, with an importer that answers
// No to every question and counts them.
void ripeti(benchmark::State& state, Portafoglio& p, const std::function<void(ledger::ImportaEseguiti&)>& importa)
{
    int questions = 0;
    int kept = 0;
    for (auto _ : state) {
        state.PauseTiming();
        p.Ripristina();
        questions = 0;
        state.ResumeTiming();

        ledger::ImportaEseguiti importatore;
        importatore.importareComunque = [&](const QString&) {
            ++questions;
            return false;
        };
        importa(importatore);

        state.PauseTiming();
        kept = p.Eseguiti();
        p.ledger.dbExe.Close();
        state.ResumeTiming();
    }
    state.counters["questions"] = questions;
    state.counters["trades"] = kept;
}

void BM_ImportaGiornata(benchmark::State& state)
{
    const int oversellEvery = static_cast<int>(state.range(0));
    Portafoglio p(2000);
    const QString file = p.ledger.dir.filePath(QStringLiteral("RT_20201231.csv"));
    {
        QFile f(file);
        if (!f.open(QIODevice::WriteOnly) || f.write(dayFile(p.ledger.dbExe, 500, oversellEvery)) < 0)
            throw std::runtime_error("day file not written");
    }
    p.Salva();
    ripeti(state, p, [&](ledger::ImportaEseguiti& importa) {
        p.ledger.dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
        if (!ledger::LeggiRealTick(p.ledger.dbExe, file))
            throw std::runtime_error("day file refused");
        importa.Esegui(p.ledger.dbExe);
        p.ledger.dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
        p.Ricalcola();
    });
}

// OK of a preview's import: staged, brought in, replayed, in one transaction.
void importaAnteprima(Portafoglio& p, ledger::ImportaEseguiti& importa, const QList<ledger::EseguitoImportato>& staged,
                      bool veloce)
{
    store::Transaction tx(p.ledger.dbExe);
    p.ledger.dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
    ledger::PreparaEseguiti(p.ledger.dbExe, staged);
    importa.inserimento = ledger::InsertComeInAnteprima;
    veloce ? importa.EseguiVeloce(p.ledger.dbExe) : importa.Esegui(p.ledger.dbExe);
    p.ledger.dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
    p.Ricalcola();
    tx.Commit();
}

// 3,000 mapped trades of a broker's file (the most one file holds), one in 50 refused and
// answered No. Argument: 1 with the check in memory, 0 row by row.
void BM_ImportaAnteprima(benchmark::State& state)
{
    const bool veloce = state.range(0) == 1;
    Portafoglio p(2000);
    QList<ledger::EseguitoImportato> staged;
    int i = 0;
    for (const Riga& r : righe(p.ledger.dbExe, 3000, 50)) {
        const QDate giorno = QDate(2021, 1, 4).addDays(i++ / 20);
        staged.append({giorno, r.vendita ? "Sell" : "Buy", "DAY", r.cod, "ND", r.qta, r.prezzo, "NE", r.prezzo, i});
    }
    p.Salva();
    ripeti(state, p, [&](ledger::ImportaEseguiti& importa) { importaAnteprima(p, importa, staged, veloce); });
}

// The same 3,000 trades as a Directa file, newest first, through the mapping: read,
// model recognised, formats guessed, applied; then as above.
void BM_ImportaDirecta(benchmark::State& state)
{
    Portafoglio p(2000);
    const std::vector<Riga> rr = righe(p.ledger.dbExe, 3000, 50);
    QStringList linee;
    for (std::size_t i = 0; i < rr.size(); ++i) {
        const Riga& r = rr[i];
        const QString giorno = QDate(2021, 1, 4).addDays(static_cast<int>(i / 20)).toString(QStringLiteral("dd-MM-yyyy"));
        const double importo = r.qta * r.prezzo;
        linee << QStringLiteral("%1,%1,%2,%3,IT000%3,9%4,%3 spa,%5,%6,%6,EUR,ORD%4")
                     .arg(giorno, r.vendita ? QStringLiteral("Vendita") : QStringLiteral("Acquisto"), r.cod)
                     .arg(i)
                     .arg(r.qta)
                     .arg(r.vendita ? importo : -importo, 0, 'f', 2);
    }
    std::reverse(linee.begin(), linee.end());
    const QString file = p.ledger.dir.filePath(QStringLiteral("directa.csv"));
    {
        QFile f(file);
        if (!f.open(QIODevice::WriteOnly)
            || f.write("Directa SIM - Lista movimenti\nConto,A1\nIntestatario,X\nDal,04-01-2021\nAl,31-12-2021\n\n"
                       "Saldo iniziale,0\nValuta,EUR\nEstratto il,01-01-2022\nData operazione,Data valuta,Tipo operazione,"
                       "Ticker,Isin,Protocollo,Descrizione,Quantità,Importo euro,Importo Divisa,Divisa,Riferimento ordine\n")
                < 0
            || f.write(linee.join('\n').toUtf8() + '\n') < 0)
            throw std::runtime_error("Directa file not written");
    }
    p.Salva();
    ripeti(state, p, [&](ledger::ImportaEseguiti& importa) {
        const ledger::FileBroker broker(file);
        std::optional<ledger::Riconoscimento> modello = ledger::RiconosciModello(broker.Righe(), {});
        if (!modello)
            throw std::runtime_error("Directa not recognised");
        ledger::IndovinaFormati(broker.Righe(), modello->modello);
        importaAnteprima(p, importa, ledger::Applica(broker.Righe(), modello->modello, QStringLiteral("DAY")).eseguiti, true);
    });
}

} // namespace

BENCHMARK(BM_ImportaGiornata)->Arg(0)->Arg(50)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_ImportaAnteprima)->Arg(1)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(BM_ImportaDirecta)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
// The row-by-row import of the same rows takes seconds: one run is enough to compare.
BENCHMARK(BM_ImportaAnteprima)->Arg(0)->Iterations(1)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

BENCHMARK_MAIN();
