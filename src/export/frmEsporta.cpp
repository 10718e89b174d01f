#include "export/frmEsporta.h"

#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/Forms.h"
#include "platform/MessageBox.h"
#include "platform/Numbers.h"
#include "store/Delivered.h"

#include <QCheckBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

using Module1::dbExe;
using Module1::dbSet;
using Module1::sFilePortafoglio;

namespace {
// The three forms in the order of the dialog's filter, each with the extension it adds to a bare name.
const QStringList kFiltri = {QStringLiteral("Excell (.xlsx) (*.xlsx)"), QStringLiteral("Database (.db) (*.db)"),
                             QStringLiteral("Testo (.csv) (*.csv)")};
const QStringList kEstensioni = {QStringLiteral("xlsx"), QStringLiteral("db"), QStringLiteral("csv")};

// The dialog names a filter by its shown text, without the pattern: 1 to 3, 0 for none.
int forma(const QString& filter)
{
    for (int i = 0; i < kFiltri.size(); ++i)
        if (kFiltri[i] == filter || kFiltri[i].startsWith(filter + QStringLiteral(" (")))
            return i + 1;
    return 0;
}

bool stessoFile(const QString& a, const QString& b)
{
    return !a.isEmpty() && !b.isEmpty() && QFileInfo(a).canonicalFilePath() == QFileInfo(b).canonicalFilePath();
}

// Replacing a file the program holds open, or the portfolio the copy comes from, fails as a locked file does.
void eliminaFile(const QString& file)
{
    for (const QString& inUso : {dbExe.Path(), dbSet.Path(), sFilePortafoglio})
        if (stessoFile(file, inUso))
            throw esporta::ErroreEsportazione(QStringLiteral("File in uso: ") + file);
    if (!QFile::remove(file))
        throw esporta::ErroreEsportazione(QStringLiteral("Impossibile eliminare il file ") + file);
}
} // namespace

frmEsporta* frmEsporta::Instance() { return platform::Form<frmEsporta>(); }

frmEsporta::frmEsporta() : QDialog(MDIForm1::Instance())
{
    setObjectName(QStringLiteral("frmEsporta"));
    setWindowTitle(QStringLiteral("Esporta  "));
    setModal(true);

    auto casella = [this](const QString& name, const QString& caption) {
        auto* c = new QCheckBox(caption, this);
        c->setObjectName(name);
        connect(c, &QCheckBox::toggled, this, &frmEsporta::chk_Click);
        return c;
    };
    auto conteggio = [this](const QString& name) {
        auto* l = new QLabel(this);
        l->setObjectName(name);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        l->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00000000")));
        return l;
    };
    chk_OperazioniChiuse_ = casella(QStringLiteral("chk_OperazioniChiuse"), QStringLiteral("Op.chiuse"));
    chk_Eseguiti_ = casella(QStringLiteral("chk_Eseguiti"), QStringLiteral("Eseguiti"));
    chk_Portafoglio_ = casella(QStringLiteral("chk_Portafoglio"), QStringLiteral("Portafoglio"));
    lab_Operazionichiuse_ = conteggio(QStringLiteral("lab_Operazionichiuse"));
    lab_Eseguiti_ = conteggio(QStringLiteral("lab_Eseguiti"));
    lab_Portafoglio_ = conteggio(QStringLiteral("lab_Portafoglio"));

    auto* tabelle = new QGridLayout;
    tabelle->setContentsMargins(12, 0, 0, 0);
    tabelle->setVerticalSpacing(6);
    tabelle->addWidget(chk_OperazioniChiuse_, 0, 0);
    tabelle->addWidget(lab_Operazionichiuse_, 0, 1);
    tabelle->addWidget(chk_Eseguiti_, 1, 0);
    tabelle->addWidget(lab_Eseguiti_, 1, 1);
    tabelle->addWidget(chk_Portafoglio_, 2, 0);
    tabelle->addWidget(lab_Portafoglio_, 2, 1);
    // The counts stand beside their boxes, not at the far edge of a wide window.
    tabelle->setColumnStretch(2, 1);

    ProgressBar1_ = new QProgressBar(this);
    ProgressBar1_->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1_->setTextVisible(false);
    // Its place stays when hidden, so the window doesn't jump when an export starts.
    QSizePolicy policy = ProgressBar1_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    ProgressBar1_->setSizePolicy(policy);

    cmd_Avvia_ = new QPushButton(QStringLiteral("&Esporta"), this);
    cmd_Avvia_->setObjectName(QStringLiteral("cmd_Avvia"));
    cmd_Avvia_->setDefault(true);
    cmd_Chiudi_ = new QPushButton(QStringLiteral("&Chiudi"), this);
    cmd_Chiudi_->setObjectName(QStringLiteral("cmd_Chiudi"));
    connect(cmd_Avvia_, &QPushButton::clicked, this, &frmEsporta::AvviaEsportazione);
    connect(cmd_Chiudi_, &QPushButton::clicked, this, &QDialog::reject);
    auto* pulsanti = new QHBoxLayout;
    pulsanti->addStretch();
    pulsanti->addWidget(cmd_Avvia_);
    pulsanti->addWidget(cmd_Chiudi_);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 14, 16, 14);
    layout->addWidget(new QLabel(QStringLiteral("Tabelle da esportare :"), this));
    layout->addLayout(tabelle);
    layout->addStretch();
    layout->addWidget(ProgressBar1_);
    layout->addLayout(pulsanti);
    // A small dialog: made larger it would only spread its few controls apart.
    setFixedSize(sizeHint().expandedTo(QSize(320, 200)));

    // Load.
    Module1::ApplicaColori(this);
    ProgressBar1_->hide();
    cmd_Avvia_->setEnabled(false);
}

