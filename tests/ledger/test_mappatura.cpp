// Brokers' files read and mapped into trades and account movements, without a window.
#include "ledger/FileBroker.h"
#include "ledger/Mappatura.h"
#include "ledger/ModelliSalvati.h"
#include "store/Delivered.h"

#include "platform/Failure.h"
#include "support/Cartella.h"
#include "support/Fixture.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <tuple>

using namespace ledger;
using platform::Tabella;

namespace {

QString fixture(const QString& name) { return qEnvironmentVariable("QUORVEL_TEST_DATA") + "/brokers/" + name; }

// Trades, then movements, then refused rows, one line each.
QStringList righe(const Staging& s)
{
    QStringList out;
    for (const EseguitoImportato& e : s.eseguiti)
        out << QStringLiteral("%1|%2|%3|%4|%5|%6|%7|%8|%9")
                   .arg(e.data.toString("dd/MM/yyyy"), e.tipo, e.system, e.cod, e.titolo, QString::number(e.qta, 'g', 15),
                        QString::number(e.prezzo, 'g', 15), e.errore, QString::number(e.prezzoOttimale, 'g', 15));
    for (const MovimentoImportato& m : s.movimenti)
        out << QStringLiteral("%1|%2|%3|%4").arg(m.data.toString("dd/MM/yyyy"), m.tipo, QString::number(m.importo), m.descrizione);
    for (const RigaScartata& r : s.scartate)
        out << QString::number(r.riga) + ": " + r.motivo;
    return out;
}

Mappatura colonne(std::initializer_list<std::pair<Campo, const char*>> l)
{
    Mappatura m;
    for (const auto& [campo, nome] : l)
        m.colonna(campo) = nome;
    return m;
}

// What the window does when it opens a file: the model that fits, formats guessed.
Mappatura mappa(const FileBroker& f)
{
    const std::optional<Riconoscimento> r = RiconosciModello(f.Righe(), {});
    EXPECT_TRUE(r.has_value());
    Mappatura m = r ? r->modello : Mappatura();
    IndovinaFormati(f.Righe(), m);
    return m;
}

} // namespace

TEST(DelimitedText, DecodesSplitsAndQuotes)
{
    // UTF-8 with and without its mark, and bytes that are not UTF-8 read as the Western code page.
    EXPECT_EQ(platform::DecodificaTesto("\xEF\xBB\xBFQuantit\xC3\xA0"), u"Quantità");
    EXPECT_EQ(platform::DecodificaTesto("Quantit\xC3\xA0"), u"Quantità");
    EXPECT_EQ(platform::DecodificaTesto("Quantit\xE0 \x80 \x92"), u"Quantità € ’");
    EXPECT_EQ(platform::DecodificaTesto(QByteArray("\xFF\xFEQ\0\xE0\0", 6)), u"Qà");

    struct Caso {
        const char* testo;
        QChar sep;
        Tabella righe;
    };
    const Caso casi[] = {
        {"a,b\r\nc,d\r\n", u',', {{"a", "b"}, {"c", "d"}}},
        {"a;b\nc;d", u';', {{"a", "b"}, {"c", "d"}}},
        {"a\tb\rc\t\r\n\r\n", u'\t', {{"a", "b"}, {"c", ""}, {""}}},
        // Quotes: separators, line breaks and doubled quotes inside; a quote later in a field is a character.
        {"\"x,1\",\"a\"\"b\"\r\n\"due\r\nrighe\",5\"", u',', {{"x,1", "a\"b"}, {"due\r\nrighe", "5\""}}},
        {"\"non chiuso,a\nb", u',', {{"non chiuso,a\nb"}}},
        {"", u',', {}},
    };
    for (const Caso& c : casi)
        EXPECT_EQ(platform::DividiCampi(QString::fromUtf8(c.testo), c.sep), c.righe) << c.testo;
    EXPECT_EQ(platform::DividiCampi("a\nb\nc", u',', 2).size(), 2);

    // The separator: the one that gives most records one width; decimal commas don't win.
    EXPECT_EQ(platform::IndovinaSeparatore("Data;Importo;Saldo\n01/02/2024;1234,5;10,25\n02/02/2024;7,5;3,75\n"), u';');
    EXPECT_EQ(platform::IndovinaSeparatore("Data\tTitolo\n1\tENI, ord\n2\tA2A, ord\n"), u'\t');
    EXPECT_EQ(platform::IndovinaSeparatore("\"a\",\"b;c\"\n\"1\",\"2;3\"\n"), u',');
    EXPECT_EQ(platform::IndovinaSeparatore("solo testo"), u',');
}

