#include "account/Conto.h"

#include "platform/Numbers.h"
#include "store/Recordset.h"

namespace account {

const QStringList& TipiMovimento()
{
    static const QStringList tipi = {QStringLiteral("Dividendi"), QStringLiteral("Versamento"), QStringLiteral("Prelievo"),
                                     QStringLiteral("Costi di gestione")};
    return tipi;
}

QString TipoSconosciuto() { return QStringLiteral("Errore nel modulo controllo record"); }

Movimenti SommaMovimenti(store::Recordset& conto, const std::function<void()>& tipoSconosciuto)
{
    Movimenti m;
    if (conto.RecordCount() == 0)
        return m;
    const QStringList& tipi = TipiMovimento();
    for (conto.MoveFirst(); !conto.Eof(); conto.MoveNext()) {
        const QString tipo = conto.Text(QStringLiteral("Tipo"));
        const double importo = conto.Number(QStringLiteral("Importo"));
        // Compared exactly, capitals included, although the column itself ignores case.
        if (tipo == tipi[0]) {
            m.dividendi += importo;
            m.saldo += importo;
        } else if (tipo == tipi[1]) {
            m.versamenti += importo;
            m.saldo += importo;
        } else if (tipo == tipi[2]) {
            m.prelievi -= importo;
            m.saldo -= importo;
        } else if (tipo == tipi[3]) {
            m.costi -= importo;
            m.saldo -= importo;
        } else {
            tipoSconosciuto();
        }
    }
    return m;
}

QString InsertMovimento(const CampiMovimento& c)
{
    return "INSERT INTO Conto (Data, Tipo, Importo, Descrizione) VALUES ('" + num::DateText(c.data) + "','" + c.tipo
        + "','" + num::CommaToPoint(c.importo) + "','" + c.descrizione + "')";
}

QString UpdateMovimento(const CampiMovimento& c, long long id)
{
    return "UPDATE Conto SET Data = '" + num::DateText(c.data) + "', Tipo ='" + c.tipo
        + "', Importo =" + num::CommaToPoint(c.importo) + ", Descrizione='" + c.descrizione + "' WHERE ID ="
        + QString::number(id);
}

} // namespace account
