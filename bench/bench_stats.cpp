// Each statistics window's refresh on a journal of 1,000 closed operations
// (2,000 trades), chart and grid filled; frmMedie, which has no refresh, is loaded.
#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/Forms.h"
#include "platform/Numbers.h"

#include <QCoreApplication>
#include <QDate>
#include <QTemporaryDir>

#include "WindowBench.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <random>

namespace {

// The journal: 1,000 round trips, each sold at one of 50 prices, so the risk
// window (at most 50 distinct percentages) can show it; error tags from the catalogue.
struct Journal {
    QTemporaryDir dir;
    MDIForm1* frame = nullptr;

    Journal()
    {
        frame = bench::StartProgram(dir.path());
        frame->mnu_NuovoPortafoglio_Click();
        const char* errori[] = {"NE", "NE", "NE", "NE", "EA", "ER", "UA", "UR", "SL", "MM", "CT", "FP"};
        std::mt19937 rng(20261123);
        QDate day(2020, 1, 2);
        store::Transaction tx(Module1::dbExe);
        auto eseguito = [&](const char* tipo, const QString& cod, double prezzo, double ottimale) {
            Module1::dbExe.Execute(
                "INSERT INTO Eseguiti (Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo, Errore, PrezzoOttimale) VALUES ('"
                + num::DateText(day) + "','" + tipo + "','DAY','" + cod + "','Titolo " + cod + "',100," + num::SqlText(prezzo) + ","
                + num::SqlText(100 * prezzo) + ",'" + errori[rng() % 12] + "'," + num::SqlText(ottimale) + ")");
        };
        for (int i = 0; i < 1000; ++i) {
            const QString cod = QStringLiteral("C%1").arg(i % 100, 3, 10, QLatin1Char('0'));
            const double vendita = 8.8 + static_cast<double>(rng() % 50) * 0.05;
            eseguito("Buy", cod, 10, 10 - static_cast<double>(rng() % 20) / 100);
            day = day.addDays(day.dayOfWeek() >= 5 ? 8 - day.dayOfWeek() : 1);
            eseguito("Sell", cod, vendita, vendita + static_cast<double>(rng() % 20) / 100);
        }
        tx.Commit();
        frame->ControlloMenu();
    }
    ~Journal() { bench::CloseProgram(); }
};

std::unique_ptr<Journal>& journal()
{
    static std::unique_ptr<Journal> j;
    if (!j)
        j = std::make_unique<Journal>();
    return j;
}

void refresh(benchmark::State& state, const char* name)
{
    QWidget* w = journal()->frame->MostraFinestra(QString::fromLatin1(name));
    for (auto _ : state)
        QMetaObject::invokeMethod(w, "Main", Qt::DirectConnection);
    platform::Forms::Unload(QString::fromLatin1(name));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void BM_frmMDD(benchmark::State& state) { refresh(state, "frmMDD"); }
void BM_frmRisk(benchmark::State& state) { refresh(state, "frmRisk"); }
void BM_frmStGiorno(benchmark::State& state) { refresh(state, "frmStGiorno"); }
void BM_frmErrori(benchmark::State& state) { refresh(state, "frmErrori"); }

// No refresh of its own: the load computes it, and closing makes room for the next load.
void BM_frmMedie(benchmark::State& state)
{
    Journal& j = *journal();
    for (auto _ : state) {
        j.frame->MostraFinestra(QStringLiteral("frmMedie"));
        state.PauseTiming();
        platform::Forms::Unload(QStringLiteral("frmMedie"));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}

} // namespace

// The tables of the run and weekday windows grow at every refresh, as designed:
// a fixed count of refreshes keeps the runs comparable.
BENCHMARK(BM_frmMDD)->Iterations(30)->Repetitions(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_frmRisk)->Iterations(30)->Repetitions(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_frmStGiorno)->Iterations(30)->Repetitions(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_frmErrori)->Iterations(30)->Repetitions(5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_frmMedie)->Iterations(30)->Repetitions(5)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    return bench::RunWindowBenchmarks(argc, argv, [] { journal().reset(); });
}
