// The three writers on one hand-made portfolio, read back from the files they leave.
#include "export/Esportazione.h"
#include "export/Xlsx.h"
#include "store/Database.h"
#include "store/Delivered.h"
#include "support/Fixture.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace testing_support;
using esporta::Tabella;

namespace {

// Records what the window would show, in order.
class Registro : public esporta::Avanzamento {
public:
    void MostraBarra(bool visibile) override { eventi << (visibile ? "barra" : "nascosta"); }
    void Massimo(int massimo) override { eventi << QStringLiteral("max %1").arg(massimo); }
    void AvanzaProgresso() override { eventi << "passo"; }
    void Etichetta(Tabella t, const QString& testo) override
    {
        eventi << esporta::NomeTabella(t) + "=" + testo;
        etichette[esporta::NomeTabella(t)] = testo;
    }
    QStringList eventi;
    QHash<QString, QString> etichette;
};

class EsportaFileTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        portafoglio = folder.NewPortfolio();
        db.Open(portafoglio);
        // Out of date order on purpose: the text sorts by date, the workbook doesn't.
        chiusa("'17/01/2003',6,'DAY','ENI','Eni \"spa\"',10.5,50,13,125,23.81,6.25,NULL,NULL");
        chiusa("'15/01/2003',4,'SWING','TIM','Città € ł',0.30000000000000004,1000,1.9999,-100.1,-0.01,123456789012.5,'E1',1.95");
        eseguito("'20/01/2003','Sell','DAY','ENI',NULL,50,13,650,'E1',NULL");
        eseguito("'13/01/2003','Buy','DAY','ENI','Eni spa',100,10.5,1050,'NE',10.5");
        posizione("'DAY','ENI','Eni spa',50,10.5,525,3.125");
        posizione("'SWING','12345','Numero',1000,0.25,250,5");
        posizione("'SWING','1/2/2003','Data',10,2,20,1");
    }
    void chiusa(const QString& values)
    {
        db.Execute("INSERT INTO OperazioniChiuse (Data, giornoDiSettimana, System, Cod, Titolo, PzoCarico, Qta, Prezzo, GP,"
                   " GPPercentuale, Commissioni, Errore, PrezzoOttimale) VALUES (" + values + ")");
    }
    void eseguito(const QString& values)
    {
        db.Execute("INSERT INTO Eseguiti (Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo, Errore, PrezzoOttimale)"
                   " VALUES (" + values + ")");
    }
    void posizione(const QString& values)
    {
        db.Execute("INSERT INTO Portafoglio (System, Cod, Titolo, Qta, PzoCarico, Importo, Commissioni) VALUES (" + values + ")");
    }
    QString logo() const { return folder.File(store::kLogoFile); }
    QString xlsx(const esporta::Scelta& scelta)
    {
        const QString file = folder.File("dati.xlsx");
        esporta::EsportaXls(db, file, scelta, logo(), registro);
        return file;
    }
    static QStringList tabelle(const QString& file)
    {
        store::Database d;
        d.Open(file);
        return Rows(d, "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name");
    }

    ProgramFolder folder;
    QString portafoglio;
    store::Database db;
    Registro registro;
};

} // namespace

TEST_F(EsportaFileTest, TextMatchesTheHandWrittenFileByteForByte)
{
    const QString file = folder.File("dati.csv");
    esporta::EsportaCsv(db, file, {true, true, true}, registro);
    EXPECT_EQ(FileBytes(file), FileBytes(qEnvironmentVariable("QUORVEL_TEST_DATA") + "/export/tre-tabelle.csv"));
    // One more than the records; the bar's maximum is each table's count.
    EXPECT_EQ(registro.eventi.mid(0, 7), (QStringList{"barra", "OperazioniChiuse=", "Eseguiti=", "Portafoglio=", "max 2",
                                                      "passo", "passo"}));
    EXPECT_EQ(registro.eventi.mid(7), (QStringList{"OperazioniChiuse=3", "max 2", "passo", "passo", "Eseguiti=3", "max 3",
                                                   "passo", "passo", "passo", "Portafoglio=4", "nascosta"}));
}

