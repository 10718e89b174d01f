#include "stats/Medie.h"

#include "store/Recordset.h"

namespace stats {

FigureMedie CalcolaFigureMedie(store::Recordset& rs)
{
    FigureMedie m;
    m.bilancio = CalcolaBilancio(rs);
    if (rs.RecordCount() == 0)
        return m;
    rs.MoveFirst();
    while (!rs.Eof()) {
        const double gp = rs.Number(QStringLiteral("gp"));
        m.capitaleInvestito = num::ValueOf(m.capitaleInvestito) + rs.Number(QStringLiteral("qta")) * rs.Number(QStringLiteral("Prezzo"));
        // An unset figure compares as 0.
        if (num::ValueOf(m.massimoGuadagno) < gp)
            m.massimoGuadagno = gp;
        if (num::ValueOf(m.massimaPerdita) > gp)
            m.massimaPerdita = gp;
        rs.MoveNext();
    }
    return m;
}

} // namespace stats
