// The three writers on one hand-made portfolio, read back from the files they leave, and
// the export window as a user drives it: the file dialog, the replace question, the counts
// on the labels, and the silent close on every failure.
#include "export/Esportazione.h"
#include "store/Database.h"
#include "store/Delivered.h"
#include "support/Programma.h"

#include <QDate>
#include <QFile>
#include <QFileDialog>
#include <QHash>
#include <QPointer>
#include <QProcess>
#include <QProgressBar>
#include <QXmlStreamReader>

#include <stdexcept>

using namespace testing_support;
using Module1::dbExe;

namespace {

QString attr(const QXmlStreamReader& x, const char* name) { return x.attributes().value(QLatin1String(name)).toString(); }

// The start elements of an XML text, each handed to `f` with the reader on it.
template <class F> void perOgni(const QByteArray& xml, F f)
{
    QXmlStreamReader x(xml);
    while (!x.atEnd())
        if (x.readNext() == QXmlStreamReader::StartElement)
            f(x);
}

struct XlsxCella {
    QString tipo;    // "s" text, "n" number (dates too), "" for a cell with no value, "-" for no cell
    QString valore;  // the text, or the number as written
    QString formato; // "<number format>[ locked]"
};

// Reads an exported workbook back through the unzip program, independently of the writer.
class Xlsx {
public:
    explicit Xlsx(const QString& path) : path_(path)
    {
        perOgni(Parte("xl/workbook.xml"), [this](QXmlStreamReader& x) {
            if (x.name() == u"sheet")
                fogli_ << attr(x, "name");
        });
        perOgni(Parte("xl/sharedStrings.xml"), [this](QXmlStreamReader& x) {
            if (x.name() == u"t")
                condivise_ << x.readElementText();
        });
        QHash<QString, QString> numeri = {{"0", "General"}};
        bool inXfs = false;
        perOgni(Parte("xl/styles.xml"), [&](QXmlStreamReader& x) {
            const auto n = x.name();
            if (n == u"numFmt")
                numeri.insert(attr(x, "numFmtId"), attr(x, "formatCode"));
            else if (n == u"cellXfs")
                inXfs = true;
            else if (inXfs && n == u"xf")
                formati_ << numeri.value(attr(x, "numFmtId"), "?") + " locked";
            else if (inXfs && n == u"protection" && attr(x, "locked") == "0")
                formati_.last().chop(7);
        });
    }
    // A member of the package; empty when it is not there.
    QByteArray Parte(const QString& member) const
    {
        QProcess p;
        p.start("unzip", {"-p", path_, member});
        if (!p.waitForFinished(20000))
            throw std::runtime_error("unzip did not finish");
        return p.exitCode() == 0 ? p.readAllStandardOutput() : QByteArray();
    }
    QString Fogli() const { return fogli_.join(','); }
    // The XML of the n-th sheet, from 1.
    QString Foglio(int n) const { return QString::fromUtf8(Parte(QString("xl/worksheets/sheet%1.xml").arg(n))); }
    XlsxCella Cella(int foglio, const QString& ref) const
    {
        QXmlStreamReader x(Foglio(foglio));
        while (!x.atEnd()) {
            if (x.readNext() != QXmlStreamReader::StartElement || x.name() != u"c" || attr(x, "r") != ref)
                continue;
            XlsxCella c{attr(x, "t"), QString(), formati_.value(attr(x, "s").toInt())};
            while (!(x.readNext() == QXmlStreamReader::EndElement && x.name() == u"c"))
                if (x.isStartElement() && x.name() == u"v")
                    c.valore = x.readElementText();
            if (c.tipo.isEmpty() && !c.valore.isEmpty())
                c.tipo = "n";
            if (c.tipo == "s")
                c.valore = condivise_.value(c.valore.toInt());
            return c;
        }
        return {"-", QString(), QString()};
    }

private:
    QString path_;
    QStringList fogli_, condivise_, formati_;
};

// Excel's day number of a date: day 1 is 1 January 1900, and the format counts a 29 February 1900 that never was.
double SerialeExcel(int year, int month, int day)
{
    return static_cast<double>(QDate(1899, 12, 30).daysTo(QDate(year, month, day)));
}

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

    ProgramFolder folder;
    QString portafoglio;
    store::Database db;
    Registro registro;
};