TEST_F(EsportaFileTest, TextOfAnEmptyTableAndOfUnchosenOnes)
{
    db.Execute("DELETE * FROM Eseguiti");
    const QString file = folder.File("dati.csv");
    QFile old(file);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write(QByteArray(5000, 'x')); // replaced, not overwritten in place
    old.close();
    esporta::EsportaCsv(db, file, {false, true, false}, registro);
    EXPECT_EQ(FileBytes(file), QByteArray("\"Quorvel - Tabella Operazioni Eseguiti \"\r\n\r\n"
                                          "\"Data\",\"Tipo\",\"System\",\"Cod\",\"Titolo\",\"Quantit\xe0 \",\"Prezzo\","
                                          "\"Errore\",\"PzoOttimale\"\r\n\r\n\r\n"));
    EXPECT_EQ(registro.etichette["Eseguiti"], "1");
    EXPECT_FALSE(registro.eventi.join(' ').contains("max")); // the bar keeps its maximum
}

TEST_F(EsportaFileTest, WorkbookSheetsFormatsAndValuesReadBack)
{
    const Xlsx x(xlsx({true, true, true}));
    EXPECT_EQ(x.Fogli(), (QStringList{"OperazioniChiuse", "Eseguiti", "Portafoglio"}));
    EXPECT_EQ(x.FoglioAttivo(), 0);
    EXPECT_EQ(registro.etichette["OperazioniChiuse"], "2");
    EXPECT_EQ(registro.etichette["Eseguiti"], "2");
    EXPECT_EQ(registro.etichette["Portafoglio"], "3");

    for (int n = 1; n <= 3; ++n) {
        SCOPED_TRACE(n);
        const QString sheet = x.Foglio(n);
        // Objects, contents and scenarios protected, no password; rows 1 and 2 frozen; A3 selected.
        EXPECT_TRUE(sheet.contains("<sheetProtection sheet=\"1\" objects=\"1\" scenarios=\"1\"/>"));
        EXPECT_TRUE(sheet.contains("<pane ySplit=\"2\" topLeftCell=\"A3\" activePane=\"bottomLeft\" state=\"frozen\"/>"));
        EXPECT_TRUE(sheet.contains("<selection pane=\"bottomLeft\" activeCell=\"A3\" sqref=\"A3\"/>"));
        EXPECT_TRUE(sheet.contains(QRegularExpression("<row r=\"1\"[^>]* ht=\"27\" customHeight=\"1\"")));
        EXPECT_EQ(sheet.contains("tabSelected=\"1\""), n == 1);
        EXPECT_TRUE(sheet.contains("<drawing r:id="));

        // The black band and the grey header band reach L, whatever the table's width; M is no part of them.
        const XlsxStile a1 = x.Stile(x.Cella(n, "A1").stile);
        EXPECT_EQ(a1.fill, "000000");
        EXPECT_TRUE(a1.locked);
        EXPECT_EQ(a1.numFmt, "dd/mm/yy");
        const XlsxStile l1 = x.Stile(x.Cella(n, "L1").stile);
        EXPECT_EQ(l1.fill, "000000");
        EXPECT_TRUE(l1.locked);
        const XlsxCella d1 = x.Cella(n, "D1");
        const XlsxStile titolo = x.Stile(d1.stile);
        EXPECT_EQ(titolo.font, "Arial Black");
        EXPECT_EQ(titolo.size, 16);
        EXPECT_EQ(titolo.color, "C0C0C0");
        EXPECT_EQ(titolo.fill, "000000");
        EXPECT_TRUE(titolo.locked);
        for (const char* ref : {"A2", "F2", "L2"}) {
            const XlsxStile h = x.Stile(x.Cella(n, ref).stile);
            EXPECT_TRUE(h.bold) << ref;
            EXPECT_EQ(h.fill, "808080") << ref;
            EXPECT_EQ(h.color, "FFFFFF") << ref;
            EXPECT_FALSE(h.locked) << ref;
        }
        EXPECT_EQ(x.Stile(x.Cella(n, "A2").stile).numFmt, "dd/mm/yy");
        EXPECT_FALSE(x.Cella(n, "M1").esiste);
        EXPECT_FALSE(x.Cella(n, "M2").esiste);
        // Every other cell unlocked, column A in the short date format.
        EXPECT_EQ(x.Stile(x.StileColonna(n, 1)).numFmt, "dd/mm/yy");
        for (int col : {1, 2, 12, 13, 16384})
            EXPECT_FALSE(x.Stile(x.StileColonna(n, col)).locked) << col;
    }

    // Closed operations in the table's order, dates as dates, numbers as numbers.
    EXPECT_EQ(x.Cella(1, "D1").valore, "Quorvel Tabella operazioni chiuse");
    QStringList intestazioni;
    for (const char* ref : {"A2", "B2", "C2", "D2", "E2", "F2", "G2", "H2", "I2", "J2", "K2", "L2"})
        intestazioni << x.Cella(1, ref).valore;
    EXPECT_EQ(intestazioni, (QStringList{"Data", "System", "Cod", "Titolo", "PzoCarico", "Quantità", "Prezzo",
                                         "Commissioni", "GP", "GPPercentuale", "Errore", "PzoOttimale"}));
    const XlsxCella a3 = x.Cella(1, "A3");
    EXPECT_EQ(a3.tipo, "n");
    EXPECT_EQ(a3.valore.toDouble(), SerialeExcel(2003, 1, 17)); // 37638
    EXPECT_EQ(x.Stile(a3.stile).numFmt, "dd/mm/yy");
    EXPECT_FALSE(x.Stile(a3.stile).locked);
    EXPECT_EQ(x.Cella(1, "D3").valore, "Eni \"spa\"");
    EXPECT_EQ(x.Cella(1, "D4").valore, "Città € ł");
    EXPECT_EQ(x.Cella(1, "E4").tipo, "n");
    EXPECT_DOUBLE_EQ(x.Cella(1, "E4").valore.toDouble(), 0.1 + 0.2);
    EXPECT_DOUBLE_EQ(x.Cella(1, "H4").valore.toDouble(), 123456789012.5);
    EXPECT_DOUBLE_EQ(x.Cella(1, "I4").valore.toDouble(), -100.1);
    EXPECT_EQ(x.Cella(1, "K4").valore, "E1");
    EXPECT_FALSE(x.Cella(1, "K3").esiste); // a null leaves the cell empty
    EXPECT_FALSE(x.Cella(1, "A5").esiste);

    EXPECT_EQ(x.Cella(2, "D1").valore, "Quorvel Tabella eseguiti");
    EXPECT_EQ(x.Cella(2, "D2").valore, "Codice");
    EXPECT_EQ(x.Cella(2, "I2").valore, "Prezzo ottimale");
    EXPECT_EQ(x.Cella(2, "A3").valore.toDouble(), SerialeExcel(2003, 1, 20));
    EXPECT_EQ(x.Cella(2, "H3").valore, "E1"); // the workbook keeps Errore, the text doesn't

    // Column A of the positions is a text code under the date format: what looks like a number or a date becomes one.
    EXPECT_EQ(x.Cella(3, "D1").valore, "Quorvel Tabella portafoglio");
    EXPECT_EQ(x.Cella(3, "F2").valore, "Commis.");
    EXPECT_EQ(x.Cella(3, "A3").tipo, "s");
    EXPECT_EQ(x.Cella(3, "A3").valore, "ENI");
    EXPECT_EQ(x.Cella(3, "A4").tipo, "n");
    EXPECT_EQ(x.Cella(3, "A4").valore, "12345");
    EXPECT_EQ(x.Stile(x.Cella(3, "A4").stile).numFmt, "dd/mm/yy");
    EXPECT_EQ(x.Cella(3, "A5").valore.toDouble(), SerialeExcel(2003, 2, 1));

    // The logo: one picture, anchored at A1 of each sheet.
    EXPECT_EQ(x.Parte("xl/media/image1.png"), FileBytes(logo()));
    EXPECT_TRUE(x.Parte("xl/drawings/drawing3.xml").contains("<xdr:from><xdr:col>0</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>0</xdr:row>"));

    // The bar: shown, one step a record, the maximum per table, hidden at the end.
    EXPECT_EQ(registro.eventi, (QStringList{"barra", "max 2", "passo", "passo", "OperazioniChiuse=2", "max 2", "passo",
                                            "passo", "Eseguiti=2", "max 3", "passo", "passo", "passo", "Portafoglio=3",
                                            "nascosta"}));
}

