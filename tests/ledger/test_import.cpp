// Day files read into the staging table, and the row-by-row import, without a window.
#include "ledger/FoglioEseguiti.h"
#include "ledger/Import.h"

#include "support/Cartella.h"
#include "support/Fixture.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "platform/Numbers.h"

#include <gtest/gtest.h>

#include <random>

using namespace testing_support;

namespace {

const QByteArray kIntestazione = "Account,Time,Exchange,Route,Side,Qty,Symbol,Price,Status,System,OrderId\r\n";

class ImportTest : public ::testing::Test {
protected:
    void SetUp() override { exe.Open(folder.NewPortfolio()); }
    QString file(const QString& name, const QByteArray& bytes) { return WriteFile(QDir(files.path()).filePath(name), bytes); }
    QStringList staged() { return Rows(exe, "SELECT Data, Tipo, Qta, Cod, Titolo, Prezzo, System FROM EseguitiTemp"); }
    QStringList eseguiti()
    {
        return Rows(exe, "SELECT ID, Data, Tipo, Qta, Cod, Titolo, Prezzo, Importo, System, Errore, PrezzoOttimale FROM Eseguiti");
    }

    ProgramFolder folder;
    QTemporaryDir files;
    store::Database exe;
};

} // namespace

TEST_F(ImportTest, ReadsTheDayFileAsItStandsDatedByItsName)
{
    // Eight digits before a three-letter extension; only the places count, whatever stands before them.
    EXPECT_EQ(ledger::DataDaNomeFile("/home/u/RealTick/RT_20030117.csv"), "17/01/2003");
    EXPECT_EQ(ledger::DataDaNomeFile("/d/20040229.CSV"), "29/02/2004");
    EXPECT_EQ(ledger::DataDaNomeFile("/d/ordini del 19991231.txt"), "31/12/1999");

    EXPECT_TRUE(ledger::LeggiRealTick(exe, file("RT20030117.csv",
                                                kIntestazione
                                                    + "U1,09:01:02,MTA,DIR,BUY,100,ENI,10.00125,FILLED,DAY,1\r\n"
                                                      "U1,09:05:00,MTA,DIR,Sell,40,ENI,12,FILLED,SWING,2,extra,fields\r\n"
                                                      "U1,10:00:00,MTA,DIR,BUY,1e3,F.I.A.T, 3.5 ,FILLED,DAY,3\r\n")));
    // The date from the name, "ND" as title, every field as the file has it.
    EXPECT_EQ(staged(), (QStringList{"17/01/2003|BUY|100|ENI|ND|10,00125|DAY", "17/01/2003|Sell|40|ENI|ND|12|SWING",
                                     "17/01/2003|BUY|1000|F.I.A.T|ND|3,5|DAY"}));

    // A second file appends; one without the final CR LF loses its last line.
    exe.Execute("DELETE * FROM EseguitiTemp");
    EXPECT_TRUE(ledger::LeggiRealTick(exe, file("RT20030120.csv", kIntestazione + "a,b,c,d,BUY,5,TIM,1,e,DAY,f\r\n"
                                                                                  "a,b,c,d,BUY,6,TIM,1,e,DAY,f")));
    EXPECT_EQ(staged(), QStringList{"20/01/2003|BUY|5|TIM|ND|1|DAY"});

    // Bytes that are not UTF-8 are the Western code page, typographic quote and euro included.
    exe.Execute("DELETE * FROM EseguitiTemp");
    EXPECT_TRUE(ledger::LeggiRealTick(exe, file("RT20030124.csv", kIntestazione + "a,b,c,d,BUY,5,D\x92OR\xC9,1,e,\x80URO,f\r\n")));
    EXPECT_EQ(staged(), QStringList{QString::fromUtf8("24/01/2003|BUY|5|D’ORÉ|ND|1|€URO")});

    // Heading and final empty line, an empty file, LF line ends: nothing staged, nothing wrong.
    exe.Execute("DELETE * FROM EseguitiTemp");
    EXPECT_TRUE(ledger::LeggiRealTick(exe, file("RT20030121.csv", kIntestazione)));
    EXPECT_TRUE(ledger::LeggiRealTick(exe, file("RT20030122.csv", "")));
    EXPECT_TRUE(ledger::LeggiRealTick(exe, file("RT20030123.csv", "h\na,b,c,d,BUY,5,TIM,1,e,DAY,f\n")));
    EXPECT_EQ(staged(), QStringList{});
}

