// An engine error inside a button's handler reaches the one catch in the
// event dispatch, shows the report, ends the program, and leaves the file whole.
#include "platform/FailureReport.h"
#include "store/Database.h"
#include "support/Programma.h"

#include <QTimer>

using namespace testing_support;

TEST(FailureReport, EngineErrorInAButtonEndsInTheReportWithTheFileIntact)
{
    ProgramFolder folder;
    const QString path = folder.NewPortfolio();
    store::Database db;
    db.Open(path);
    AddTrade(db, "17/01/2003", "Buy", "DAY", "ENI", 100, 10);

    QPushButton cmd_Ok(QStringLiteral("Conferma"));
    cmd_Ok.setObjectName(QStringLiteral("cmd_Ok"));
    QObject::connect(&cmd_Ok, &QPushButton::clicked, [&db]() {
        db.Execute(QStringLiteral("UPDATE Eseguiti SET Qta = 5 WHERE Cod = 'ENI'"));
        db.Execute(QStringLiteral("UPDATE Eseguiti SET Prezzo = 'dieci,5' WHERE Cod = 'ENI'"));
    });
    cmd_Ok.show();

    QString report;
    ReadFailureReport(&report);
    QTimer::singleShot(0, &cmd_Ok, &QPushButton::click);
    EXPECT_EQ(QApplication::exec(), 1);
    EXPECT_TRUE(report.startsWith("FailureReport: ")) << report.toStdString();
    EXPECT_TRUE(report.contains("UPDATE Eseguiti SET Prezzo = 'dieci,5' WHERE Cod = 'ENI'")) << report.toStdString();
    EXPECT_TRUE(static_cast<platform::Application*>(qApp)->Failed());

    // Every statement before the failing one is on disk; the failing one left nothing.
    db.Close();
    db.Open(path);
    EXPECT_EQ(Rows(db, "PRAGMA integrity_check"), QStringList{"ok"});
    EXPECT_EQ(Rows(db, "SELECT Cod, Qta, Prezzo FROM Eseguiti"), QStringList{"ENI|5|10"});
}
