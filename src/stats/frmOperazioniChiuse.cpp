#include "stats/frmOperazioniChiuse.h"

#include "app/Module1.h"
#include "platform/ChartStyle.h"
#include "platform/DataSource.h"
#include "platform/Forms.h"

#include <QFontMetrics>
#include <QLabel>
#include <QMdiSubWindow>

#include <algorithm>

using Module1::dbExe;

namespace {
const QList<platform::GridColumn> kColonne = {
    {"Data", "Data"},           {"System", "System"}, {"Codice", "Cod"},   {"Titolo", "Titolo"},
    {"P.zo di Carico", "PzoCarico"}, {"Quantita'", "Qta"}, {"Prezzo di vendita", "Prezzo"},
    {"Comm", "Commissioni"},    {"Ricavo", "GP"},     {"% ", "GPPercentuale"},
};
// Each column as wide as its caption or a sample of its usual widest value: the
// commission, never rounded, shows all fifteen digits.
const char* const kCampioni[] = {"00/00/0000", "XXXX", "XXXXX",      "XXXXXXX",    "0000,0000",
                                 "000000",     "0000,0000", "000,000000000000", "-0000,0000", "-00,00"};
// The grid's width and top, and the band under it that holds the data control's caption (twips).
constexpr int kGriglia = 10200;
constexpr int kCima = 60;
constexpr int kPiede = 370;
} // namespace

frmOperazioniChiuse* frmOperazioniChiuse::Instance() { return platform::Form<frmOperazioniChiuse>(); }

frmOperazioniChiuse::frmOperazioniChiuse()
{
    setObjectName(QStringLiteral("frmOperazioniChiuse"));
    setWindowTitle(QStringLiteral("Operazioni Chiuse"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/4.svg")));
    dat_OperazioniChiuse_ = new platform::DataSource(this);
    dat_OperazioniChiuse_->setObjectName(QStringLiteral("dat_OperazioniChiuse"));
    dbg_OperazioniChiuse_ = new platform::DataGrid(this);
    dbg_OperazioniChiuse_->setObjectName(QStringLiteral("dbg_OperazioniChiuse"));
    lab_Tabella_ = new QLabel(QStringLiteral("Tabella operazioni chiuse"), this);
    lab_Tabella_->setAlignment(Qt::AlignCenter);
    dbg_OperazioniChiuse_->setGeometry(0, platform::Twips(kCima), platform::Twips(kGriglia), 400);
    setMinimumHeight(200);
    resize(platform::Twips(kLarghezza), 480);
    Colore();
    Main();
    dbg_OperazioniChiuse_->Bind(dat_OperazioniChiuse_, kColonne);
    const QFontMetrics fm(dbg_OperazioniChiuse_->font());
    for (int c = 0; c < kColonne.size(); ++c)
        dbg_OperazioniChiuse_->setColumnWidth(
            c, std::max(fm.horizontalAdvance(kColonne[c].caption), fm.horizontalAdvance(QLatin1String(kCampioni[c]))) + 10);
    Main();
}

void frmOperazioniChiuse::Colore() { Module1::ApplicaColori(this); }

void frmOperazioniChiuse::Main()
{
    dat_OperazioniChiuse_->SetSource(&dbExe, QStringLiteral("SELECT Data, System, Cod ,Titolo, PzoCarico, Qta, Prezzo,")
                                                 + QStringLiteral("Commissioni, GP, GPPercentuale, Errore, PrezzoOttimale ")
                                                 + QStringLiteral("FROM OperazioniChiuse"));
    dat_OperazioniChiuse_->Refresh();
}

void frmOperazioniChiuse::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    using platform::Twips;
    const int W = width() * 12;
    const int H = height() * 12;
    QRect g = dbg_OperazioniChiuse_->geometry();
    g.moveLeft(Twips((W - kGriglia) / 2));
    if (H - 1000 > 0)
        g.setHeight(Twips(H - kPiede));
    dbg_OperazioniChiuse_->setGeometry(g);
    lab_Tabella_->setGeometry(g.left(), g.bottom() + 1, g.width(), height() - g.bottom() - 1);
    // In the normal state only the height changes: the width snaps back.
    auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget());
    QWidget* finestra = sub ? static_cast<QWidget*>(sub) : this;
    if (!(finestra->windowState() & (Qt::WindowMaximized | Qt::WindowMinimized)) && width() != Twips(kLarghezza))
        finestra->resize(finestra->width() + Twips(kLarghezza) - width(), finestra->height());
}
