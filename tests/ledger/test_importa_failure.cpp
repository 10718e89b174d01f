// A replay that fails on an imported row ends in the failure report, and takes the
// import back with it: the portfolio opens again as it was before the click.
#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "ledger/Importa.h"
#include "platform/FailureReport.h"
#include "platform/FileLists.h"
#include "support/Fixture.h"
#include "support/Gui.h"

#include <QDir>
#include <QPlainTextEdit>
#include <QTest>

#include <gtest/gtest.h>

using namespace testing_support;

TEST_F(ProgramTest, AReplayFailingOnAnImportedRowLeavesThePortfolioAsBefore)
{
    Avvia(true);
    AddTrade(Module1::dbExe, "10/01/2003", "Buy", "DAY", "ENI", 100, 10);
    frame->ControlloMenu();
    QTemporaryDir giorni;
    // A buy at a zero price, then a sale of it: the replay divides by a load price of zero.
    WriteFile(QDir(giorni.path()).filePath("RT_20030117.csv"),
              "Account,Time,Exchange,Route,Side,Qty,Symbol,Price,Status,System,OrderId\r\n"
              "U1,09:00,MTA,D,BUY,100,ENI,10.5,F,DAY,1\r\n"
              "U1,09:10,MTA,D,BUY,3,TIM,0,F,DAY,2\r\n"
              "U1,09:20,MTA,D,SELL,1,TIM,3.4,F,DAY,3\r\n");
    const QStringList prima = Rows(Module1::dbExe, "SELECT * FROM Eseguiti");

    Importa* w = Importa::Instance();
    w->show();
    w->findChild<platform::DirList*>("Dir1")->setProperty("Path", giorni.path());
    auto* list = w->findChild<platform::CheckList*>("List1");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());

    QString report;
    WhenModal([&report](QWidget* modal) {
        if (auto* t = modal->findChild<QPlainTextEdit*>("txt_Errore"))
            report = t->toPlainText();
        QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
    });
    // Queued, so the failure travels from the event dispatch like any handler's without
    // unwinding through Qt's mouse handling.
    QMetaObject::invokeMethod(w, "cmd_Ok_Click", Qt::QueuedConnection);
    QCoreApplication::processEvents();
    EXPECT_TRUE(static_cast<platform::Application*>(qApp)->Failed());
    EXPECT_TRUE(report.contains("Divisione per zero")) << report.toStdString();

    store::Database disk;
    disk.Open(Module1::dbExe.Path());
    EXPECT_EQ(Rows(disk, "SELECT * FROM Eseguiti"), prima);
}