TEST(DelimitedText, FindsTheHeaderBelowTheAccountLines)
{
    for (const auto& [nome, intestazione] : {std::pair{"directa.csv", 9}, {"fineco.csv", 5}, {"ib.csv", 0}}) {
        const FileBroker f(fixture(nome));
        EXPECT_EQ(f.Separatore(), u',') << nome;
        EXPECT_EQ(platform::IndovinaIntestazione(f.Righe()), intestazione) << nome;
    }
    // Padded account lines and a data row of words don't take the header's place.
    const Tabella padded = platform::DividiCampi("Conto,123,,\nData,Tipo,Qta,Prezzo\n01/02/2024,Buy,10,5.5\nTotale,,,\n", u',');
    EXPECT_EQ(platform::IndovinaIntestazione(padded), 1);
    // Without a row of words: the first with the most filled cells.
    EXPECT_EQ(platform::IndovinaIntestazione(platform::DividiCampi("1\n1,2,3\n4,5,6\n", u',')), 1);
    EXPECT_EQ(platform::IndovinaIntestazione({}), 0);
}

TEST(LetturaValori, NumbersDatesTimesAndTheirGuesses)
{
    struct Numero {
        const char* testo;
        QChar decimale;
        std::optional<double> valore;
    };
    const Numero numeri[] = {
        {"-1523.40", u'.', -1523.4},  {"1,234.56", u'.', 1234.56}, {"1.234,56", u',', 1234.56},
        {"$ -1,234.50", u'.', -1234.5}, {"-$12", u'.', -12},       {"€ 1.000", u',', 1000},
        {"(1,234.56)", u'.', -1234.56}, {"+7,5", u',', 7.5},        {".5", u'.', 0.5},
        {"1.5E-3", u'.', 0.0015},     {" 12 ", u',', 12},
        {"1234,5", u'.', std::nullopt}, {"1,234.5", u',', std::nullopt}, {"12,34,5", u'.', std::nullopt},
        {"abc", u'.', std::nullopt},  {"", u'.', std::nullopt},     {"-", u'.', std::nullopt}, {"1-2", u'.', std::nullopt},
    };
    for (const Numero& n : numeri)
        EXPECT_EQ(LeggiNumero(QString::fromUtf8(n.testo), n.decimale), n.valore) << n.testo;

    for (const auto& [testo, formato] : {std::pair{"15-03-2024", FormatoData::GgMmAaaa}, {"3/15/24 10:00", FormatoData::MmGgAaaa},
                                         {"2024.03.15", FormatoData::AaaaMmGg}, {"20240315", FormatoData::AaaaMmGgUnito}})
        EXPECT_EQ(LeggiData(QString(testo), formato), QDate(2024, 3, 15)) << testo;
    for (const char* no : {"15-03-2024x1", "2024-03-15", "31/02/2024", "15/03", "150324", "1503-2024"})
        EXPECT_FALSE(LeggiData(QString(no), FormatoData::GgMmAaaa).isValid()) << no;
    EXPECT_EQ(LeggiDataOra(u"20240312;101530", FormatoData::AaaaMmGgUnito).ora, 10 * 3600 + 15 * 60 + 30);
    EXPECT_EQ(LeggiDataOra(u"2024-03-12T09:05", FormatoData::AaaaMmGg).ora, 9 * 3600 + 5 * 60);
    for (const auto& [testo, ora] : {std::pair{"1:05 PM", 13 * 3600 + 300}, {"10.15.30", 36930}, {"", -1}, {"25:00", -1},
                                     {"10:5", -1}, {"ora", -1}, {"12", -1}})
        EXPECT_EQ(LeggiOra(QString(testo)), ora) << testo;

    EXPECT_EQ(IndovinaDecimale({"1.234,5", "7"}), u',');
    EXPECT_EQ(IndovinaDecimale({"-1523.40", "100"}), u'.');
    EXPECT_EQ(IndovinaDecimale({"1.234.567"}), u',');
    EXPECT_EQ(IndovinaDecimale({"0,125", "$1,234"}), u',');
    EXPECT_EQ(IndovinaDecimale({"1,234", "12"}), std::nullopt); // either way

    EXPECT_EQ(IndovinaFormatoData({"15/03/2024", "01/04/2024"}), FormatoData::GgMmAaaa);
    EXPECT_EQ(IndovinaFormatoData({"03/15/2024", ""}), FormatoData::MmGgAaaa);
    EXPECT_EQ(IndovinaFormatoData({"2024-03-15 10:00"}), FormatoData::AaaaMmGg);
    EXPECT_EQ(IndovinaFormatoData({"20240315"}), FormatoData::AaaaMmGgUnito);
    EXPECT_EQ(IndovinaFormatoData({"01/04/2024", "05/06/2024"}), std::nullopt); // day or month first
    EXPECT_EQ(IndovinaFormatoData({"15/03/2024", "2024-03-15"}), std::nullopt);
    // A footer in the date column has no say: without it 31/12 would be skipped and 4 March read as 3 April.
    EXPECT_EQ(IndovinaFormatoData({"12/31/2024", "03/04/2024", "Total"}), FormatoData::MmGgAaaa);
}

