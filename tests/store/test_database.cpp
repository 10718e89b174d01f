#include "store/Database.h"
#include "store/Delivered.h"

#include "app/Codifica.h"
#include "support/Fixture.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

class DatabaseTest : public ::testing::Test {
protected:
    void SetUp() override { db.Open(folder.NewPortfolio()); }
    ProgramFolder folder;
    store::Database db;
};

} // namespace

TEST_F(DatabaseTest, RecordsetAndForwardOnlyCursorReadFindEndAndWriteThrough)
{
    EXPECT_TRUE(db.OpenForwardOnly("SELECT *  FROM Eseguiti ORDER BY Data").Eof());
    AddTrade(db, "17/01/2003", "Buy", "DAY", "ENI", 100, 10);
    AddTrade(db, "15/01/2003", "Buy", "DAY", "FIAT", 50, 8);
    AddTrade(db, "17/01/2003", "Sell", "DAY", "ENI", 40, 11);

    store::Recordset rs = db.OpenRecordset("SELECT *  FROM Eseguiti ORDER BY Data");
    ASSERT_EQ(rs.RecordCount(), 3);
    EXPECT_EQ(rs.Field("cod").toString(), "FIAT"); // names without regard to case
    rs.Move(2);
    EXPECT_EQ(rs.Text("Tipo"), "Sell"); // equal dates in record order
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
    EXPECT_THROW(rs.MoveNext(), store::DbError);
    EXPECT_THROW(rs.Field("Cod"), store::DbError);

    EXPECT_TRUE(rs.FindFirst("Cod = 'eni'"));
    EXPECT_EQ(rs.AbsolutePosition(), 1);
    EXPECT_FALSE(rs.FindFirst("ID = 99"));
    EXPECT_TRUE(rs.NoMatch());

    // Rows added later are not seen.
    AddTrade(db, "18/01/2003", "Buy", "DAY", "TIM", 1, 1);
    EXPECT_EQ(rs.RecordCount(), 3);
    EXPECT_TRUE(db.OpenRecordset("SELECT * FROM Conto").Eof());

    // The forward-only cursor reads what the snapshot does, in place. Its text literal is bound
    // once; statements run during the walk must not disturb it.
    store::ForwardOnly c = db.OpenForwardOnly("SELECT *  FROM Eseguiti WHERE Cod <> 'TIM' ORDER BY Data");
    const int data = c.Index("data"), cod = c.Index("COD"), qta = c.Index("Qta");
    QStringList seen;
    QString reused;
    while (!c.Eof()) {
        db.Execute("UPDATE Eseguiti SET Titolo = 'x' WHERE Cod = 'ALTRO'");
        c.Text(cod, &reused);
        seen << c.Text(data) + '|' + reused + '|' + c.Text(qta) + '|' + QString::number(c.Number(qta));
        c.MoveNext();
    }
    EXPECT_EQ(seen, (QStringList{"15/01/2003|FIAT|50|50", "17/01/2003|ENI|100|100", "17/01/2003|ENI|40|40"}));
    EXPECT_THROW(c.MoveNext(), store::DbError);
    EXPECT_THROW(c.Text(cod), store::DbError);

    db.Execute("UPDATE Eseguiti SET Titolo = 'Società' WHERE Cod = 'ENI'");
    store::ForwardOnly u = db.OpenForwardOnly("SELECT Titolo FROM Eseguiti WHERE Cod = 'ENI'");
    QString titolo = "un testo più lungo";
    u.Text(0, &titolo);
    EXPECT_EQ(titolo, "Società");
    EXPECT_THROW(db.OpenForwardOnly("SELECT * FROM Nessuna"), store::DbError);

    // Edit, Update and Delete write through at once.
    store::Recordset rw = db.OpenRecordset("SELECT * FROM Eseguiti ORDER BY Data");
    ASSERT_TRUE(rw.Updatable());
    rw.Edit();
    rw.SetField("qta", 120.0);
    rw.SetField("Data", QDate(2003, 1, 16));
    rw.Update();
    EXPECT_EQ(rw.Number("Qta"), 120);
    EXPECT_EQ(Rows(db, "SELECT Data, Qta FROM Eseguiti WHERE Cod = 'FIAT'"), QStringList{"16/01/2003|120"});

    rw.Delete();
    rw.MoveNext();
    EXPECT_EQ(rw.Text("Tipo"), "Buy");
    EXPECT_EQ(rw.RecordCount(), 3);
    EXPECT_EQ(Rows(db, "SELECT Cod FROM Eseguiti"), (QStringList{"ENI", "ENI", "TIM"}));
}

