#include "stats/frmRisk.h"

#include "app/Module1.h"
#include "platform/Forms.h"
#include "store/Database.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {
const QString kTutte = QStringLiteral("SELECT *  FROM OperazioniChiuse");
}

frmRisk* frmRisk::Instance() { return platform::Form<frmRisk>(); }

frmRisk::frmRisk()
    : FinestraSerie({.nome = QStringLiteral("frmRisk"),
                     .titolo = QStringLiteral("Probabilità di Rischio"),
                     .icona = 9,
                     .graficoSerie = QStringLiteral("msc_MDD"),
                     .titoloSerie = QStringLiteral("Percentuale  di  profitto /perdita raggruppate in serie"),
                     .testoLaterale = QStringLiteral("Percentuale di profitto-perdita/serie"),
                     .griglia = QStringLiteral("MSFlexGrid_FP"),
                     .etichettaGriglia = QStringLiteral("Tabella :"),
                     .graficoFrequenze = QStringLiteral("msc_FrequenzaPerc"),
                     .etichettaFrequenze = QStringLiteral("Probabilità :"),
                     .legendaSerie = QStringLiteral("% per serie")})
{
    auto* riga = new QHBoxLayout;
    riga->addWidget(new QLabel(QStringLiteral("Numero serie :"), this));
    lab_TotMDD_ = new QLabel(QStringLiteral("0"), this);
    lab_TotMDD_->setObjectName(QStringLiteral("lab_TotMDD"));
    riga->addWidget(lab_TotMDD_);
    riga->addStretch();
    Colonna()->insertLayout(0, riga);
    Colore();
    Main();
}

void frmRisk::Colore() { Module1::ApplicaColori(this); }

void frmRisk::Main()
{
    store::Recordset rs = Module1::dbExe.OpenRecordset(kTutte);
    rs.MoveLast();
    rs.MoveFirst();
    const stats::Serie serie = stats::ContaSerie(stats::Percentuali(rs));
    lab_TotMDD_->setText(QString::number(serie.numSerie));
    MostraSerie(serie.valore, serie.numSerie);

    // Second pass: every row's own percentage, in a list of at most 1000.
    store::Recordset righe = Module1::dbExe.OpenRecordset(kTutte);
    const stats::ListaPercentuali lista = stats::LeggiPercentuali(righe);
    stats::FrequenzeRisk percentuali = stats::ContaFrequenze<1000>(lista.valori, lista.numOperazioni);
    stats::Ordina(percentuali);
    // The chart table holds 50 values: the 51st distinct percentage ends the program here.
    const stats::TabellaGrafico grafico = stats::Grafico(percentuali, lista.numOperazioni);
    MostraTabella(QStringLiteral("Percentuali"), QStringLiteral("Probabilità"), grafico, percentuali.numDistinti,
                  QStringLiteral("%"));
    MostraFrequenze(grafico);
}
