#include "store/Delivered.h"

#include "app/Codifica.h"
#include "support/Fixture.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace testing_support;

TEST(Delivered, FreshFolderGetsBothDatabasesWithTheirRows)
{
    QTemporaryDir dir;
    ASSERT_TRUE(store::InstallDelivered(dir.path()));
    EXPECT_FALSE(store::InstallDelivered(dir.path())); // second start: nothing installed
    EXPECT_TRUE(QFile::exists(dir.filePath("Start")));

    store::Database set;
    set.Open(dir.filePath("DataSet.qvd"));
    store::Recordset s = set.OpenRecordset("SELECT  * FROM Settaggi");
    ASSERT_EQ(s.RecordCount(), 1);
    EXPECT_EQ(s.Text("ApriUltimo"), "0");
    EXPECT_EQ(Codifica("D", kChiavePassword, s.Text("Pwd")), "0");
    for (const char* flag : {"Tip", "Benvenuto", "Clock", "Menu"})
        EXPECT_EQ(s.Number(flag), 1) << flag;
    EXPECT_GT(s.Number("CapitaleIniziale"), 0);

    EXPECT_GE(set.OpenRecordset("SELECT Cod FROM System").RecordCount(), 1);
    store::Recordset e = set.OpenRecordset("SELECT * FROM Errori");
    ASSERT_GE(e.RecordCount(), 10);
    EXPECT_EQ(e.Text("Cod"), "NE");
    EXPECT_EQ(Rows(set, "SELECT * FROM Errori"), Rows(set, "SELECT * FROM ErroriDefault"));
    for (const QString& row : Rows(set, "SELECT Cod FROM Errori"))
        EXPECT_EQ(row.size(), 2) << row.toStdString();
    EXPECT_EQ(set.OpenRecordset("SELECT *  FROM Colori").RecordCount(), 1);
    EXPECT_GE(set.OpenRecordset("SELECT Consiglio FROM Consiglio").RecordCount(), 120);

    store::Database exe;
    exe.Open(dir.filePath("DataExe.qvd"));
    for (const char* table : {"Eseguiti", "EseguitiTemp", "EseguitiBackup", "Portafoglio", "OperazioniChiuse", "Conto"})
        EXPECT_EQ(exe.OpenRecordset(QString("SELECT * FROM ") + table).RecordCount(), 0) << table;
    // The tables of the ledger share their columns in order, for INSERT ... SELECT *.
    exe.Execute("INSERT INTO EseguitiTemp SELECT * FROM Eseguiti");
}
