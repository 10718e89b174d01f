// The snapshot as read for speed against the plain reading, cell by cell, on seeded tables.
#include "store/Database.h"

#include "support/Fixture.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

namespace {

QString literal(QRandomGenerator& rng)
{
    static const QStringList texts{"''", "'ENI'", "'àèì €'", "'2003-01-17'", "'17/01/2003'", "'x''y'", "'2003-13-45'"};
    switch (rng.bounded(6)) {
    case 0: return QStringLiteral("NULL");
    case 1: return QString::number(rng.bounded(-100000, 100000));
    case 2: return QString::number(rng.generateDouble() * 1e6 - 5e5, 'g', 17);
    case 3: return QStringLiteral("X'%1'").arg(QString::number(rng.bounded(1 << 16), 16).rightJustified(4, '0'));
    case 4: return QStringLiteral("X''");
    default: return texts[rng.bounded(static_cast<int>(texts.size()))];
    }
}

// Same shape, same cells with the same kinds, same rows written through.
void expectSame(store::Recordset& fast, store::Recordset& plain, const QString& what)
{
    ASSERT_EQ(fast.RecordCount(), plain.RecordCount()) << qPrintable(what);
    ASSERT_EQ(fast.FieldCount(), plain.FieldCount()) << qPrintable(what);
    for (int r = 0; r < fast.RecordCount(); ++r)
        for (int c = 0; c < fast.FieldCount(); ++c) {
            const QVariant a = fast.ValueAt(r, c), b = plain.ValueAt(r, c);
            ASSERT_TRUE(a.typeId() == b.typeId() && a == b)
                << qPrintable(what) << " row " << r << " column " << c << ": " << qPrintable(a.toString());
        }
}

} // namespace

TEST(Snapshot, PackedReadingGivesThePlainOneOnSeededTables)
{
    testing_support::ProgramFolder folder;
    store::Database db;
    db.Open(folder.NewPortfolio());
    db.ExecuteScript("CREATE TABLE Mista (Data TEXT, Cod TEXT, Qta INTEGER, Prezzo REAL, Varie);");
    for (quint32 seed = 1; seed <= 150; ++seed) {
        QRandomGenerator rng(seed);
        // Growing and shrinking, so the next snapshot is sized from one of another size.
        if (rng.bounded(3) == 0)
            db.ExecuteScript("DELETE FROM Mista WHERE rowid % 2 = 0;");
        QString script;
        for (int i = rng.bounded(40); i > 0; --i) {
            QStringList values;
            for (int c = 0; c < 5; ++c)
                values << literal(rng);
            script += "INSERT INTO Mista VALUES (" + values.join(',') + ");";
        }
        db.ExecuteScript(script);
        for (const QString sql : {"SELECT * FROM Mista", "SELECT Varie, Data FROM Mista WHERE Qta IS NOT NULL ORDER BY Cod",
                                  "SELECT Count(*) AS N, Max(Varie) AS M FROM Mista"}) {
            const QString what = QStringLiteral("seed %1, %2").arg(seed).arg(sql);
            store::Recordset fast = db.OpenRecordset(sql);
            store::Recordset plain = db.OpenRecordsetPlain(sql);
            expectSame(fast, plain, what);
            if (fast.Updatable() && fast.RecordCount() > 0) {
                // Written through to the row the packed cursor kept the rowid of.
                fast.SetAbsolutePosition(rng.bounded(fast.RecordCount()));
                fast.Edit();
                fast.SetField(fast.FieldName(fast.FieldCount() - 1), QStringLiteral("S%1").arg(seed));
                fast.Update();
                store::Recordset after = db.OpenRecordsetPlain(sql);
                expectSame(fast, after, what + " after an update");
            }
        }
    }
}
