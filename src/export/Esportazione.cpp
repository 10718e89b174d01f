#include "export/Esportazione.h"

#include "store/Database.h"

namespace esporta {

bool Scelta::Contiene(Tabella t) const
{
    switch (t) {
    case Tabella::OperazioniChiuse:
        return operazioniChiuse;
    case Tabella::Eseguiti:
        return eseguiti;
    case Tabella::Portafoglio:
        return portafoglio;
    }
    return false;
}

QString NomeTabella(Tabella t)
{
    switch (t) {
    case Tabella::OperazioniChiuse:
        return QStringLiteral("OperazioniChiuse");
    case Tabella::Eseguiti:
        return QStringLiteral("Eseguiti");
    case Tabella::Portafoglio:
        return QStringLiteral("Portafoglio");
    }
    return {};
}

store::Recordset ApriContando(store::Database& db, const QString& sql)
{
    store::Recordset rs = db.OpenRecordset(sql);
    if (rs.RecordCount() > 0) {
        rs.MoveLast();
        rs.MoveFirst();
    }
    return rs;
}

void EsportaMdb(store::Database& dbExe, const QString& sFilePortafoglio, const QString& file, const Scelta& scelta,
                Avanzamento& avanzamento)
{
    // An open database file can't be copied consistently.
    dbExe.Close();
    store::Database::CopyFile(sFilePortafoglio, file);
    dbExe.Open(file);
    dbExe.Execute(QStringLiteral("DROP TABLE EseguitiTemp, EseguitiBackup"));
    for (const Tabella t : kTabelle) {
        const QString nome = NomeTabella(t);
        if (!scelta.Contiene(t)) {
            dbExe.Execute(QStringLiteral("DROP TABLE ") + nome);
            continue;
        }
        // An empty table counts 0 rather than stopping the copy half way.
        const store::Recordset rs = ApriContando(dbExe, QStringLiteral("SELECT *  FROM ") + nome);
        avanzamento.Etichetta(t, QString::number(rs.RecordCount()));
    }
    // No pages of the dropped tables stay behind in the copy.
    dbExe.Execute(QStringLiteral("VACUUM"));
    dbExe.Close();
    dbExe.Open(sFilePortafoglio);
}

} // namespace esporta
