// The statements as the windows write them, and what SQLite is given.
#include "store/Dialect.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using store::ToSqlite;

TEST(Dialect, StatementsAsTheWindowsWriteThemBecomeSqlite)
{
    const QList<std::pair<QString, QStringList>> cases = {
        {"DELETE * FROM Portafoglio WHERE Cod = 'ENI'", {"DELETE FROM Portafoglio WHERE Cod = 'ENI'"}},
        {"DROP TABLE Eseguiti, OperazioniChiuse", {"DROP TABLE Eseguiti", "DROP TABLE OperazioniChiuse"}},
        // Closing row: no blank before VALUES, date first.
        {"INSERT INTO OperazioniChiuse (Data ,giornoDiSettimana ,System)VALUES ('17/01/2003',6,'DAY')",
         {"INSERT INTO OperazioniChiuse (Data ,giornoDiSettimana ,System)VALUES ('2003-01-17',6,'DAY')"}},
        // A short date in a text column stays text.
        {"INSERT INTO Conto (Data, Tipo, Descrizione) VALUES ('01/02/2004','Versamento','01/02/2004')",
         {"INSERT INTO Conto (Data, Tipo, Descrizione) VALUES ('2004-02-01','Versamento','01/02/2004')"}},
        {"UPDATE Eseguiti SET Data = '05/06/2007', Tipo ='Sell'  WHERE ID = 12",
         {"UPDATE Eseguiti SET Data = '2007-06-05', Tipo ='Sell'  WHERE ID = 12"}},
        // Not a date: left for the engine to refuse.
        {"UPDATE Eseguiti SET Data = '31/02/2007'", {"UPDATE Eseguiti SET Data = '31/02/2007'"}},
        // Ordered selects of one table keep record order for ties.
        {"SELECT *  FROM Eseguiti ORDER BY Data", {"SELECT *  FROM Eseguiti ORDER BY Data, rowid"}},
        {"SELECT  * FROM Errori ORDER BY Contatore DESC", {"SELECT  * FROM Errori ORDER BY Contatore DESC, rowid"}},
    };
    for (const auto& [dialect, sqlite] : cases)
        EXPECT_EQ(ToSqlite(dialect), sqlite) << dialect.toStdString();
    // Without a column list the table's own order decides.
    const auto columnsOfEseguiti = [](const QString&) {
        return QStringList{"ID", "Data", "Tipo", "System", "Cod", "Titolo", "Qta", "Prezzo", "Importo", "Errore", "PrezzoOttimale"};
    };
    EXPECT_EQ(ToSqlite("INSERT INTO Eseguiti VALUES (1,'3/4/2005','Buy','DAY','X','X',1,1,1,'NE',1)", columnsOfEseguiti),
              QStringList{"INSERT INTO Eseguiti VALUES (1,'2005-04-03','Buy','DAY','X','X',1,1,1,'NE',1)"});

    // What SQLite accepts passes unchanged.
    for (const QString& sql : {"SELECT Sum([GP])AS Totale FROM OperazioniChiuse",
                               "SELECT [Data], [qta] FROM [Eseguiti] WHERE [Cod] = 'ENI'", "SELECT * FROM Errori WHERE False",
                               "INSERT INTO Errori SELECT * FROM ErroriDefault", "SELECT DISTINCT Cod FROM Eseguiti ORDER BY Cod",
                               "SELECT Cod, Sum(GP) AS T FROM OperazioniChiuse GROUP BY Cod ORDER BY Cod"})
        EXPECT_EQ(ToSqlite(sql), QStringList{sql}) << sql.toStdString();
}

namespace {
// The characters a view shows, read in this (instrumented) code rather than inside Qt.
std::u16string chars(QStringView v) { return {reinterpret_cast<const char16_t*>(v.data()), static_cast<std::size_t>(v.size())}; }
} // namespace

TEST(Dialect, LiteralsAreLiftedSoShapesAreShared)
{
    // Lifted from temporaries: the literals stay readable after the statements are gone.
    std::vector<store::Lifted> many;
    for (int i = 0; i < 50; ++i)
        many.push_back(store::LiftLiterals(QStringLiteral("UPDATE Errori SET  Contatore = %1 WHERE Cod ='E%1'").arg(i)));
    for (int i = 0; i < 50; ++i) {
        ASSERT_EQ(many[i].params.size(), 2u);
        EXPECT_EQ(many[i].shape, many[0].shape);
        EXPECT_EQ(chars(many[i].params[0].view), QString::number(i).toStdU16String());
        EXPECT_EQ(chars(many[i].params[1].text()), QString("E%1").arg(i).toStdU16String());
    }

    const store::Lifted n = store::LiftLiterals("UPDATE Portafoglio SET Qta = 150,Importo =1650.5 WHERE Cod ='X' AND Icone32 = 1e3");
    EXPECT_EQ(n.shape, "UPDATE Portafoglio SET Qta = ?,Importo =? WHERE Cod =? AND Icone32 = ?");
    ASSERT_EQ(n.params.size(), 4u);
    EXPECT_EQ(n.params[0].kind, store::Literal::Kind::Integer);
    EXPECT_EQ(n.params[1].kind, store::Literal::Kind::Real);
    EXPECT_EQ(n.params[3].kind, store::Literal::Kind::Real);

    // Column numbers of ORDER BY are not values.
    EXPECT_EQ(store::LiftLiterals("SELECT Cod, Qta FROM Portafoglio ORDER BY 2").shape,
              "SELECT Cod, Qta FROM Portafoglio ORDER BY 2");
}
