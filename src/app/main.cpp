#include "app/Module1.h"
#include "platform/FailureReport.h"

#include <QDir>
#include <QIcon>
#include <QStandardPaths>

int main(int argc, char** argv)
{
    platform::Application app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quorvel"));
    QApplication::setApplicationDisplayName(QStringLiteral("Quorvel"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/quorvel.svg")));
    // Ties the windows to the installed launcher (the Wayland app id).
    QApplication::setDesktopFileName(QStringLiteral("quorvel"));
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    try {
        Module1::Main(folder);
    } catch (...) {
        app.ReportFailure(std::current_exception(), QStringLiteral("Module1.Main"));
        return 1;
    }
    return app.exec();
}
