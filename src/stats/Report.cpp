#include "stats/Report.h"

#include "store/Database.h"

#include <cmath>

namespace stats {

Bilancio CalcolaBilancio(store::Recordset& rs)
{
    Bilancio b;
    while (!rs.Eof()) {
        const double gp = rs.Number(QStringLiteral("gp"));
        const double perc = rs.Number(QStringLiteral("GPPercentuale"));
        if (gp > 0) {
            b.sommaGain += gp;
            b.percGain += perc;
            ++b.numGain;
        } else if (gp < 0) {
            b.sommaPerdite += std::fabs(gp);
            b.percPerdite += perc;
            ++b.numPerdite;
        } else {
            ++b.numPari;
        }
        b.totaleGP += gp;
        b.totaleCommissioni += rs.Number(QStringLiteral("Commissioni"));
        rs.MoveNext();
    }
    b.numOperazioni = rs.RecordCount();
    return b;
}

double CapitalGain(double totaleGP, double totaleCommissioni, double aliquota)
{
    if (totaleGP <= 0)
        return 0;
    return num::Floor(std::fabs((totaleGP - totaleCommissioni) * aliquota / 100));
}

num::Figure UtileNetto(store::Database& dbExe, store::Database& dbSet, const QString& filePortafoglio)
{
    if (filePortafoglio.isEmpty())
        return std::nullopt;
    store::Recordset rs = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM OperazioniChiuse"));
    static store::Recordset settaggi; // kept at module level, as the routine has always done
    settaggi = dbSet.OpenRecordset(QStringLiteral("SELECT *  FROM Settaggi"));
    if (rs.RecordCount() == 0)
        return std::nullopt;
    double totaleGP = 0, totaleCommissioni = 0;
    while (!rs.Eof()) {
        totaleGP += rs.Number(QStringLiteral("gp"));
        totaleCommissioni += rs.Number(QStringLiteral("Commissioni"));
        rs.MoveNext();
    }
    return (totaleGP - totaleCommissioni) - CapitalGain(totaleGP, totaleCommissioni, settaggi.Number(QStringLiteral("CapitalGain")));
}

QString TestoIntero(double value) { return num::Text(num::Floor(value)); }

} // namespace stats
