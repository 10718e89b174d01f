#include "stats/frmErrori.h"

#include "app/Module1.h"
#include "platform/Chart.h"
#include "platform/ChartStyle.h"
#include "platform/DataSource.h"
#include "platform/Forms.h"
#include "stats/Errori.h"
#include "store/Database.h"

#include <QChart>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

using Module1::dbExe;
using Module1::dbSet;

namespace {
const QString kPerContatore = QStringLiteral("SELECT  * FROM Errori ORDER BY Contatore DESC");
// Height above the chart for its caption (pixels).
constexpr int kTitolo = 24;
} // namespace

frmErrori* frmErrori::Instance() { return platform::Form<frmErrori>(); }

frmErrori::frmErrori()
{
    setObjectName(QStringLiteral("frmErrori"));
    setWindowTitle(QStringLiteral("Errori"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/7.svg")));

    msc_Errori_ = new platform::Chart(this);
    msc_Errori_->setObjectName(QStringLiteral("msc_Errori"));
    msc_Errori_->SetSeriesColors({QColor(46, 120, 210), QColor(220, 90, 60)});
    msc_Errori_->SetChartType(platform::Chart::Bar2D);
    Label1_ = new QLabel(QStringLiteral("Ricorrenza/Tipo di errore"), this);
    Label1_->setObjectName(QStringLiteral("Label1"));

    sinistra_ = new QWidget(this);
    auto* colonna = new QVBoxLayout(sinistra_);
    colonna->setContentsMargins(6, 6, 6, 6);
    auto* figure = new QGroupBox(sinistra_);
    auto* form = new QFormLayout(figure);
    form->setContentsMargins(8, 6, 8, 6);
    form->setVerticalSpacing(3);
    for (const auto& [caption, name] : {std::pair{"Totale errori", "lab_TotaleErrori"},
                                        {"% errore", "lab_PercentualeErrori"},
                                        {"Mancati guadagni", "lab_TotMancatiGuadagni"},
                                        {"Piu' frequente", "lab_PiuFrequente"},
                                        {"Piu' pericoloso", "lab_PiuPericoloso"}}) {
        auto* valore = new QLabel(figure);
        valore->setObjectName(QString::fromLatin1(name));
        valore->setWordWrap(true);
        form->addRow(QString::fromLatin1(caption), valore);
    }
    colonna->addWidget(figure);

    dat_Errori_ = new platform::DataSource(this);
    dat_Errori_->setObjectName(QStringLiteral("dat_Errori"));
    DBGrid1_ = new platform::DataGrid(sinistra_);
    DBGrid1_->setObjectName(QStringLiteral("DBGrid1"));
    colonna->addWidget(DBGrid1_, 1);

    frm_Grafici_ = new platform::ChartStyleSwitch({"Barre 3D", "Barre"}, {msc_Errori_}, sinistra_);
    frm_Grafici_->Button(1)->setChecked(true);
    colonna->addWidget(frm_Grafici_);

    msc_Errori_->setGeometry(platform::Twips(platform::ResizeRuleOf(QStringLiteral("msc_Errori")).left), kTitolo, 400, 300);
    setMinimumSize(680, 420);
    resize(1000, 560);
    Colore();
    Main();
}

void frmErrori::Colore() { Module1::ApplicaColori(this); }

QLabel* frmErrori::lab(const char* name) const { return findChild<QLabel*>(QString::fromLatin1(name)); }

void frmErrori::Main()
{
    eseguiti_ = dbExe.OpenRecordset(QStringLiteral("SELECT * FROM Eseguiti"));
    catalogo_ = dbSet.OpenRecordset(QStringLiteral("SELECT  * FROM Errori"));
    stats::ConteggioErrori conto;
    {
        // Many statements in a row: one transaction, which keeps what was written
        // before a failure, as statement by statement would.
        store::Transaction tx(dbSet);
        try {
            conto = stats::ContaErrori(dbSet, eseguiti_, catalogo_);
        } catch (...) {
            tx.Commit();
            throw;
        }
        tx.Commit();
    }

    const QString piuPericoloso = stats::PrimoSopraZero(dbSet.OpenRecordset(QStringLiteral("SELECT  * FROM Errori ORDER BY Importo DESC")),
                                                        QStringLiteral("Importo"));
    store::Recordset perContatore = dbSet.OpenRecordset(kPerContatore);
    const QString piuFrequente = stats::PrimoSopraZero(perContatore, QStringLiteral("Contatore"));

    dat_Errori_->SetSource(&dbSet, kPerContatore);
    dat_Errori_->Refresh();
    if (!DBGrid1_->Model()) {
        DBGrid1_->Bind(dat_Errori_, {{"Cod", "Cod"}, {"Descrizione", "Descrizione"}, {"MancatoGain", "Importo"}, {"Num", "Contatore"}});
        QHeaderView* h = DBGrid1_->horizontalHeader();
        h->setStretchLastSection(false);
        h->setSectionResizeMode(1, QHeaderView::Stretch);
        DBGrid1_->setColumnWidth(0, 40);
        DBGrid1_->setColumnWidth(2, 84);
        DBGrid1_->setColumnWidth(3, 44);
    }

    lab("lab_TotaleErrori")->setText(num::Text(conto.totaleErrori));
    lab("lab_PercentualeErrori")->setText(
        num::Text(num::Round(num::Divide(num::ValueOf(conto.totaleErrori) * 100, num::ValueOf(conto.numEseguiti)), 1)));
    lab("lab_TotMancatiGuadagni")->setText(num::Text(conto.totaleMancati));
    lab("lab_PiuPericoloso")->setText(piuPericoloso);
    lab("lab_PiuFrequente")->setText(piuFrequente);

    perContatore.MoveLast();
    perContatore.MoveFirst();
    const QVector<stats::RigaGraficoErrori> righe = stats::GraficoErrori(
        perContatore, conto.codiceNessunErrore, num::ValueOf(conto.totaleErrori), num::ValueOf(conto.totaleMancati));
    const platform::Chart::Hold hold(msc_Errori_);
    msc_Errori_->SetRowCount(perContatore.RecordCount() - 1);
    msc_Errori_->SetColumnCount(2);
    for (int r = 1; r <= righe.size(); ++r) {
        const stats::RigaGraficoErrori& riga = righe[r - 1];
        msc_Errori_->SetColumn(1);
        msc_Errori_->SetRow(r);
        msc_Errori_->SetData(num::Text(riga.ricorrenza));
        msc_Errori_->SetRowLabel(riga.descrizione);
        msc_Errori_->SetColumn(2);
        msc_Errori_->SetData(num::Text(riga.mancato));
    }
    msc_Errori_->SetColumn(1);
    msc_Errori_->SetColumnLabel(QStringLiteral("% sul totale errori"));
    msc_Errori_->SetColumn(2);
    msc_Errori_->SetColumnLabel(QStringLiteral("% sui mancati guadagni"));
}

void frmErrori::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    platform::ApplyChartResize(this, msc_Errori_, frm_Grafici_, platform::ResizeRuleOf(msc_Errori_->objectName()));
    sinistra_->setGeometry(0, 0, msc_Errori_->x() - 6, height());
    Label1_->setGeometry(msc_Errori_->x() + 8, 4, msc_Errori_->width() - 8, kTitolo - 4);
}
