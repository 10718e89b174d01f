// Test entry for window tests: our application class, so failures reach the report.
#include "platform/FailureReport.h"
#include "support/Gui.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Dialogs remember folders in the user's Qt settings: keep the tests' own apart.
    QTemporaryDir config;
    qputenv("XDG_CONFIG_HOME", config.path().toUtf8());
    // A first start registers the portfolio file type in the user's data folder.
    QTemporaryDir data;
    qputenv("XDG_DATA_HOME", data.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    platform::Application app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quorvel"));
    ::testing::InitGoogleTest(&argc, argv);
    // After the printer: end events go in reverse, so a failure it adds at a test's end
    // is printed with that test.
    ::testing::UnitTest::GetInstance()->listeners().Append(testing_support::NewModalWatchListener());
    return RUN_ALL_TESTS();
}