TEST(Mappatura, TheBuiltInModelsOnTheirBrokersFiles)
{
    struct Caso {
        const char* file;
        QString system, modello; // the model with its header row, decimal mark and date format
        QStringList righe;
    };
    const Caso casi[] = {
        // Newest first: oldest first out, and the day's buy before its sale.
        {"directa.csv", "DAY", "Directa|10|.|gg/mm/aaaa",
         {"12/03/2024|Buy|DAY|OR|L’OREAL|3|430.05|NE|430.05", "15/03/2024|Buy|DAY|ENI|ENI|100|15.234|NE|15.234",
          "15/03/2024|Sell|DAY|ENI|ENI|100|16.125|NE|16.125", "01/03/2024|Versamento|5000|Bonifico da ROSSI MARIO",
          "28/03/2024|Dividendi|10|Provento etf VWCE", "28/03/2024|Costi di gestione|2.6|Rit.provento etf",
          "13: tipo non riconosciuto: Bollo titoli"}},
        // Type and sign, quoted decimal commas, the euro price from the booked amount, the Western code page.
        {"fineco.csv", "LUNGO", "Fineco|6|,|gg/mm/aaaa",
         {"05/02/2024|Buy|LUNGO|US0378331005|APPLE INC|10|170.968|NE|170.968",
          "12/02/2024|Buy|LUNGO|IT0000000001|SOCIETÀ ESEMPIO, ORD|200|6.1|NE|6.1",
          "15/03/2024|Sell|LUNGO|US0378331005|APPLE INC|10|174.312|NE|174.312", "20/02/2024|Dividendi|2.21|APPLE INC",
          "01/03/2024|Dividendi|67.5|BTP 1MZ30", "12: tipo non riconosciuto: Aumento capitale A"}},
        {"ib.csv", "X'Y", "Interactive Brokers|1|.|aaaammgg",
         {"04/03/2024|Buy|X’Y|US0378331005|ND|10|175.1|NE|175.1", "05/03/2024|Sell|X’Y|US0378331005|ND|4|180.25|NE|180.25",
          "06/03/2024|Buy|X’Y|IE00B4L5Y983|ND|0.5|88.1235|NE|88.1235", "3: codice mancante"}},
    };
    for (const Caso& c : casi) {
        const FileBroker f(fixture(c.file));
        const Mappatura m = mappa(f);
        EXPECT_EQ(QStringList({m.nome, QString::number(m.rigaIntestazione), m.decimale, NomeFormato(m.formatoData)}).join('|'), c.modello);
        EXPECT_EQ(righe(Applica(f.Righe(), m, c.system)), c.righe) << c.file;
    }
    // Fineco's price in the file's currency divided by the rate column gives the same euro prices.
    Mappatura m = mappa(FileBroker(fixture("fineco.csv")));
    m.colonna(Campo::Prezzo) = "Prezzo";
    m.colonna(Campo::Cambio) = "cambio";
    EXPECT_EQ(Applica(FileBroker(fixture("fineco.csv")).Righe(), m, "LUNGO").eseguiti[2].prezzo, 174.3119); // 190 / 1,09
}

