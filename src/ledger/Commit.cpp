#include "ledger/Commit.h"

#include "platform/Numbers.h"
#include "store/Database.h"

namespace ledger {

double Numero(const QString& text)
{
    const QString t = text.trimmed();
    int end = 0;
    if (end < t.size() && (t[end] == '-' || t[end] == '+'))
        ++end;
    bool comma = false;
    while (end < t.size() && (t[end].isDigit() || (t[end] == ',' && !comma))) {
        comma = comma || t[end] == ',';
        ++end;
    }
    return num::Parse(t.left(end)).value_or(0.0);
}

double NumeroStretto(const QString& text)
{
    const std::optional<double> v = num::Parse(text);
    if (!v || text.contains('.'))
        throw platform::Failure("Tipo non corrispondente: \"" + text.toStdString() + "\"");
    return *v;
}

double Importo(const CampiEseguito& c) { return Numero(c.quantita) * Numero(c.prezzo); }

QString InsertEseguito(const QString& table, const CampiEseguito& c)
{
    return "INSERT INTO " + table + " (Data, Tipo, System, Cod, Titolo, Qta, Prezzo, Importo, Errore, PrezzoOttimale)"
        + "VALUES ('" + num::DateText(c.data) + "','" + c.tipo + "','" + c.sistema + "','" + c.codice + "','" + c.titolo
        + "'," + c.quantita + "," + num::CommaToPoint(c.prezzo) + "," + num::CommaToPoint(num::Text(Importo(c))) + ",'"
        + c.errore + "'," + num::CommaToPoint(c.ottimale) + ")";
}

QString UpdateEseguito(const CampiEseguito& c, long long id)
{
    const QString prezzo = num::SqlText(num::Round(NumeroStretto(c.prezzo), 4));
    const QString ottimale = num::SqlText(num::Round(NumeroStretto(c.ottimale), 4));
    return "UPDATE Eseguiti SET Data = '" + num::DateText(c.data) + "', Tipo ='" + c.tipo + "', System ='" + c.sistema
        + "', Cod='" + c.codice + "', Titolo='" + c.titolo + "', Qta =" + c.quantita + ", Prezzo=" + prezzo
        + ", Importo=" + num::CommaToPoint(num::Text(Importo(c))) + ", Errore='" + c.errore + "', PrezzoOttimale = "
        + ottimale + " WHERE ID =" + QString::number(id);
}

void RipristinaEseguiti(store::Database& dbExe)
{
    store::Transaction tx(dbExe);
    dbExe.Execute(QStringLiteral("DELETE * FROM Eseguiti"));
    dbExe.Execute(QStringLiteral("INSERT INTO Eseguiti SELECT * FROM EseguitiTemp"));
    tx.Commit();
}

} // namespace ledger
