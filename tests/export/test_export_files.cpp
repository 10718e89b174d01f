// The three writers on one hand-made portfolio, read back from the files they leave.
#include "export/Esportazione.h"
#include "export/Xlsx.h"
#include "store/Database.h"
#include "store/Delivered.h"
#include "support/Fixture.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

// What the window would show, in order.
class Registro : public esporta::Avanzamento {
public:
    void MostraBarra(bool visibile) override { eventi << (visibile ? "barra" : "nascosta"); }
    void Massimo(int massimo) override { eventi << QStringLiteral("max %1").arg(massimo); }
    void AvanzaProgresso() override { eventi << "passo"; }
    void Etichetta(esporta::Tabella t, const QString& testo) override { eventi << esporta::NomeTabella(t) + "=" + testo; }
    QStringList eventi;
};

class EsportaFileTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        portafoglio = folder.NewPortfolio();
        db.Open(portafoglio);
        // Out of date order: the text sorts by date, the workbook doesn't.
        riga("OperazioniChiuse (Data, giornoDiSettimana, System, Cod, Titolo, PzoCarico, Qta, Prezzo, GP, GPPercentuale,"
             " Commissioni, Errore, PrezzoOttimale)",
             {"'17/01/2003',6,'DAY','ENI','Eni \"spa\"',10.5,50,13,125,23.81,6.25,NULL,NULL",
              "'15/01/2003',4,'SWING','TIM','Città € ł',0.30000000000000004,1000,1.9999,-100.1,-0.01,123456789012.5,'E1',1.95"});
        riga("Eseguiti (Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo, Errore, PrezzoOttimale)",
             {"'20/01/2003','Sell','DAY','ENI',NULL,50,13,650,'E1',NULL", "'13/01/2003','Buy','DAY','ENI','Eni spa',100,10.5,1050,'NE',10.5"});
        riga("Portafoglio (System, Cod, Titolo, Qta, PzoCarico, Importo, Commissioni)",
             {"'DAY','ENI','Eni spa',50,10.5,525,3.125", "'SWING','12345','Numero',1000,0.25,250,5", "'SWING','1/2/2003','Data',10,2,20,1"});
    }
    void riga(const QString& tabella, const QStringList& righe)
    {
        for (const QString& values : righe)
            db.Execute("INSERT INTO " + tabella + " VALUES (" + values + ")");
    }
    QString xlsx(const esporta::Scelta& scelta)
    {
        esporta::EsportaXls(db, folder.File("dati.xlsx"), scelta, folder.File(store::kLogoFile), registro);
        return folder.File("dati.xlsx");
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
    esporta::EsportaCsv(db, folder.File("dati.csv"), {true, true, true}, registro);
    EXPECT_EQ(FileBytes(folder.File("dati.csv")), FileBytes(qEnvironmentVariable("QUORVEL_TEST_DATA") + "/export/tre-tabelle.csv"));
    // Labels emptied first, then one more than the records; the bar's maximum is each table's count.
    EXPECT_EQ(registro.eventi.join(' '), "barra OperazioniChiuse= Eseguiti= Portafoglio= max 2 passo passo OperazioniChiuse=3 "
                                         "max 2 passo passo Eseguiti=3 max 3 passo passo passo Portafoglio=4 nascosta");

    // An empty table: title, empty line, headers, two empty lines, a label of 1 and the maximum untouched.
    db.Execute("DELETE * FROM Eseguiti");
    registro.eventi.clear();
    esporta::EsportaCsv(db, folder.File("dati.csv"), {false, true, false}, registro);
    EXPECT_EQ(FileBytes(folder.File("dati.csv")), QByteArray("\"Quorvel - Tabella Operazioni Eseguiti \"\r\n\r\n"
                                                            "\"Data\",\"Tipo\",\"System\",\"Cod\",\"Titolo\",\"Quantit\xe0 \","
                                                            "\"Prezzo\",\"Errore\",\"PzoOttimale\"\r\n\r\n\r\n"));
    EXPECT_EQ(registro.eventi.join(' '), "barra OperazioniChiuse= Eseguiti= Portafoglio= Eseguiti=1 nascosta");
}