TEST_F(ImportTest, BadInputStopsTheFileWithTheEarlierLinesStagedAndLeavesEseguitiAlone)
{
    AddTrade(exe, "10/01/2003", "Buy", "DAY", "ENI", 100, 10);
    const QStringList prima = eseguiti();
    const QByteArray buona = "a,b,c,d,BUY,5,TIM,1,e,DAY,f\r\n";
    struct Caso {
        const char* name;
        QByteArray bytes;
        int staged;
    };
    const QList<Caso> casi = {
        {"short line", kIntestazione + buona + "a,b,c,d,BUY,5,TIM,1,e,DAY\r\n" + buona, 1},
        {"empty line", kIntestazione + buona + "\r\n" + buona + "\r\n", 1},
        {"quantity no number", kIntestazione + buona + "a,b,c,d,BUY,cento,TIM,1,e,DAY,f\r\n", 1},
        {"empty price", kIntestazione + "a,b,c,d,BUY,5,TIM,,e,DAY,f\r\n", 0},
        {"apostrophe in code", kIntestazione + buona + "a,b,c,d,BUY,5,L'OREAL,1,e,DAY,f\r\n", 1},
        {"statement in a field", kIntestazione + "a,b,c,d,BUY,5,TIM,1,e,x');DELETE FROM Eseguiti;--,f\r\n", 0},
        {"binary", kIntestazione + QByteArray("\x00\xff\xfe\x01,\x02\r\n\x89PNG\r\n\x1a\n", 16) + buona, 0},
        {"10 MB line", kIntestazione + buona + QByteArray(10 << 20, 'x') + "\r\n", 1},
    };
    for (const Caso& c : casi) {
        exe.Execute("DELETE * FROM EseguitiTemp");
        EXPECT_FALSE(ledger::LeggiRealTick(exe, file("RT20030117.csv", c.bytes))) << c.name;
        EXPECT_EQ(staged().size(), c.staged) << c.name;
        EXPECT_EQ(eseguiti(), prima) << c.name;
    }

    // A name without a date, a file that isn't there or is a folder: nothing staged.
    for (const char* bad : {"/d/20030229.csv", // no such day
                            "/d/20031301.csv", "/d/ordini.csv", "/d/2003O117.csv", "/d/20030117.xlsx", "0117.csv", ""})
        EXPECT_THROW(ledger::DataDaNomeFile(bad), platform::Failure) << bad;
    exe.Execute("DELETE * FROM EseguitiTemp");
    EXPECT_FALSE(ledger::LeggiRealTick(exe, file("RealTick.csv", kIntestazione + buona + buona)));
    EXPECT_FALSE(ledger::LeggiRealTick(exe, QDir(files.path()).filePath("RT20030199.csv")));
    EXPECT_FALSE(ledger::LeggiRealTick(exe, files.path()));
    EXPECT_EQ(staged(), QStringList{});
    EXPECT_EQ(eseguiti(), prima);
}