class EsportaTest : public ProgramTest {
protected:
    void SetUp() override
    {
        Avvia(true);
        AddTrade(dbExe, "13/01/2003", "Buy", "DAY", "ENI", 100, 10);
        AddTrade(dbExe, "14/01/2003", "Sell", "DAY", "ENI", 50, 11);
        AddTrade(dbExe, "15/01/2003", "Buy", "DAY", "TIM", 1000, 2);
        AddTrade(dbExe, "16/01/2003", "Sell", "DAY", "ENI", 20, 12);
        frame->ControlloMenu(); // 4 trades, 2 closed operations, 2 positions
    }
    // Opens the window from its menu, ticks the boxes, answers the file dialog (an empty name cancels)
    // and the replace question if given, clicks Esporta; `then` looks at the window afterwards.
    void esporta(const QStringList& caselle, const QString& file, int forma, const QString& risposta = {},
                 std::function<void(QWidget*)> then = {})
    {
        WhenModal([=, this](QWidget* w) {
            QPointer<QWidget> window(w);
            for (const QString& c : caselle)
                clic(w, c);
            rispondi(file, forma);
            if (!risposta.isEmpty())
                PressOnModal(risposta, &domanda);
            clic(w, "cmd_Avvia");
            if (then)
                then(w);
            if (window && window->isVisible())
                window->close();
        }, [](QWidget* w) { return w->objectName() == "frmEsporta"; });
        frame->Menu("mnu_Esporta")->trigger();
    }
    // Picks the form in the dialog's type list (xlsx, db, csv: from 1), then gives the name.
    void rispondi(const QString& file, int forma)
    {
        WhenModal([=, this](QWidget* modal) {
            auto* combo = modal->findChild<QComboBox*>("fileTypeCombo");
            for (int i = 1; i < forma; ++i)
                QTest::keyClick(combo, Qt::Key_Down);
            AnswerFileDialog(file, &titolo);
        }, [](QWidget* w) { return qobject_cast<QFileDialog*>(w) != nullptr; });
    }
    static void clic(QWidget* w, const QString& name)
    {
        auto* b = w->findChild<QAbstractButton*>(name);
        // A check box takes clicks on its box and caption, not on the rest of its row.
        QTest::mouseClick(b, Qt::LeftButton, {}, qobject_cast<QCheckBox*>(b) ? QPoint(8, b->height() / 2) : b->rect().center());
    }
    static QString etichette(QWidget* w) { return Etichette(w, {"lab_Operazionichiuse", "lab_Eseguiti", "lab_Portafoglio"}); }