TEST(Mappatura, AFileOfOurOwnMakingRowsThatAreNeitherAndTheOrderWithinADay)
{
    // No type column (the sign decides), a time column, odd rows.
    Mappatura p = colonne({{Campo::Data, "Giorno"}, {Campo::Ora, "Ora"}, {Campo::Cod, "Cod"}, {Campo::Qta, "Qta"}, {Campo::Importo, "Importo"}});
    p.separatore = u';';
    p.decimale = u',';
    p.formatoData = FormatoData::MmGgAaaa;
    const Tabella tabella = platform::DividiCampi("Giorno;Ora;Cod;Qta;Importo\n"
                                                 "03/15/2024;15:00;ENI;-10;150\n"
                                                 "03/15/2024;09:30;ENI;10;-140,5\n"
                                                 ";;;;\n"
                                                 "15/03/2024;10:00;ENI;1;-1\n"
                                                 "03/16/2024;10:00;;1;-1\n"
                                                 "03/16/2024;10:00;ENI;0;0\n"
                                                 "03/16/2024;10:00;ENI;x;-1\n"
                                                 "03/16/2024;10:00;ENI;5;0\n",
                                                 u';');
    EXPECT_EQ(righe(Applica(tabella, p, "DAY")),
              (QStringList{"15/03/2024|Buy|DAY|ENI|ND|10|14.05|NE|14.05", "15/03/2024|Sell|DAY|ENI|ND|10|15|NE|15", "4: riga vuota",
                           "5: data non leggibile: 15/03/2024", "6: codice mancante", "7: né tipo né segno di quantità o importo",
                           "8: quantità non leggibile: x", "9: prezzo zero"}));

    // Rows go in oldest first; within a day, in the order the file runs.
    Mappatura m = colonne({{Campo::Data, "d"}, {Campo::Tipo, "t"}, {Campo::Cod, "c"}, {Campo::Qta, "q"}, {Campo::Prezzo, "p"}});
    m.lista(Parole::Acquisto) = " compra ; buy";
    m.lista(Parole::Vendita) = "vende";
    auto ordine = [&](const char* testo) {
        QStringList cod;
        for (const EseguitoImportato& e : Applica(platform::DividiCampi(testo, u','), m, "S").eseguiti)
            cod << e.cod;
        return cod.join(' ');
    };
    // Mostly newest first: a day's rows go in reversed.
    EXPECT_EQ(ordine("d,t,c,q,p\n02/01/2024,vende,B,1,1\n02/01/2024,BUY,A,1,1\n01/01/2024,compra,Z,1,1\n"), "Z A B");
    // Mostly oldest first, with a block out of order: the file's order within a day.
    EXPECT_EQ(ordine("d,t,c,q,p\n01/01/2024,compra,A,1,1\n01/01/2024,vende,B,1,1\n03/01/2024,compra,C,1,1\n"
                     "02/01/2024,compra,D,1,1\n04/01/2024,compra,E,1,1\n"),
              "A B D C E");
    // One day gives no direction: the file's order, unless the broker is known to list newest first.
    const char* giorno = "d,t,c,q,p\n02/01/2024,vende,B,1,1\n02/01/2024,compra,A,1,1\n";
    EXPECT_EQ(ordine(giorno), "B A");
    m.recentiPrima = true;
    EXPECT_EQ(ordine(giorno), "A B");
    EXPECT_TRUE(ModelliPredefiniti().value(0).recentiPrima); // Directa
}

