// A journal with 51 different percentage results: opening the risk window from its
// menu ends in the failure report, and both database files are as they were.
#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/FailureReport.h"
#include "support/Fixture.h"
#include "support/Gui.h"

#include <QAction>
#include <QPlainTextEdit>
#include <QTimer>

#include <gtest/gtest.h>

using namespace testing_support;

TEST_F(ProgramTest, RiskWithTooManyDistinctPercentagesEndsInTheFailureReport)
{
    Avvia(true);
    // Each sale gains 0.1% more than the one before: 51 different results.
    for (int i = 1; i <= 51; ++i) {
        const QString cod = QStringLiteral("C%1").arg(i);
        AddTrade(Module1::dbExe, "13/01/2003", "Buy", "DAY", cod, 100, 10);
        AddTrade(Module1::dbExe, "14/01/2003", "Sell", "DAY", cod, 100, 10 + i / 100.0);
    }
    frame->ControlloMenu();
    QAction* risk = frame->Menu("mnu_Risk");
    ASSERT_TRUE(risk->isEnabled());
    auto impronta = [this] {
        QByteArray all;
        for (const char* f : {"DataSet.qvd", "DataSet.qvd-wal", "DataExe.qvd", "DataExe.qvd-wal"})
            all += FileBytes(path(f)) + '#';
        return all;
    };
    const QByteArray prima = impronta();

    QString report;
    WhenModal([&report](QWidget* modal) {
        if (auto* t = modal->findChild<QPlainTextEdit*>("txt_Errore"))
            report = modal->objectName() + ": " + t->toPlainText();
        QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
    });
    QTimer::singleShot(0, risk, &QAction::trigger);
    EXPECT_EQ(QApplication::exec(), 1);
    EXPECT_EQ(report, "FailureReport: Indice non compreso nell'intervallo: 51");
    EXPECT_TRUE(static_cast<platform::Application*>(qApp)->Failed());
    EXPECT_EQ(impronta(), prima);
}