TEST_F(EsportaFileTest, WorkbookSheetsFormatsAndValuesReadBack)
{
    const Xlsx x(xlsx({true, true, true}));
    EXPECT_EQ(x.Fogli(), (QStringList{"OperazioniChiuse", "Eseguiti", "Portafoglio"}));
    EXPECT_EQ(registro.eventi.join(' '), "barra max 2 passo passo OperazioniChiuse=2 max 2 passo passo Eseguiti=2 "
                                         "max 3 passo passo passo Portafoglio=3 nascosta");
    for (int n = 1; n <= 3; ++n) {
        SCOPED_TRACE(n);
        const QString sheet = x.Foglio(n);
        // Objects, contents and scenarios protected without a password; rows 1 and 2 frozen; A3 selected.
        EXPECT_TRUE(sheet.contains("<sheetProtection sheet=\"1\" objects=\"1\" scenarios=\"1\"/>"));
        EXPECT_TRUE(sheet.contains("<pane ySplit=\"2\" topLeftCell=\"A3\" activePane=\"bottomLeft\" state=\"frozen\"/>"
                                   "<selection pane=\"bottomLeft\" activeCell=\"A3\" sqref=\"A3\"/>"));
        EXPECT_TRUE(sheet.contains(QRegularExpression("<row r=\"1\"[^>]* ht=\"27\" customHeight=\"1\"")));
        EXPECT_EQ(sheet.contains("tabSelected=\"1\""), n == 1);
        // Both bands reach L whatever the table's width, locked above and open below; column A has the short date.
        EXPECT_EQ(x.Cella(n, "A1").formato, "dd/mm/yy fill 000000 locked");
        EXPECT_EQ(x.Cella(n, "L1").formato, "General fill 000000 locked");
        EXPECT_EQ(x.Cella(n, "A2").formato, "dd/mm/yy bold fill 808080");
        EXPECT_EQ(x.Cella(n, "L2").formato, "General bold fill 808080");
        EXPECT_EQ(x.Cella(n, "M1").tipo + x.Cella(n, "M2").tipo, "--");
        EXPECT_EQ(x.FormatoColonna(n, 1), "dd/mm/yy");
        for (int col : {2, 12, 13, 16384})
            EXPECT_EQ(x.FormatoColonna(n, col), "General") << col;
        // The logo: one picture, at A1 of each sheet.
        EXPECT_TRUE(x.Parte(QString("xl/drawings/drawing%1.xml").arg(n)).contains("<xdr:from><xdr:col>0</xdr:col><xdr:colOff>0</xdr:colOff><xdr:row>0</xdr:row>"));
    }
    EXPECT_EQ(x.Parte("xl/media/image1.png"), FileBytes(folder.File(store::kLogoFile)));
    EXPECT_EQ(x.Cella(1, "D1").valore + "|" + x.Cella(1, "F2").valore, "Quorvel Tabella operazioni chiuse|Quantità");
    // Records in the table's order, dates as dates, numbers as numbers, a null as no cell.
    const XlsxCella a3 = x.Cella(1, "A3");
    EXPECT_EQ(a3.tipo + a3.formato, "ndd/mm/yy");
    EXPECT_EQ(a3.valore.toDouble(), SerialeExcel(2003, 1, 17)); // 37638
    EXPECT_EQ(x.Cella(1, "D3").valore, "Eni \"spa\"");
    EXPECT_EQ(x.Cella(1, "D4").valore, "Città € ł");
    EXPECT_EQ(x.Cella(1, "E4").tipo, "n");
    EXPECT_DOUBLE_EQ(x.Cella(1, "E4").valore.toDouble(), 0.1 + 0.2);
    EXPECT_DOUBLE_EQ(x.Cella(1, "H4").valore.toDouble(), 123456789012.5);
    EXPECT_EQ(x.Cella(1, "I4").valore, "-100.1");
    EXPECT_EQ(x.Cella(1, "K3").tipo, "-");

    EXPECT_EQ(x.Cella(2, "D1").valore + "|" + x.Cella(2, "I2").valore, "Quorvel Tabella eseguiti|Prezzo ottimale");
    EXPECT_EQ(x.Cella(2, "A3").valore.toDouble(), SerialeExcel(2003, 1, 20));
    EXPECT_EQ(x.Cella(2, "H3").valore, "E1"); // the workbook keeps Errore, the text doesn't

    // Column A of the positions is a text code under the date format: one that looks like a number or a date becomes one.
    EXPECT_EQ(x.Cella(3, "A3").tipo + x.Cella(3, "A3").valore, "sENI");
    EXPECT_EQ(x.Cella(3, "A4").tipo + x.Cella(3, "A4").valore + x.Cella(3, "A4").formato, "n12345dd/mm/yy");
    EXPECT_EQ(x.Cella(3, "A5").valore.toDouble(), SerialeExcel(2003, 2, 1));
}