// The balance moves as the broker's cash moved; without a type column the amount's sign
// decides where quantities are never negative.
TEST(Mappatura, SignsOfMoneyAndOfTradesWithoutAType)
{
    Mappatura m = colonne({{Campo::Data, "d"}, {Campo::Tipo, "t"}, {Campo::Importo, "i"}});
    m.lista(Parole::Costi) = "Ritenuta";
    m.lista(Parole::Dividendi) = "Provento";
    m.lista(Parole::Versamento) = "Bonifico";
    auto mappati = [&m](const char* testo) { return righe(Applica(platform::DividiCampi(testo, u','), m, "S")); };
    EXPECT_EQ(mappati("d,t,i\n01/03/2024,Ritenuta,-5\n02/03/2024,Ritenuta,25\n03/03/2024,Provento,-8.1\n04/03/2024,Bonifico,1000\n"),
              (QStringList{"01/03/2024|Costi di gestione|5|Ritenuta", "02/03/2024|Dividendi|25|Ritenuta",
                           "03/03/2024|Costi di gestione|8.1|Provento", "04/03/2024|Versamento|1000|Bonifico"}));
    // Where every amount is positive the kind alone decides.
    EXPECT_EQ(mappati("d,t,i\n01/03/2024,Ritenuta,5\n"), QStringList{"01/03/2024|Costi di gestione|5|Ritenuta"});

    m = colonne({{Campo::Data, "d"}, {Campo::Cod, "c"}, {Campo::Qta, "q"}, {Campo::Importo, "i"}});
    EXPECT_EQ(mappati("d,c,q,i\n01/03/2024,ENI,10,-150\n02/03/2024,ENI,10,160\n"),
              (QStringList{"01/03/2024|Buy|S|ENI|ND|10|15|NE|15", "02/03/2024|Sell|S|ENI|ND|10|16|NE|16"}));
}

TEST(Mappatura, SheetCellsBecomeTextTheMappingReads)
{
    const QList<QVariantList> foglio = {
        {QString("Data"), QString("Qta"), QVariant(), QString("Ok")},
        {QDate(2024, 3, 15), 1234567.5, 0.1, true},
        {QDateTime(QDate(2024, 3, 15), QTime(10, 5)), 1e20, -2.0, QVariant()},
    };
    EXPECT_EQ(TabellaDaFoglio(foglio), (Tabella{{"Data", "Qta", "", "Ok"},
                                                {"2024-03-15", "1234567.5", "0.1", "VERO"},
                                                {"2024-03-15 10:05:00", "100000000000000000000", "-2", ""}}));
}

TEST(FileBroker, AWorkbooksFirstSheetIsMappedAsATextFileWouldBe)
{
    QTemporaryDir dir;
    const FileBroker f(testing_support::WriteWorkbook(
        dir.filePath("ib.xlsx"), {{"Trades",
                                   {{"Flex query"},
                                    {},
                                    {"TradeDate", "Buy/Sell", "ISIN", "Quantity", "TradePrice", "TradeMoney"},
                                    {"@04/03/2024", "SELL", "US0378331005", "#-4", "#1234.56789", "#-4938.27"}}},
                                  {"Altro", {{"non questo"}}}}));
    EXPECT_TRUE(f.Foglio());
    const Mappatura m = mappa(f);
    EXPECT_EQ(m.nome, "Interactive Brokers");
    EXPECT_EQ(m.rigaIntestazione, 3);
    EXPECT_EQ(m.formatoData, FormatoData::AaaaMmGg); // the cells' dates, whatever the model says
    EXPECT_EQ(righe(Applica(f.Righe(), m, "DAY")), QStringList{"04/03/2024|Sell|DAY|US0378331005|ND|4|1234.5679|NE|1234.5679"});

    // A model with the decimal comma keeps a sheet's point where no number tells (1520.123 could be either).
    Mappatura virgola;
    virgola.decimale = u',';
    virgola.colonna(Campo::Qta) = "Quantita";
    IndovinaFormati(Tabella{{"Quantita"}, {"1520.123"}}, virgola);
    EXPECT_EQ(virgola.decimale, u','); // a text file: the model's
    IndovinaFormati(Tabella{{"Quantita"}, {"1520.123"}}, virgola, true);
    EXPECT_EQ(virgola.decimale, u'.');
}

