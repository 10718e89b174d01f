// A quantity of "00" passes the test on the text and fails at the division:
// the failure report, and nothing else.
#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/FailureReport.h"
#include "platform/Forms.h"
#include "support/Fixture.h"
#include "support/Gui.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace testing_support;

TEST(CalcolatoreFailure, DoubleZeroQuantityEndsInTheFailureReport)
{
    QTemporaryDir dir;
    StartProgram(dir.path());
    MDIForm1::Instance()->Menu("mnu_Calcolatore")->trigger();
    QWidget* w = platform::Forms::Find("Calcolatore");
    ASSERT_NE(w, nullptr);
    const QByteArray settings = FileBytes(dir.filePath("DataSet.qvd"));
    QTest::keyClicks(w->findChild<QLineEdit*>("txtAcqPzo"), "10");

    QString report;
    WhenModal([&report](QWidget* modal) {
        if (auto* t = modal->findChild<QPlainTextEdit*>("txt_Errore"))
            report = modal->objectName() + ": " + t->toPlainText();
        QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
    });
    // The text goes in quietly and the recalculation is queued, so the failure travels
    // from the event dispatch like any handler's.
    auto* qta = w->findChild<QLineEdit*>("txtQta");
    {
        const QSignalBlocker quiet(qta);
        qta->setText("00");
    }
    QMetaObject::invokeMethod(w, "CalcolaAcquisto", Qt::QueuedConnection);
    QCoreApplication::processEvents();
    EXPECT_EQ(report, "FailureReport: Divisione per zero");
    EXPECT_TRUE(static_cast<platform::Application*>(qApp)->Failed());
    EXPECT_EQ(w->findChild<QLabel*>("lab_AcqImp")->text(), "0"); // the amount came before the division
    EXPECT_EQ(FileBytes(dir.filePath("DataSet.qvd")), settings);
}
