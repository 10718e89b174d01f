#include "stats/frmMDD.h"

#include "app/Module1.h"
#include "platform/Forms.h"
#include "store/Database.h"

frmMDD* frmMDD::Instance() { return platform::Form<frmMDD>(); }

frmMDD::frmMDD()
    : FinestraSerie({.nome = QStringLiteral("frmMDD"),
                     .titolo = QStringLiteral("Massimo Draw-Down (MDD)"),
                     .icona = 8,
                     .graficoSerie = QStringLiteral("msc_SeqPosNeg"),
                     .titoloSerie = QStringLiteral("Numero di operazioni in profitto /perdita raggruppate in serie"),
                     .testoLaterale = QStringLiteral("Quantità di operazioni in profitto o perdida / serie"),
                     .griglia = QStringLiteral("MSFlexGrid_MDD"),
                     .etichettaGriglia = QStringLiteral("Tabella MDD"),
                     .graficoFrequenze = QStringLiteral("msc_FrequenzaMDD"),
                     .etichettaFrequenze = QStringLiteral("Grafico MDD"),
                     .legendaSerie = QStringLiteral("Operazioni per serie")})
{
    Colore();
    Main();
}

void frmMDD::Colore() { Module1::ApplicaColori(this); }

void frmMDD::Main()
{
    store::Recordset rs = Module1::dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM OperazioniChiuse"));
    rs.MoveLast();
    rs.MoveFirst();
    const stats::Serie serie = stats::ContaSerie(stats::Percentuali(rs));
    MostraSerie(serie.lunghezza, serie.numSerie);

    stats::FrequenzeMDD lunghezze = stats::ContaFrequenze<100>(serie.lunghezza, serie.numSerie);
    stats::Ordina(lunghezze);
    // Shares of the runs, not of the operations.
    const stats::TabellaGrafico grafico = stats::Grafico(lunghezze, serie.numSerie);
    // The column headed "Ricorrenze" shows the share, not the count.
    MostraTabella(QStringLiteral("Sequenza"), QStringLiteral("Ricorrenze"), grafico, lunghezze.numDistinti, QString());
    MostraFrequenze(grafico);
}