    QString titolo, domanda;
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

TEST_F(EsportaFileTest, WorkbookSheetsFormatsAndValuesReadBackAlsoOfAnEmptyTable)
{
    const Xlsx x(xlsx({true, true, true}));
    EXPECT_EQ(x.Fogli(), "OperazioniChiuse,Eseguiti,Portafoglio");
    EXPECT_EQ(registro.eventi.join(' '), "barra max 2 passo passo OperazioniChiuse=2 max 2 passo passo Eseguiti=2 "
                                         "max 3 passo passo passo Portafoglio=3 nascosta");
    for (int n = 1; n <= 3; ++n) {
        SCOPED_TRACE(n);
        const QString sheet = x.Foglio(n);
        // Protected without a password; rows 1 and 2 frozen; A3 selected.
        EXPECT_TRUE(sheet.contains("<sheetProtection sheet=\"1\" objects=\"1\" scenarios=\"1\"/>"));
        EXPECT_TRUE(sheet.contains("<pane ySplit=\"2\" topLeftCell=\"A3\" activePane=\"bottomLeft\" state=\"frozen\"/>"
                                   "<selection pane=\"bottomLeft\" activeCell=\"A3\" sqref=\"A3\"/>"));
        EXPECT_EQ(sheet.contains("tabSelected=\"1\""), n == 1);
        // Both bands reach L whatever the table's width, locked above and open below; column A has the short date.
        QStringList bande;
        for (const char* ref : {"A1", "L1", "A2", "L2"})
            bande << x.Cella(n, ref).formato;
        EXPECT_EQ(bande.join('|'), "dd/mm/yy locked|General locked|dd/mm/yy|General");
        EXPECT_EQ(x.Cella(n, "M1").tipo + x.Cella(n, "M2").tipo, "--");
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

    // An empty table: logo, title, headers, no records, a label of 0 and the bar's maximum untouched.
    db.Execute("DELETE * FROM Eseguiti");
    registro.eventi.clear();
    const Xlsx senzaChiuse(xlsx({false, true, true}));
    EXPECT_EQ(senzaChiuse.Fogli(), "Eseguiti,Portafoglio,Foglio3");
    EXPECT_EQ(senzaChiuse.Cella(1, "D1").valore + "|" + senzaChiuse.Cella(1, "A2").valore, "Quorvel Tabella eseguiti|Data");
    EXPECT_EQ(senzaChiuse.Cella(1, "A3").tipo, "-");
    EXPECT_TRUE(senzaChiuse.Foglio(1).contains("<drawing"));
    EXPECT_FALSE(senzaChiuse.Foglio(3).contains("<drawing"));
    EXPECT_EQ(registro.eventi.mid(0, 3).join(' '), "barra Eseguiti=0 max 3");
}

TEST_F(EsportaFileTest, DatabaseCopyKeepsTheChosenTablesAndOnlyTheirPages)
{
    db.Execute("INSERT INTO Conto (Data, Tipo, Importo, Descrizione) VALUES ('02/01/2003','Versamento',5000,'.')");
    const QString copia = folder.File("copia.db");
    esporta::EsportaMdb(db, portafoglio, copia, {false, true, true}, registro);
    EXPECT_EQ(db.Path(), portafoglio);
    EXPECT_EQ(registro.eventi.join(' '), "Eseguiti=2 Portafoglio=3");
    const QString tabelle = "SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name";
    store::Database d;
    d.Open(copia);
    EXPECT_EQ(Rows(d, tabelle).join(','), "Conto,Eseguiti,Portafoglio");
    EXPECT_EQ(Rows(db, tabelle).join(','), "Conto,Eseguiti,EseguitiBackup,EseguitiTemp,OperazioniChiuse,Portafoglio");
    EXPECT_EQ(Rows(d, "SELECT * FROM Eseguiti ORDER BY ID"), Rows(db, "SELECT * FROM Eseguiti ORDER BY ID"));
    EXPECT_EQ(Rows(d, "PRAGMA freelist_count"), QStringList{"0"}); // no pages of the dropped tables left
    d.Close();

    // A portfolio without the working tables: the first drop fails and leaves the copy open.
    db.Execute("DROP TABLE EseguitiBackup");
    EXPECT_THROW(esporta::EsportaMdb(db, portafoglio, copia, {true, true, true}, registro), store::DbError);
    EXPECT_EQ(db.Path(), copia);
}

TEST_F(EsportaTest, WorkbookCountsOnTheLabelsAndTheBarNeverReset)
{
    esporta({"chk_OperazioniChiuse", "chk_Eseguiti"}, path("dati"), 1, {}, [&](QWidget* w) {
        auto* bar = w->findChild<QProgressBar*>("ProgressBar1");
        EXPECT_EQ(etichette(w), "2|4|");
        EXPECT_FALSE(bar->isVisible());
        // Maximum 2: steps 1, 2. Maximum 4: steps 3, 4, then 4 is not below 4 and the bar starts over: 0, 1.
        EXPECT_EQ(bar->value(), 1);

        // Again from the same window: the counter goes on and the other labels stay.
        for (const char* c : {"chk_OperazioniChiuse", "chk_Eseguiti", "chk_Portafoglio"})
            clic(w, c);
        rispondi(path("posizioni.xlsx"), 1);
        // Each step, seen as it happens: the bar shown and both buttons off.
        QStringList passi;
        QObject::connect(bar, &QProgressBar::valueChanged, w, [&passi, bar, w](int v) {
            const bool inCorso = bar->isVisible() && !w->findChild<QAbstractButton*>("cmd_Avvia")->isEnabled()
                                 && !w->findChild<QAbstractButton*>("cmd_Chiudi")->isEnabled();
            passi << QString::number(v) + (inCorso ? "" : "?");
        });
        clic(w, "cmd_Avvia");
        EXPECT_EQ(etichette(w), "2|4|2");
        EXPECT_EQ(passi.join(' '), "2 0"); // maximum 2: from 1 to 2, then over
    });
    // The form's extension goes on a bare name.
    EXPECT_EQ(Xlsx(path("dati.xlsx")).Fogli(), "OperazioniChiuse,Eseguiti,Foglio3");
    EXPECT_EQ(Xlsx(path("posizioni.xlsx")).Fogli(), "Portafoglio,Foglio2,Foglio3");
}

TEST_F(EsportaTest, ReplaceQuestionNoKeepsTheFileYesReplacesIt)
{
    const QString file = path("dati.csv");
    WriteFile(file, "vecchio");
    esporta({"chk_Eseguiti"}, file, 3, "No", [&](QWidget* w) {
        EXPECT_TRUE(w->isVisible());
        EXPECT_EQ(etichette(w), "||");
        EXPECT_EQ(FileBytes(file), "vecchio");
        rispondi(file, 3);
        PressOnModal("Sì");
        clic(w, "cmd_Avvia");
        EXPECT_EQ(etichette(w), "|5|"); // the text counts one more than its 4 records
    });
    EXPECT_EQ(domanda, "Il file " + file + "  esiste già!\nsostituire il file?");
    EXPECT_TRUE(FileBytes(file).startsWith("\"Quorvel - Tabella Operazioni Eseguiti \"\r\n\r\n"));
}

TEST_F(EsportaTest, DatabaseCopyComesFromTheFileBeforeSaveAsAndTheFrameReplays)
{
    // After save as, dbExe is the new file while sFilePortafoglio still names DataExe.qvd.
    AnswerFileDialog(path("mio.qvp"));
    frame->mnu_Salva_Click();
    AddTrade(dbExe, "17/01/2003", "Buy", "DAY", "FIAT", 10, 5); // only in mio.qvp
    {
        store::Database scratch;
        scratch.Open(path(store::kScratchPortfolio));
        // No replay makes this row: the one after the copy drops it again.
        scratch.Execute("INSERT INTO Portafoglio (System, Cod, Titolo, Qta, PzoCarico, Importo, Commissioni) VALUES ('DAY','XX','x',1,1,1,0)");
    }
    esporta({"chk_Eseguiti", "chk_Portafoglio"}, path("copia"), 2, {}, [](QWidget* w) {
        EXPECT_TRUE(w->isVisible());
        EXPECT_EQ(etichette(w), "|4|3");
    });
    EXPECT_EQ(dbExe.Path(), Module1::sFilePortafoglio);
    EXPECT_EQ(dbExe.Path(), path(store::kScratchPortfolio));
    EXPECT_EQ(Rows(dbExe, "SELECT Cod FROM Portafoglio ORDER BY Cod").join(','), "ENI,TIM");

    store::Database copia;
    copia.Open(path("copia.db"));
    EXPECT_EQ(Rows(copia, "SELECT Cod FROM Eseguiti ORDER BY ID").join(','), "ENI,ENI,TIM,ENI");
    EXPECT_EQ(Rows(copia, "SELECT Cod FROM Portafoglio ORDER BY Cod").join(','), "ENI,TIM,XX");
}

TEST_F(EsportaTest, CancellingTheFileDialogOrAFailureClosesTheWindowSilentlyAndLeavesThePortfolioWhole)
{
    const QStringList eseguiti = Rows(dbExe, "SELECT * FROM Eseguiti ORDER BY ID");
    const auto chiusa = [](QWidget* w) { EXPECT_TRUE(!w->isVisible() && !platform::Forms::Find("frmEsporta")); };
    esporta({"chk_OperazioniChiuse"}, QString(), 1, {}, chiusa);
    EXPECT_EQ(titolo, "Esporta i dati in xls");

    QFile::remove(path(store::kLogoFile));
    esporta({"chk_Portafoglio"}, path("dati.xlsx"), 1, {}, chiusa);
    EXPECT_EQ(Xlsx(path("dati.xlsx")).Fogli(), "Foglio1,Foglio2,Foglio3"); // the empty workbook
    EXPECT_FALSE(Xlsx(path("dati.xlsx")).Foglio(1).contains("<c "));

    // The open portfolio can't be replaced by its own export.
    esporta({"chk_Eseguiti"}, dbExe.Path(), 2, "Sì", chiusa);
    EXPECT_EQ(Rows(dbExe, "SELECT * FROM Eseguiti ORDER BY ID"), eseguiti);

    // One bar step a record, counted in 16 bits: the 32768th overflows.
    dbExe.ExecuteScript("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 32768) "
                        "INSERT INTO Portafoglio (System, Cod, Titolo, Qta, PzoCarico, Importo, Commissioni) "
                        "SELECT 'DAY', 'C' || i, 't', 1, 1, 1, 0 FROM n;");
    esporta({"chk_Portafoglio"}, path("tanti.csv"), 3, {}, chiusa);
    EXPECT_EQ(FileBytes(path("tanti.csv")).count("\r\n"), 3 + 32768); // title, empty line, headers, the records so far
}