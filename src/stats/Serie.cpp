#include "stats/Serie.h"

#include "store/Recordset.h"

namespace stats {

std::vector<double> Percentuali(store::Recordset& rs)
{
    std::vector<double> out;
    out.reserve(static_cast<std::size_t>(rs.RecordCount()));
    while (!rs.Eof()) {
        out.push_back(rs.Number(QStringLiteral("GPPercentuale")));
        rs.MoveNext();
    }
    return out;
}

Serie ContaSerie(const std::vector<double>& percentuali)
{
    Serie s;
    double sommaPos = 0, sommaNeg = 0;
    int contaPos = 0, contaNeg = 0;
    auto registra = [&s](double somma, int lunghezza) {
        ++s.numSerie;
        s.valore[s.numSerie] = somma;
        s.lunghezza[s.numSerie] = lunghezza;
    };
    for (const double p : percentuali) {
        if (p > 0) {
            if (sommaNeg < 0)
                registra(sommaNeg, contaNeg);
            sommaNeg = 0;
            sommaPos += p;
            ++contaPos;
            contaNeg = 0;
        } else {
            if (sommaPos > 0)
                registra(sommaPos, contaPos);
            sommaPos = 0;
            sommaNeg += p;
            --contaNeg;
            contaPos = 0;
        }
    }
    return s;
}

ListaPercentuali LeggiPercentuali(store::Recordset& rs)
{
    ListaPercentuali l;
    while (!rs.Eof()) {
        ++l.numOperazioni;
        l.valori[l.numOperazioni] = rs.Number(QStringLiteral("GPPercentuale"));
        rs.MoveNext();
    }
    return l;
}

QVector<QVector<QVariant>> DatiGrafico(const TabellaGrafico& g)
{
    auto cella = [](const num::Figure& f) { return f ? QVariant(*f) : QVariant(); };
    QVector<QVector<QVariant>> righe;
    righe.reserve(TabellaGrafico::kHigh + 1);
    for (long long i = TabellaGrafico::kLow; i <= TabellaGrafico::kHigh; ++i)
        righe.push_back({cella(g[i].x), cella(g[i].y)});
    return righe;
}

} // namespace stats
