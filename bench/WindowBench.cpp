#include "WindowBench.h"

#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/FailureReport.h"
#include "platform/Forms.h"
#include "store/Database.h"
#include "store/Delivered.h"

#include <QApplication>
#include <QDir>

#include <benchmark/benchmark.h>

namespace bench {

MDIForm1* StartProgram(const QString& folder)
{
    store::InstallDelivered(folder);
    {
        store::Database settings;
        settings.Open(QDir(folder).filePath(store::kSettingsFile));
        settings.Execute(QStringLiteral("UPDATE Settaggi SET Tip = 0, Benvenuto = 0"));
    }
    Module1::Main(folder);
    return MDIForm1::Instance();
}

void CloseProgram()
{
    platform::Forms::UnloadAll();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    Module1::dbExe.Close();
    Module1::dbSet.Close();
}

int RunWindowBenchmarks(int argc, char** argv, const std::function<void()>& beforeExit)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    platform::Application app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quorvel"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    if (beforeExit)
        beforeExit();
    return 0;
}

} // namespace bench