TEST_F(DatabaseTest, TransactionsAndRefusedStatementsLeaveNoHalfChange)
{
    {
        store::Transaction tx(db);
        AddTrade(db, "17/01/2003", "Buy", "DAY", "ENI", 100, 10);
        {
            store::Transaction inner(db);
            AddTrade(db, "18/01/2003", "Buy", "DAY", "FIAT", 1, 1);
            inner.Commit();
        }
    } // not committed
    EXPECT_EQ(Rows(db, "SELECT Cod FROM Eseguiti"), QStringList{});
    {
        store::Transaction tx(db);
        AddTrade(db, "17/01/2003", "Buy", "DAY", "ENI", 100, 10);
        tx.Commit();
    }
    db.Close();
    db.Open(folder.File("prova.qvp"));

    // Refused statements leave no half row and carry their text.
    const QStringList refused = {
        // A decimal comma left in a value: one value too many.
        "INSERT INTO Portafoglio (System, Cod, Titolo, Qta, PzoCarico, Importo, Commissioni)VALUES ('DAY','ENI','Eni',100,10,1000,5,5)",
        // A lone comma where a number goes.
        "UPDATE Eseguiti SET Qta = ',' WHERE Cod = 'ENI'",
        // An apostrophe in a title.
        "INSERT INTO Eseguiti (Titolo) VALUES ('Banca d'Italia')",
        "INSERT INTO Eseguiti (Data) VALUES ('31/02/2003')",
        "DELETE * FROM Tabella",
    };
    for (const QString& sql : refused) {
        try {
            db.Execute(sql);
            ADD_FAILURE() << "accepted: " << sql.toStdString();
        } catch (const store::DbError& e) {
            EXPECT_EQ(e.Statement(), sql);
        }
    }
    EXPECT_EQ(Rows(db, "SELECT Cod, Qta FROM Eseguiti"), QStringList{"ENI|100"}); // committed, no half row
    EXPECT_EQ(Rows(db, "SELECT * FROM Portafoglio"), QStringList{});

    // What the engine converts goes in converted.
    db.Execute("INSERT INTO Conto (Data, Tipo, Importo, Descrizione) VALUES ('01/02/2004','Versamento','10.5','.')");
    EXPECT_EQ(Rows(db, "SELECT Data, Importo FROM Conto"), QStringList{"01/02/2004|10,5"});

    db.Execute("DROP TABLE EseguitiTemp, EseguitiBackup");
    EXPECT_THROW(db.Execute("DELETE * FROM EseguitiTemp"), store::DbError);
    EXPECT_THROW(db.Execute("DROP TABLE Conto, Manca"), store::DbError);
    db.Execute("DELETE * FROM Conto"); // the failed double drop took back its first half
}

TEST_F(DatabaseTest, OpenRefusesWhatIsNoDatabaseAndCopyOfAClosedFileReplacesTheTarget)
{
    store::Database other;
    EXPECT_THROW(other.Open(folder.File("manca.qvp")), store::DbError);
    EXPECT_FALSE(QFile::exists(folder.File("manca.qvp"))); // never created by opening

    const QString text = WriteFile(folder.File("testo.qvp"), "Data;Tipo;Cod\n17/01/2003;Buy;ENI\n");
    const QByteArray before = FileBytes(text);
    EXPECT_THROW(other.Open(text), store::DbError);
    EXPECT_EQ(FileBytes(text), before);

    // A copy of a closed file replaces the target.
    AddTrade(db, "17/01/2003", "Buy", "DAY", "ENI", 100, 10);
    const QString from = db.Path();
    db.Close();
    const QString to = WriteFile(folder.File("copia con spazi e l'apostrofo.qvp"), "vecchio");
    store::Database::CopyFile(from, to);
    other.Open(to);
    EXPECT_EQ(Rows(other, "SELECT Cod FROM Eseguiti"), QStringList{"ENI"});

    // Over itself, by whatever path, it is refused before anything is removed.
    ASSERT_TRUE(QFile::link(folder.Path(), folder.File("collegamento")));
    EXPECT_THROW(store::Database::CopyFile(from, folder.File("collegamento/") + QFileInfo(from).fileName()), store::DbError);
    other.Open(from);
    EXPECT_EQ(Rows(other, "SELECT Cod FROM Eseguiti"), QStringList{"ENI"});
}

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
    EXPECT_EQ(Codifica("D", kChiavePassword, s.Text("Pwd")), "0"); // no password
    EXPECT_EQ(set.OpenRecordset("SELECT * FROM Errori").Text("Cod"), "NE");
    EXPECT_EQ(Rows(set, "SELECT * FROM Errori"), Rows(set, "SELECT * FROM ErroriDefault"));

    store::Database exe;
    exe.Open(dir.filePath("DataExe.qvd"));
    for (const char* table : {"Eseguiti", "EseguitiTemp", "EseguitiBackup", "Portafoglio", "OperazioniChiuse", "Conto"})
        EXPECT_EQ(exe.OpenRecordset(QString("SELECT * FROM ") + table).RecordCount(), 0) << table;
    // The tables of the ledger share their columns in order, for INSERT ... SELECT *.
    exe.Execute("INSERT INTO EseguitiTemp SELECT * FROM Eseguiti");
}
