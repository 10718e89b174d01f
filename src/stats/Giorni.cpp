#include "stats/Giorni.h"

#include "store/Recordset.h"

namespace stats {

const QStringList& NomiGiorni()
{
    static const QStringList nomi = {"Lunedi", "Martedi", "Mercoledi", "Giovedi", "Venerdi"};
    return nomi;
}

SommeGiorni SommePerGiorno(store::Recordset& rs)
{
    SommeGiorni somme;
    while (!rs.Eof()) {
        // Sunday is day 1: days 2 to 6 are Monday to Friday.
        const int giorno = num::Weekday(rs.Field(QStringLiteral("Data")).toDate());
        if (giorno >= 2 && giorno <= 6) {
            num::Figure& s = somme[static_cast<std::size_t>(giorno - 2)];
            s = num::ValueOf(s) + rs.Number(QStringLiteral("SommaGP"));
        }
        rs.MoveNext();
    }
    return somme;
}

} // namespace stats