TEST_F(ImportTest, EachRowWithItsBackupCheckAndQuestionAndAFailureHalfWayChangesNothing)
{
    AddTrade(exe, "10/01/2003", "Buy", "DAY", "ENI", 100, 10);
    ASSERT_TRUE(ledger::LeggiRealTick(exe, file("RT20030117.csv",
                                               kIntestazione
                                                   // half to even at 4 and at 1 decimal: 10.0012 and 3 x 0.35 = 1.0
                                                   + "a,b,c,d,BUY,100,ENI,10.00125,e,DAY,f\r\n"
                                                     "a,b,c,d,BUY,3,TIM,0.35,e,DAY,f\r\n"
                                                     "a,b,c,d,SELL,500,ENI,11,e,DAY,f\r\n" // more than held: no
                                                     "a,b,c,d,SELL,50,ENI,11.5,e,DAY,f\r\n"
                                                     "a,b,c,d,SELL,9,TIM,0.4,e,DAY,f\r\n" // more than held: yes
                                                     "a,b,c,d,BUY,1,ENI,12,e,DAY,f\r\n")));
    QStringList domande;
    QList<int> inizio;
    int righe = 0;
    ledger::ImportaEseguiti importa;
    importa.inizio = [&](int n) { inizio << n; };
    importa.rigaInserita = [&]() { ++righe; };
    importa.importareComunque = [&](const QString& d) {
        domande << d;
        return d.contains("TIM");
    };
    EXPECT_EQ(importa.Esegui(exe), 6);
    EXPECT_EQ(inizio, QList<int>{6});
    EXPECT_EQ(righe, 6);
    // The row kept on yes makes the list unsound: every later row brings the question back.
    EXPECT_EQ(domande, (QStringList{"Errore nei dati ENI disponibili solo 200 pezzi importare comunque?",
                                    "Errore nei dati TIM disponibili solo 3 pezzi importare comunque?",
                                    "Errore nei dati TIM disponibili solo 3 pezzi importare comunque?"}));
    // 100 x 10.00125 = 1000.125 -> 1000.1; 50 x 11.5 = 575; 9 x 0.4 = 3.6. The refused sale's ID is given again.
    EXPECT_EQ(eseguiti(), (QStringList{"1|10/01/2003|Buy|100|ENI|ENI spa|10|1000|DAY|NE|10",
                                       "2|17/01/2003|BUY|100|ENI|ND|10,0012|1000,1|DAY|NE|10,0012",
                                       "3|17/01/2003|BUY|3|TIM|ND|0,35|1|DAY|NE|0,35",
                                       "4|17/01/2003|SELL|50|ENI|ND|11,5|575|DAY|NE|11,5",
                                       "5|17/01/2003|SELL|9|TIM|ND|0,4|3,6|DAY|NE|0,4",
                                       "6|17/01/2003|BUY|1|ENI|ND|12|12|DAY|NE|12"}));
    // The backup is the ledger before the last row.
    EXPECT_EQ(Rows(exe, "SELECT ID FROM EseguitiBackup"), (QStringList{"1", "2", "3", "4", "5"}));

    // Nothing staged: nothing done, no bar.
    exe.Execute("DELETE * FROM EseguitiTemp");
    inizio.clear();
    EXPECT_EQ(importa.Esegui(exe), 0);
    EXPECT_TRUE(inizio.isEmpty());

    // A failure half way leaves Eseguiti as before: a doubled apostrophe stages a code whose
    // own statement then breaks.
    const QStringList prima = eseguiti();
    ASSERT_TRUE(ledger::LeggiRealTick(exe, file("RT20030117.csv", kIntestazione + "a,b,c,d,BUY,1,TIM,1,e,DAY,f\r\n"
                                                                                  "a,b,c,d,BUY,1,L''OREAL,1,e,DAY,f\r\n")));
    EXPECT_THROW(importa.Esegui(exe), store::DbError);
    EXPECT_EQ(eseguiti(), prima);

    // A price the file left empty can't be rounded.
    exe.Execute("DELETE * FROM EseguitiTemp");
    ASSERT_TRUE(ledger::LeggiRealTick(exe, file("RT20030117.csv", kIntestazione + "a,b,c,d,BUY,1,TIM,NULL,e,DAY,f\r\n")));
    EXPECT_THROW(importa.Esegui(exe), platform::Failure);
    EXPECT_EQ(eseguiti(), prima);
}

namespace {

// Seeded ledgers that meet every rule of the check: case of types and codes, the blank code,
// equal dates, fractional and zero quantities, sales of codes never bought, and every fifth
// seed a history near the limit of codes.
struct Caso {
    struct Riga {
        QDate data;
        QString tipo, cod;
        double qta;
    };
    QList<Riga> esistenti, importati;
    bool realTick = false;