void frmEsporta::done(int result)
{
    QDialog::done(result);
    platform::Forms::Unload(objectName());
}

void frmEsporta::chk_Click()
{
    cmd_Avvia_->setEnabled(chk_OperazioniChiuse_->isChecked() || chk_Eseguiti_->isChecked()
                           || chk_Portafoglio_->isChecked());
}

esporta::Scelta frmEsporta::scelta() const
{
    return {chk_OperazioniChiuse_->isChecked(), chk_Eseguiti_->isChecked(), chk_Portafoglio_->isChecked()};
}

bool frmEsporta::chiediFile(QString* file, int* filtro)
{
    // Opens where the last export of the session went.
    static QString cartella;
    QFileDialog dialog(this, QStringLiteral("Esporta i dati in xls"));
    dialog.setObjectName(QStringLiteral("CommonDialog1"));
    // The window asks about replacing a file itself.
    dialog.setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite
                      | QFileDialog::HideNameFilterDetails);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(kFiltri);
    dialog.setDefaultSuffix(kEstensioni.first());
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        dialog.setDefaultSuffix(kEstensioni.value(forma(filter) - 1));
    });
    if (!cartella.isEmpty())
        dialog.setDirectory(cartella);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    const QStringList files = dialog.selectedFiles();
    const auto* edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    const bool vuoto = !edit || edit->text().trimmed().isEmpty() || files.isEmpty();
    *file = vuoto ? QString() : files.first();
    *filtro = forma(dialog.selectedNameFilter());
    cartella = dialog.directory().absolutePath();
    return true;
}

void frmEsporta::AvviaEsportazione()
{
    // Every failure from here on, Cancel included, closes the window without a word.
    try {
        QString file;
        int filtro = 0;
        if (!chiediFile(&file, &filtro) || file.isEmpty()) {
            reject();
            return;
        }
        if (Module1::FileEsiste(file)) {
            if (platform::MsgBox("Il file " + file + "  esiste già!" + "\n" + "sostituire il file?",
                                 platform::Buttons::YesNo, platform::Icon::Information, this)
                != platform::Answer::Yes)
                return;
            eliminaFile(file);
        }
        abilitaPulsanti(false);
        switch (filtro) {
        case 1:
            EsportaXls(file);
            break;
        case 2:
            EsportaMdb(file);
            break;
        case 3:
            EsportaCsv(file);
            break;
        }
        abilitaPulsanti(true);
    } catch (...) {
        reject();
    }
}

void frmEsporta::abilitaPulsanti(bool on)
{
    cmd_Avvia_->setEnabled(on);
    cmd_Chiudi_->setEnabled(on);
    // The export blocks the event loop: show the change now.
    if (!on)
        repaint();
}

void frmEsporta::EsportaXls(const QString& file)
{
    esporta::EsportaXls(dbExe, file, scelta(), Module1::FileProgramma(store::kLogoFile), *this);
}

void frmEsporta::EsportaMdb(const QString& file)
{
    // Its own failures end it silently and leave the window open.
    try {
        esporta::EsportaMdb(dbExe, sFilePortafoglio, file, scelta(), *this);
        MDIForm1::Instance()->ControlloMenu();
    } catch (...) {
        return;
    }
}

void frmEsporta::EsportaCsv(const QString& file) { esporta::EsportaCsv(dbExe, file, scelta(), *this); }

void frmEsporta::MostraBarra(bool visibile)
{
    ProgressBar1_->setVisible(visibile);
    if (visibile)
        ProgressBar1_->repaint();
}

void frmEsporta::Massimo(int massimo) { ProgressBar1_->setMaximum(massimo); }

void frmEsporta::AvanzaProgresso()
{
    if (!(ProgressBar1_->maximum() > nProgresso_)) {
        nProgresso_ = 0;
        ProgressBar1_->setValue(0);
    } else {
        nProgresso_ = num::ToInt16(nProgresso_ + 1.0);
        ProgressBar1_->setValue(nProgresso_);
    }
}

void frmEsporta::Etichetta(esporta::Tabella tabella, const QString& testo)
{
    switch (tabella) {
    case esporta::Tabella::OperazioniChiuse:
        lab_Operazionichiuse_->setText(testo);
        break;
    case esporta::Tabella::Eseguiti:
        lab_Eseguiti_->setText(testo);
        break;
    case esporta::Tabella::Portafoglio:
        lab_Portafoglio_->setText(testo);
        break;
    }
}
