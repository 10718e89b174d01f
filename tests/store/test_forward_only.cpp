// The forward-only cursor reads what a snapshot would, in place.
#include "store/Database.h"

#include "support/Fixture.h"

#include <gtest/gtest.h>

using namespace testing_support;

TEST(ForwardOnly, ReadsLikeASnapshotAndKeepsItsLiteralsWhileOtherStatementsRun)
{
    ProgramFolder folder;
    store::Database exe;
    exe.Open(folder.NewPortfolio());
    EXPECT_TRUE(exe.OpenForwardOnly("SELECT *  FROM Eseguiti ORDER BY Data").Eof());

    AddTrade(exe, "11/01/2003", "Sell", "DAY", "ENI", 40, 10.25);
    AddTrade(exe, "10/01/2003", "Buy", "DAY", "ENI", 100, 10.5);
    AddTrade(exe, "10/01/2003", "Buy", "DAY", "FIAT", 7, 3);
    AddTrade(exe, "12/01/2003", "Buy", "DAY", "TIM", 1, 1);

    // The text literal is bound once; statements run during the walk must not disturb it.
    store::ForwardOnly c = exe.OpenForwardOnly("SELECT *  FROM Eseguiti WHERE Cod <> 'TIM' ORDER BY Data");
    const int data = c.Index("data"), cod = c.Index("COD"), qta = c.Index("Qta");
    QStringList seen;
    QString reused;
    while (!c.Eof()) {
        exe.Execute("UPDATE Eseguiti SET Titolo = 'x' WHERE Cod = 'ALTRO'");
        c.Text(cod, &reused);
        seen << c.Text(data) + '|' + reused + '|' + c.Text(qta) + '|' + QString::number(c.Number(qta));
        c.MoveNext();
    }
    // Equal dates come in record order, as the snapshot gives them.
    EXPECT_EQ(seen, (QStringList{"10/01/2003|ENI|100|100", "10/01/2003|FIAT|7|7", "11/01/2003|ENI|40|40"}));
    EXPECT_THROW(c.MoveNext(), store::DbError);
    EXPECT_THROW(c.Text(cod), store::DbError);

    store::ForwardOnly r = exe.OpenForwardOnly("SELECT Titolo, Prezzo FROM Eseguiti WHERE Cod = 'ENI' ORDER BY Data");
    EXPECT_EQ(r.Text(r.Index("Prezzo")), "10,5");
    EXPECT_THROW(r.Index("Nessuna"), store::DbError);
    EXPECT_THROW(r.Text(7), store::DbError);
    exe.Execute("UPDATE Eseguiti SET Titolo = 'Società' WHERE Cod = 'ENI'");
    store::ForwardOnly u = exe.OpenForwardOnly("SELECT Titolo FROM Eseguiti WHERE Cod = 'ENI'");
    QString titolo = "un testo più lungo";
    u.Text(0, &titolo);
    EXPECT_EQ(titolo, "Società");
    EXPECT_THROW(exe.OpenForwardOnly("SELECT * FROM Nessuna"), store::DbError);
}