TEST_F(EsportaFileTest, WorkbookChosenSheetsTakeTheFirstDefaultPlaces)
{
    posizione("'SWING','31/12/1899','Vecchio',1,1,1,0"); // before the workbook's first day
    const Xlsx soloPortafoglio(xlsx({false, false, true}));
    EXPECT_EQ(soloPortafoglio.Cella(1, "A6").tipo, "s");
    EXPECT_EQ(soloPortafoglio.Cella(1, "A6").valore, "31/12/1899");
    EXPECT_EQ(soloPortafoglio.Fogli(), (QStringList{"Portafoglio", "Foglio2", "Foglio3"}));
    EXPECT_EQ(soloPortafoglio.FoglioAttivo(), 0);
    EXPECT_TRUE(soloPortafoglio.Foglio(1).contains("tabSelected=\"1\""));
    EXPECT_EQ(soloPortafoglio.CelleConValore(2), 0);
    EXPECT_FALSE(soloPortafoglio.Foglio(2).contains("<drawing"));
    EXPECT_FALSE(soloPortafoglio.Foglio(3).contains("sheetProtection"));

    db.Execute("DELETE * FROM Eseguiti");
    registro.eventi.clear();
    const Xlsx senzaChiuse(xlsx({false, true, true}));
    EXPECT_EQ(senzaChiuse.Fogli(), (QStringList{"Eseguiti", "Portafoglio", "Foglio3"}));
    // The empty table: logo, title, headers, no records, a label of 0 and the bar's maximum untouched.
    EXPECT_EQ(senzaChiuse.Cella(1, "D1").valore, "Quorvel Tabella eseguiti");
    EXPECT_EQ(senzaChiuse.Cella(1, "A2").valore, "Data");
    EXPECT_FALSE(senzaChiuse.Cella(1, "A3").esiste);
    EXPECT_TRUE(senzaChiuse.Foglio(1).contains("<drawing"));
    EXPECT_EQ(registro.eventi.mid(0, 3), (QStringList{"barra", "Eseguiti=0", "max 4"}));
}

