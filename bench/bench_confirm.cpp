// The whole confirm path of the trade window: insert, sequence check, replay
// and the window's refresh, on ledgers of 2,000 and 10,000 trades; and the opening
// of a portfolio, from the file chosen to the frame ready with its trade window.
#include "Ledgers.h"

#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "ledger/frmEseguiti.h"
#include "platform/Forms.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "WindowBench.h"

#include <benchmark/benchmark.h>

static void BM_ConfermaNuovoAcquisto(benchmark::State& state)
{
    bench::GeneratedLedger ledger;
    bench::MakeLedger(ledger, static_cast<int>(state.range(0)));
    const QString portfolio = ledger.dbExe.Path();
    ledger.dbExe.Close();
    ledger.dbSet.Close();
    MDIForm1* frame = bench::StartProgram(ledger.dir.path());
    Module1::dbExe.Open(portfolio);
    Module1::sFilePortafoglio = portfolio;
    frame->ControlloMenu();
    auto* w = static_cast<frmEseguiti*>(frame->MostraFinestra(QStringLiteral("frmEseguiti")));
    auto* ok = w->findChild<QPushButton*>(QStringLiteral("cmd_Ok"));
    for (auto _ : state) {
        w->findChild<QRadioButton*>(QStringLiteral("Option1(0)"))->click();
        w->findChild<QLineEdit*>(QStringLiteral("txt_Codice"))->setText(QStringLiteral("C001"));
        w->findChild<QLineEdit*>(QStringLiteral("txt_Titolo"))->setText(QStringLiteral("Titolo C001"));
        w->findChild<QLineEdit*>(QStringLiteral("txtQta"))->setText(QStringLiteral("100"));
        w->findChild<QLineEdit*>(QStringLiteral("txtPrezzo"))->setText(QStringLiteral("12"));
        ok->click();
    }
    state.counters["trades"] = static_cast<double>(Module1::dbExe.OpenRecordset(QStringLiteral("SELECT Data  FROM Eseguiti")).RecordCount());
    bench::CloseProgram();
}
BENCHMARK(BM_ConfermaNuovoAcquisto)->Arg(2000)->Arg(10000)->Unit(benchmark::kMillisecond);

// "Open last" takes the path without a dialog; the rest is the command as the user runs it:
// the file opened, the replay, ControlloMenu (replaying again), the trade window built and shown.
static void BM_ApriPortafoglio(benchmark::State& state)
{
    bench::GeneratedLedger ledger;
    bench::MakeLedger(ledger, static_cast<int>(state.range(0)));
    const QString portfolio = ledger.dbExe.Path();
    ledger.dbExe.Close();
    ledger.dbSet.Execute("UPDATE Settaggi SET ApriUltimo = '" + portfolio + "'");
    ledger.dbSet.Close();
    MDIForm1* frame = bench::StartProgram(ledger.dir.path());
    for (auto _ : state) {
        frame->mnu_ApriUltimo_Click();
        QCoreApplication::processEvents(); // shown and laid out
        state.PauseTiming();
        platform::Forms::Unload(QStringLiteral("frmEseguiti"));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Module1::dbExe.Close();
        state.ResumeTiming();
    }
    bench::CloseProgram();
}
BENCHMARK(BM_ApriPortafoglio)->Arg(2000)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    return bench::RunWindowBenchmarks(argc, argv);
}
