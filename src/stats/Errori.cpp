#include "stats/Errori.h"

#include "store/Database.h"

namespace stats {

double MancatoGuadagno(double qta, double prezzo, double prezzoOttimale)
{
    if (prezzo > prezzoOttimale)
        return num::Floor(qta * (prezzo - prezzoOttimale));
    return num::Floor(qta * (prezzoOttimale - prezzo));
}

ConteggioErrori ContaErrori(store::Database& dbSet, store::Recordset& eseguiti, store::Recordset& catalogo)
{
    ConteggioErrori c;
    if (eseguiti.RecordCount() == 0)
        return c;
    c.codiceNessunErrore = catalogo.Text(QStringLiteral("Cod"));
    dbSet.Execute(QStringLiteral("UPDATE Errori SET Contatore = 0, Importo = 0"));
    c.totaleErrori = 0;
    while (!eseguiti.Eof()) {
        const QString errore = eseguiti.Text(QStringLiteral("Errore"));
        // A missing code compares as neither equal nor different: the trade counts as clean.
        if (!eseguiti.Field(QStringLiteral("Errore")).isNull() && errore != c.codiceNessunErrore) {
            const double mancato = MancatoGuadagno(eseguiti.Number(QStringLiteral("qta")), eseguiti.Number(QStringLiteral("Prezzo")),
                                                   eseguiti.Number(QStringLiteral("PrezzoOttimale")));
            // Read before the cursor moves on to this error's row.
            const QString importo = num::SqlText(catalogo.Number(QStringLiteral("Importo")) + mancato);
            c.totaleMancati = num::ValueOf(c.totaleMancati) + mancato;
            catalogo = dbSet.OpenRecordset("SELECT *  FROM Errori WHERE Cod = '" + errore + "'");
            dbSet.Execute("UPDATE Errori SET Contatore = " + num::Text(catalogo.Number(QStringLiteral("Contatore")) + 1)
                          + ",Importo =" + importo + " WHERE Cod ='" + errore + "'");
            c.totaleErrori = num::ValueOf(c.totaleErrori) + 1;
        }
        c.numEseguiti = num::ValueOf(c.numEseguiti) + 1;
        eseguiti.MoveNext();
    }
    return c;
}

QString PrimoSopraZero(const store::Recordset& rs, const QString& campo)
{
    return rs.Number(campo) > 0 ? rs.Text(QStringLiteral("Descrizione")) : QString();
}

QVector<RigaGraficoErrori> GraficoErrori(store::Recordset& rs, const QString& codiceNessunErrore, double totaleErrori,
                                         double totaleMancati)
{
    // The labels show the true totals; the chart only avoids dividing by 0.
    const double errori = totaleErrori == 0 ? 1 : totaleErrori;
    const double mancati = totaleMancati == 0 ? 1 : totaleMancati;
    QVector<RigaGraficoErrori> righe;
    rs.MoveFirst();
    while (!rs.Eof()) {
        if (rs.Text(QStringLiteral("Cod")) != codiceNessunErrore)
            righe.push_back({rs.Text(QStringLiteral("Descrizione")), rs.Number(QStringLiteral("Contatore")) * 100 / errori,
                             rs.Number(QStringLiteral("Importo")) * 100 / mancati});
        rs.MoveNext();
    }
    return righe;
}

} // namespace stats