    explicit Caso(unsigned seed)
    {
        std::mt19937 rng(seed);
        const auto tra = [&rng](int n) { return static_cast<int>(rng() % static_cast<unsigned>(n)); };
        const bool limite = seed % 5 == 0;
        realTick = seed % 3 == 0;
        const QStringList tipi = {"Buy", "BUY", "buy", "Buy", "Sell", "SELL", "sell", "x", ""};
        const QStringList pochi = {"ENI", "eni", "TIM", "", "F.I", "ENI"};
        const auto riga = [&](bool esistente) {
            const QString cod = limite ? QStringLiteral("C%1").arg(esistente ? tra(99) : 90 + tra(15))
                                       : pochi[tra(static_cast<int>(pochi.size()))];
            const double qta = tra(4) == 0 ? tra(10) / 10.0 : 50.0 * tra(5);
            return Riga{QDate(2003, 1, 1).addDays(tra(12)), tipi[tra(static_cast<int>(tipi.size()))], cod, qta};
        };
        const int n = limite ? 100 + tra(20) : tra(25);
        for (int i = 0; i < n; ++i)
            esistenti << riga(true);
        // Near the limit the history buys each code first, so that the new codes decide.
        if (limite)
            for (int i = 0; i < 99; ++i)
                esistenti[i] = {QDate(2002, 12, 1), "Buy", QStringLiteral("C%1").arg(i), 500};
        for (int i = 1 + tra(limite ? 12 : 25); i > 0; --i)
            importati << riga(false);
    }
};

// One run of an import on its own copy of a portfolio: its questions, its failure, then
// everything it left.
QStringList importa(store::Database& db, const Caso& caso, unsigned seed, bool veloce)
{
    {
        store::Transaction tx(db);
        for (const char* t : {"Eseguiti", "EseguitiBackup", "EseguitiTemp"})
            db.Execute(QStringLiteral("DELETE * FROM %1").arg(QLatin1String(t)));
        for (const Caso::Riga& r : caso.esistenti)
            AddTrade(db, num::DateText(r.data), r.tipo, "DAY", r.cod, r.qta, 2.5);
        tx.Commit();
    }
    QList<ledger::EseguitoImportato> staged;
    for (const Caso::Riga& r : caso.importati)
        staged << ledger::EseguitoImportato{r.data, r.tipo, "SWING", r.cod, "T'itolo", r.qta, 1.25, "EA", 1.5, 0};
    ledger::PreparaEseguiti(db, staged);

    QStringList esito;
    std::mt19937 risposte(seed * 7919);
    ledger::ImportaEseguiti imp;
    if (!caso.realTick)
        imp.inserimento = ledger::InsertComeInAnteprima;
    imp.importareComunque = [&](const QString& domanda) {
        esito << "domanda: " + domanda;
        return risposte() % 2 == 0;
    };
    try {
        veloce ? imp.EseguiVeloce(db) : imp.Esegui(db);
    } catch (const std::exception& ex) {
        esito << "fallimento: " + QString::fromStdString(ex.what());
    }
    for (const char* t : {"Eseguiti", "EseguitiBackup", "EseguitiTemp"})
        esito << t << Rows(db, QStringLiteral("SELECT * FROM %1").arg(QLatin1String(t)));
    return esito;
}

} // namespace

// The in-memory check must answer as the check over the table does, row after row.
TEST(ImportaVeloce, SameRowsIdsQuestionsFailuresAndTablesAsRowByRow)
{
    ProgramFolder folder;
    store::Database perRiga, inMemoria;
    perRiga.Open(folder.NewPortfolio("lento.qvp"));
    inMemoria.Open(folder.NewPortfolio("veloce.qvp"));
    // Thousands of commits: durability is not what this test is about.
    perRiga.ExecuteScript("PRAGMA synchronous=OFF");
    inMemoria.ExecuteScript("PRAGMA synchronous=OFF");
    int domande = 0, fallimenti = 0;
    for (unsigned seed = 1; seed <= 150; ++seed) {
        const Caso caso(seed);
        const QStringList lento = importa(perRiga, caso, seed, false);
        ASSERT_EQ(importa(inMemoria, caso, seed, true), lento) << "seed " << seed;
        domande += static_cast<int>(lento.filter(QRegularExpression("^domanda: ")).size());
        fallimenti += !lento.filter(QRegularExpression("^fallimento: ")).isEmpty();
    }
    // The seeds reach the questions and the limit of codes often enough to mean something.
    EXPECT_GT(domande, 300);
    EXPECT_GT(fallimenti, 5);
}