TEST_F(EsportaFileTest, WorkbookFailureLeavesTheEmptyWorkbook)
{
    QFile::remove(logo());
    EXPECT_THROW(xlsx({true, true, true}), esporta::ErroreEsportazione);
    const Xlsx x(folder.File("dati.xlsx"));
    EXPECT_EQ(x.Fogli(), (QStringList{"Foglio1", "Foglio2", "Foglio3"}));
    for (int n = 1; n <= 3; ++n)
        EXPECT_EQ(x.CelleConValore(n), 0);
}

TEST_F(EsportaFileTest, DatabaseCopyKeepsTheChosenTablesAndReopensThePortfolio)
{
    db.Execute("INSERT INTO Conto (Data, Tipo, Importo, Descrizione) VALUES ('02/01/2003','Versamento',5000,'.')");
    const QStringList eseguiti = Rows(db, "SELECT * FROM Eseguiti ORDER BY ID");
    const QString copia = folder.File("copia.db");
    esporta::EsportaMdb(db, portafoglio, copia, {false, true, true}, registro);

    EXPECT_EQ(db.Path(), portafoglio);
    EXPECT_EQ(registro.eventi, (QStringList{"Eseguiti=2", "Portafoglio=3"}));
    EXPECT_EQ(tabelle(copia), (QStringList{"Conto", "Eseguiti", "Portafoglio"}));
    EXPECT_EQ(tabelle(portafoglio),
              (QStringList{"Conto", "Eseguiti", "EseguitiBackup", "EseguitiTemp", "OperazioniChiuse", "Portafoglio"}));
    store::Database d;
    d.Open(copia);
    EXPECT_EQ(Rows(d, "SELECT * FROM Eseguiti ORDER BY ID"), eseguiti);
    EXPECT_EQ(Rows(d, "SELECT Importo FROM Conto"), QStringList{"5000"});
    // The dropped tables leave no free pages behind.
    EXPECT_EQ(Rows(d, "PRAGMA freelist_count"), QStringList{"0"});
    d.Close();
    EXPECT_FALSE(QFile::exists(copia + "-wal"));

    // An empty chosen table counts 0.
    db.Execute("DELETE * FROM OperazioniChiuse");
    registro.eventi.clear();
    esporta::EsportaMdb(db, portafoglio, folder.File("vuota.db"), {true, false, false}, registro);
    EXPECT_EQ(registro.eventi, QStringList{"OperazioniChiuse=0"});
    EXPECT_EQ(tabelle(folder.File("vuota.db")), (QStringList{"Conto", "OperazioniChiuse"}));
}

TEST_F(EsportaFileTest, DatabaseCopyFailureLeavesTheCopyOpen)
{
    // A portfolio without the working tables: the first drop fails with the copy open.
    db.Execute("DROP TABLE EseguitiBackup");
    const QString copia = folder.File("copia.db");
    EXPECT_THROW(esporta::EsportaMdb(db, portafoglio, copia, {true, true, true}, registro), store::DbError);
    EXPECT_EQ(db.Path(), copia);
    db.Open(portafoglio);
    EXPECT_EQ(Rows(db, "SELECT Cod FROM Portafoglio ORDER BY rowid"), (QStringList{"ENI", "12345", "1/2/2003"}));
}