TEST(FileBroker, AFileThatCantBeReadSaysWhy)
{
    QTemporaryDir dir;
    const auto scrivi = [&](const QString& nome, const QByteArray& bytes) { return testing_support::WriteFile(dir.filePath(nome), bytes); };
    for (const QString& path : {dir.filePath("manca.csv"), scrivi("vuoto.csv", ""), scrivi("binario.csv", QByteArray("PK\3\4\0\0", 6)),
                                scrivi("finto.xlsx", "non zip")}) {
        try {
            FileBroker f(path);
            ADD_FAILURE() << path.toStdString();
        } catch (const platform::Failure& e) {
            EXPECT_TRUE(QString(e.what()).startsWith("Impossibile leggere il file " + QFileInfo(path).fileName() + ": ")) << e.what();
        }
    }
}

TEST(ModelliSalvati, SavedByNameReplacedAndAddedToAnOlderDataSet)
{
    testing_support::ProgramFolder folder;
    store::Database set;
    set.Open(folder.File("DataSet.qvd"));
    // A DataSet.qvd of an earlier version gets the table at the next start.
    set.Execute("DROP TABLE ModelliImportazione");
    store::CompletaImpostazioni(set);
    store::CompletaImpostazioni(set);
    EXPECT_TRUE(CaricaModelli(set).isEmpty());

    Mappatura m = ModelliPredefiniti()[1];
    m.nome = "Banca d'Italia";
    m.intestazione = {"Data", "Quantita'", "Tipo"};
    m.separatore = u'\t';
    m.formatoData = FormatoData::MmGgAaaa;
    m.lista(Parole::Costi) = "Bollo;Imposta d'esempio";
    SalvaModello(set, m);
    Mappatura altro = ModelliPredefiniti()[2];
    altro.nome = "IB";
    SalvaModello(set, altro);
    m.decimale = u'.';
    m.nome = "BANCA D'ITALIA"; // the same name: replaces it, and is now the latest
    SalvaModello(set, m);

    const QList<Mappatura> salvati = CaricaModelli(set);
    ASSERT_EQ(salvati.size(), 2);
    EXPECT_EQ(salvati[1].nome, "IB");
    // Every field as saved, the new name's case included.
    const auto campi = [](const Mappatura& x) {
        return std::tie(x.nome, x.intestazione, x.separatore, x.decimale, x.formatoData, x.colonne, x.parole, x.rigaIntestazione);
    };
    EXPECT_TRUE(campi(salvati[0]) == campi(m));

    // A saved model's header, wherever it stands, comes before a built-in one.
    const Tabella righe = {{"Conto", "1"}, {" data", "QUANTITA'", "Tipo", "", ""}, {"01/02/2024", "1", "x"}};
    const std::optional<Riconoscimento> r = RiconosciModello(righe, salvati);
    ASSERT_TRUE(r.has_value());
    EXPECT_EQ(r->modello.nome, "BANCA D'ITALIA");
    EXPECT_EQ(r->riga, 1);
    EXPECT_EQ(r->modello.rigaIntestazione, 2);
    EXPECT_FALSE(RiconosciModello(righe, {}).has_value());
}