namespace {

// An "Eseguiti" sheet as the export lays it out, with these rows below its title and header.
QString foglioEseguiti(const QTemporaryDir& dir, const char* nome, const QList<QStringList>& righe,
                       const char* intestazione4 = "Codice")
{
    const QList<QStringList> testa = {
        {"", "", "", "Quorvel Tabella eseguiti"},
        {"Data", "Tipo", "System", intestazione4, "Titolo", "Quantità", "Prezzo", "Errore", "Prezzo ottimale"}};
    return WriteWorkbook(QDir(dir.path()).filePath(nome), {{"Eseguiti", testa + righe}});
}

} // namespace

TEST(FoglioEseguiti, TradesAsExportedAndClearWordsForWhatIsNot)
{
    QTemporaryDir dir;
    const QList<ledger::EseguitoImportato> letti = ledger::LeggiFoglioEseguiti(foglioEseguiti(
        dir, "buono.xlsx",
        {{"@20/01/2003", "Sell", "DAY", "#123", "@01/02/2003", "1,5", "#2.25", "EA", "#2.5"},
         {},
         {"@17/01/2003", "Buy", "SWING", "ENI", "", "#100", "#10.00125", "NE", ""},
         {"01/01/1899", "Buy", "DAY", "OLD", "Vecchio", "#1", "#1"}}));
    QStringList visti;
    for (const ledger::EseguitoImportato& e : letti)
        visti << QStringList{num::DateText(e.data), e.tipo, e.system, e.cod, e.titolo, num::Text(e.qta), num::Text(e.prezzo),
                             e.errore, num::Text(e.prezzoOttimale), QString::number(e.riga)}
                     .join('|');
    // In date order; numbers and dates that stand for texts come back as their text; an empty optimal price is the price.
    EXPECT_EQ(visti, (QStringList{"01/01/1899|Buy|DAY|OLD|Vecchio|1|1||1|6", "17/01/2003|Buy|SWING|ENI||100|10,00125|NE|10,00125|5",
                                  "20/01/2003|Sell|DAY|123|01/02/2003|1,5|2,25|EA|2,5|3"}));

    const QStringList buona = {"@17/01/2003", "Buy", "DAY", "ENI", "Eni", "#1", "#1", "NE", "#1"};
    struct Caso {
        QString file;
        const char* messaggio;
    };
    const QList<Caso> casi = {
        {foglioEseguiti(dir, "colonne.xlsx", {buona}, "Cod"), "Il foglio \"Eseguiti\" di colonne.xlsx non ha le colonne"},
        {foglioEseguiti(dir, "data.xlsx", {buona, {"ieri", "Buy", "DAY", "ENI", "Eni", "#1", "#1"}}),
         "Il foglio \"Eseguiti\" di data.xlsx, riga 4: data non valida."},
        {foglioEseguiti(dir, "qta.xlsx", {{"@17/01/2003", "Buy", "DAY", "ENI", "Eni", "cento", "#1"}}), "riga 3: quantità non valida."},
        {foglioEseguiti(dir, "prezzo.xlsx", {{"@17/01/2003", "Buy", "DAY", "ENI", "Eni", "#1"}}), "riga 3: prezzo non valido."},
        {QDir(dir.path()).filePath("manca.xlsx"), "non si può leggere"},
    };
    for (const Caso& c : casi) {
        try {
            ledger::LeggiFoglioEseguiti(c.file);
            ADD_FAILURE() << c.file.toStdString();
        } catch (const ledger::FileNonValido& e) {
            EXPECT_TRUE(QString::fromStdString(e.what()).contains(QString::fromUtf8(c.messaggio))) << e.what();
        }
    }
}