TEST_F(EsportaFileTest, WorkbookChosenSheetsTakeTheFirstDefaultPlaces)
{
    riga("Portafoglio (System, Cod, Titolo, Qta, PzoCarico, Importo, Commissioni)", {"'SWING','31/12/1899','Vecchio',1,1,1,0"});
    const Xlsx soloPortafoglio(xlsx({false, false, true}));
    EXPECT_EQ(soloPortafoglio.Fogli(), (QStringList{"Portafoglio", "Foglio2", "Foglio3"}));
    EXPECT_EQ(soloPortafoglio.Cella(1, "A6").tipo + soloPortafoglio.Cella(1, "A6").valore, "s31/12/1899"); // before day 1
    EXPECT_FALSE(soloPortafoglio.Foglio(2).contains("<c "));
    EXPECT_FALSE(soloPortafoglio.Foglio(3).contains("<drawing"));

    // An empty table: logo, title, headers, no records, a label of 0 and the bar's maximum untouched.
    db.Execute("DELETE * FROM Eseguiti");
    registro.eventi.clear();
    const Xlsx senzaChiuse(xlsx({false, true, true}));
    EXPECT_EQ(senzaChiuse.Fogli(), (QStringList{"Eseguiti", "Portafoglio", "Foglio3"}));
    EXPECT_EQ(senzaChiuse.Cella(1, "D1").valore + "|" + senzaChiuse.Cella(1, "A2").valore, "Quorvel Tabella eseguiti|Data");
    EXPECT_EQ(senzaChiuse.Cella(1, "A3").tipo, "-");
    EXPECT_TRUE(senzaChiuse.Foglio(1).contains("<drawing"));
    EXPECT_EQ(registro.eventi.mid(0, 3).join(' '), "barra Eseguiti=0 max 4");
}

TEST_F(EsportaFileTest, DatabaseCopyKeepsTheChosenTablesAndOnlyTheirPages)
{
    db.Execute("INSERT INTO Conto (Data, Tipo, Importo, Descrizione) VALUES ('02/01/2003','Versamento',5000,'.')");
    const QString copia = folder.File("copia.db");
    esporta::EsportaMdb(db, portafoglio, copia, {false, true, true}, registro);
    EXPECT_EQ(db.Path(), portafoglio);
    EXPECT_EQ(registro.eventi.join(' '), "Eseguiti=2 Portafoglio=3");
    EXPECT_EQ(tabelle(copia).join(','), "Conto,Eseguiti,Portafoglio");
    EXPECT_EQ(tabelle(portafoglio).join(','), "Conto,Eseguiti,EseguitiBackup,EseguitiTemp,OperazioniChiuse,Portafoglio");
    store::Database d;
    d.Open(copia);
    EXPECT_EQ(Rows(d, "SELECT * FROM Eseguiti ORDER BY ID"), Rows(db, "SELECT * FROM Eseguiti ORDER BY ID"));
    EXPECT_EQ(Rows(d, "PRAGMA freelist_count"), QStringList{"0"}); // no pages of the dropped tables left
    d.Close();

    // An empty chosen table counts 0.
    db.Execute("DELETE * FROM OperazioniChiuse");
    registro.eventi.clear();
    esporta::EsportaMdb(db, portafoglio, folder.File("vuota.db"), {true, false, false}, registro);
    EXPECT_EQ(registro.eventi.join(' '), "OperazioniChiuse=0");

    // A portfolio without the working tables: the first drop fails and leaves the copy open.
    db.Execute("DROP TABLE EseguitiBackup");
    EXPECT_THROW(esporta::EsportaMdb(db, portafoglio, copia, {true, true, true}, registro), store::DbError);
    EXPECT_EQ(db.Path(), copia);
}
