#include "ledger/Replay.h"

#include "ledger/Ricalcolo.h"
#include "platform/Numbers.h"
#include "store/Database.h"

namespace ledger {

namespace {

using num::SqlText;

using Trade = Eseguito;

Trade readTrade(const store::Recordset& t)
{
    Trade tr;
    tr.data = t.Field(QStringLiteral("Data")).toDate();
    tr.tipo = t.Text(QStringLiteral("Tipo"));
    tr.system = t.Text(QStringLiteral("System"));
    tr.cod = t.Text(QStringLiteral("Cod"));
    tr.titolo = t.Text(QStringLiteral("Titolo"));
    tr.errore = t.Text(QStringLiteral("Errore"));
    tr.qta = t.Number(QStringLiteral("Qta"));
    tr.prezzo = t.Number(QStringLiteral("Prezzo"));
    tr.importo = t.Number(QStringLiteral("Importo"));
    return tr;
}

// Commission of one trade under its system, raised to the system's minimum.
double commissione(store::Database& dbSet, const Trade& t)
{
    const store::Recordset s = dbSet.OpenRecordset("SELECT * FROM System WHERE Cod ='" + t.system + "'");
    if (s.RecordCount() < 1)
        return 0.0;
    double c = t.qta * t.prezzo * s.Number(QStringLiteral("Commissioni")) / 1000;
    if (c < s.Number(QStringLiteral("CommissioniMin")))
        c = s.Number(QStringLiteral("CommissioniMin"));
    return c;
}

void compra(store::Database& dbExe, const Trade& t, double c)
{
    const store::Recordset p = dbExe.OpenRecordset("SELECT *  FROM portafoglio where Cod = '" + t.cod + "'");
    if (p.RecordCount() < 1) {
        dbExe.Execute(QStringLiteral("INSERT INTO Portafoglio (System, Cod, Titolo, Qta, PzoCarico, Importo, Commissioni)")
                      + "VALUES ('" + t.system + "','" + t.cod + "','" + t.titolo + "'," + SqlText(t.qta) + ","
                      + SqlText(num::Round(t.prezzo, 4)) + "," + SqlText(t.importo) + "," + SqlText(c) + ")");
        return;
    }
    const double pQta = p.Number(QStringLiteral("Qta"));
    const double q = pQta + t.qta;
    const double l = num::Divide(t.qta * t.prezzo + pQta * p.Number(QStringLiteral("PzoCarico")), q);
    // The commission of a later buy is dropped: the position keeps that of its opening buy.
    dbExe.Execute("UPDATE Portafoglio SET Qta = " + SqlText(q) + " ,PzoCarico = " + SqlText(num::Round(l, 4))
                  + ",Importo =" + SqlText(l * q) + " WHERE Cod ='" + t.cod + "'");
}

// False when the sale stopped the replay.
bool vendi(store::Database& dbExe, const Trade& t, double c, const PlainBox& box)
{
    const store::Recordset p = dbExe.OpenRecordset("SELECT *  FROM portafoglio where Cod = '" + t.cod + "'");
    if (p.RecordCount() < 1) {
        box(MessaggioNonPosseduto(t.cod, t.data));
        return false;
    }
    const double pQta = p.Number(QStringLiteral("Qta"));
    const double carico = p.Number(QStringLiteral("PzoCarico"));
    const double pComm = p.Number(QStringLiteral("Commissioni"));
    const double g = t.qta * t.prezzo - t.qta * carico;
    const double r = num::Divide(t.prezzo - carico, carico) * 100;
    const double quota = num::Divide(pComm * t.qta, pQta);
    const double k = c + quota;
    const int w = num::Weekday(t.data);

    dbExe.Execute(QStringLiteral("INSERT INTO OperazioniChiuse (Data ,giornoDiSettimana ,System , Cod, Titolo,")
                  + "PzoCarico , Qta, Prezzo, GP , GPPercentuale, Commissioni)" + "VALUES ('" + num::DateText(t.data)
                  + "'," + QString::number(w) + ",'" + t.system + "','" + t.cod + "','" + t.titolo + "',"
                  + SqlText(carico) + "," + SqlText(t.qta) + "," + SqlText(num::Round(t.prezzo, 4)) + ","
                  + SqlText(num::Round(g, 4)) + "," + SqlText(num::Round(r, 2)) + "," + SqlText(k) + ")");

    if (t.qta == pQta) {
        dbExe.Execute("DELETE * FROM Portafoglio WHERE Cod = '" + t.cod + "'");
    } else if (t.qta < pQta) {
        const double q = pQta - t.qta;
        dbExe.Execute("UPDATE Portafoglio SET Qta = " + SqlText(q) + ",Importo =" + SqlText(num::Round(carico * q, 1))
                      + ", Commissioni =" + SqlText(pComm - quota) + " WHERE Cod ='" + t.cod + "'");
    } else {
        box(MessaggioSoloDisponibili(t.cod, pQta));
        return false;
    }
    return true;
}

void contaErrore(store::Database& dbSet, const Trade& t)
{
    const store::Recordset e = dbSet.OpenRecordset("SELECT *  FROM Errori WHERE Cod = '" + t.errore + "'");
    if (e.RecordCount() < 1)
        return;
    dbSet.Execute("UPDATE Errori SET  Contatore = " + SqlText(e.Number(QStringLiteral("Contatore")) + 1)
                  + " WHERE Cod ='" + t.errore + "'");
}

} // namespace

bool RicalcolaPortafoglio(store::Database& dbExe, store::Database& dbSet, const PlainBox& box)
{
    // Reading writes nothing, and a failed batch rolls back: either way the statement
    // replay then runs on the files as they were, and fails, if it fails, as it always has.
    std::optional<Ricalcolo> r;
    try {
        if (const std::optional<Libro> libro = LeggiLibro(dbExe, dbSet))
            r = Ricalcola(*libro);
        if (r)
            ScriviRicalcolo(dbExe, dbSet, *r);
    } catch (const std::exception&) {
        r.reset();
    }
    if (!r) {
        RicalcolaPortafoglioPerIstruzioni(dbExe, dbSet, box);
        return false;
    }
    if (!r->messaggio.isEmpty() && box)
        box(r->messaggio);
    return true;
}

QString MessaggioNonPosseduto(const QString& cod, const QDate& data)
{
    return cod + " e' stato venduto : " + num::DateText(data);
}

QString MessaggioSoloDisponibili(const QString& cod, double posseduti)
{
    return cod + " disponibili solo " + num::Text(posseduti) + " pezzi";
}

void RicalcolaPortafoglioPerIstruzioni(store::Database& dbExe, store::Database& dbSet, const PlainBox& box)
{
    // One transaction per file keeps a long replay fast; a failing statement
    // rolls both back, so no half-built replay is ever left on disk.
    store::Transaction setTx(dbSet);
    store::Transaction exeTx(dbExe);
    bool stopped = false;
    QString message;
    const PlainBox stop = [&](const QString& text) {
        stopped = true;
        message = text;
    };

    store::Recordset errori = dbSet.OpenRecordset(QStringLiteral("SELECT *  FROM Errori"));
    while (!errori.Eof()) {
        dbSet.Execute(QStringLiteral("UPDATE Errori SET Contatore = 0"));
        errori.MoveNext();
    }
    dbExe.Execute(QStringLiteral("DELETE * FROM Portafoglio"));
    dbExe.Execute(QStringLiteral("DELETE * FROM OperazioniChiuse"));

    store::Recordset trades = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM Eseguiti ORDER BY Data"));
    while (!trades.Eof()) {
        const Trade t = readTrade(trades);
        const double c = commissione(dbSet, t);
        if (t.tipo.toUpper() == QLatin1String("BUY"))
            compra(dbExe, t, c);
        else if (!vendi(dbExe, t, c, stop))
            break;
        contaErrore(dbSet, t);
        trades.MoveNext();
    }
    exeTx.Commit();
    setTx.Commit();
    // What was done up to the stopping sale is on disk before the box shows.
    if (stopped && box)
        box(message);
}

} // namespace ledger
