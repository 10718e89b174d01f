// The frame's commands on portfolio files: new, open, open last, save as.
#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/MessageBox.h"
#include "store/Delivered.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>

using Module1::dbExe;
using Module1::dbSet;
using Module1::sFilePortafoglio;
using platform::MsgBox;

namespace {
const QString kProdotto = QStringLiteral("Quorvel - ");
const QString kDocumentoPredefinito = QStringLiteral("Quorvel1");
const QString kFiltro = QStringLiteral("*.qvp (*.qvp)");

// Saving onto itself is no copy, also when another path leads to the same file.
bool stessoFile(const QString& a, const QString& b)
{
    if (a == b)
        return true;
    const QString canonica = QFileInfo(a).canonicalFilePath();
    return !canonica.isEmpty() && canonica == QFileInfo(b).canonicalFilePath();
}
} // namespace

bool MDIForm1::chiediFile(bool save, QString* fileName, QString* fileTitle)
{
    QFileDialog dialog(this, save ? QStringLiteral("Salva con nome") : QStringLiteral("Apri DataSet"));
    dialog.setObjectName(QStringLiteral("CommonDialog1"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    // The command asks about overwriting itself.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setNameFilter(kFiltro);
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    // A name typed for a file that isn't there is the command's to answer, not the dialog's.
    dialog.setFileMode(QFileDialog::AnyFile);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    const QStringList files = dialog.selectedFiles();
    const QString typed = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
        ? dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text()
        : QString();
    *fileName = typed.trimmed().isEmpty() || files.isEmpty() ? QString() : files.first();
    *fileTitle = QFileInfo(*fileName).fileName();
    return true;
}

void MDIForm1::impostaCaption(const QString& caption)
{
    caption_ = caption;
    setWindowTitle(caption);
}

void MDIForm1::abilitaComandiPortafoglio()
{
    Button(6)->setEnabled(true);
    abilita({"mnu_Eseguiti", "mnu_Salva", "mnu_Importa"}, true);
}

void MDIForm1::mnu_NuovoPortafoglio_Click()
{
    if (caption_ == kProdotto + kDocumentoPredefinito) {
        const store::Recordset rs = dbExe.OpenRecordset(QStringLiteral("SELECT Cod  FROM Eseguiti"));
        if (rs.RecordCount() > 0
            && MsgBox(QStringLiteral("Salvare le modifiche al file ?"), platform::Buttons::YesNo, platform::Icon::Question,
                      this)
                == platform::Answer::Yes)
            mnu_Salva_Click();
    }
    sFilePortafoglio = Module1::FileProgramma(store::kScratchPortfolio);
    dbExe.Open(sFilePortafoglio);
    impostaCaption(kProdotto + kDocumentoPredefinito);
    for (const char* table : {"Portafoglio", "OperazioniChiuse", "Eseguiti", "EseguitiBackup", "EseguitiTemp", "Conto"})
        dbExe.Execute(QStringLiteral("DELETE * FROM ") + QLatin1String(table));
    abilitaComandiPortafoglio();
    ControlloMenu();
    MostraFinestra(QStringLiteral("frmEseguiti"));
}

void MDIForm1::mnu_Apri_Click()
{
    // Cancel and every failure below end the command without a word.
    try {
        QString file, title;
        if (!chiediFile(false, &file, &title) || file.isEmpty())
            return;
        if (!Module1::FileEsiste(file)) {
            MsgBox(QStringLiteral("non esiste"), platform::Buttons::Ok, platform::Icon::None, this);
            return;
        }
        dbExe.Open(file);
        abilitaComandiPortafoglio();
        sFilePortafoglio = file;
        impostaCaption(kProdotto + title);
        dbSet.Execute("UPDATE Settaggi SET ApriUltimo = '" + file + "'");
        RicalcolaPortafoglio();
        ControlloMenu();
        MostraFinestra(QStringLiteral("frmEseguiti"));
    } catch (const std::exception&) {
        return;
    }
}

void MDIForm1::mnu_ApriUltimo_Click()
{
    rsSettaggi_ = dbSet.OpenRecordset(QStringLiteral("SELECT  ApriUltimo FROM Settaggi"));
    const QString path = rsSettaggi_.Text(QStringLiteral("ApriUltimo"));
    if (path == QLatin1String("0")) {
        mnu_NuovoPortafoglio_Click();
        return;
    }
    if (!Module1::FileEsiste(path)) {
        MsgBox("il file: " + path + "non esiste", platform::Buttons::Ok, platform::Icon::None, this);
        return;
    }
    dbExe.Open(path);
    abilitaComandiPortafoglio();
    sFilePortafoglio = path;
    impostaCaption(kProdotto + path);
    RicalcolaPortafoglio();
    ControlloMenu();
    MostraFinestra(QStringLiteral("frmEseguiti"));
}

void MDIForm1::mnu_Salva_Click()
{
    try {
        QString file, title;
        if (!chiediFile(true, &file, &title))
            return;
        if (!file.isEmpty()) {
            if (Module1::FileEsiste(file)
                && MsgBox("Il file " + file + "  esiste già!" + "\n" + "sostituire il file?", platform::Buttons::YesNo,
                          platform::Icon::Information, this)
                    == platform::Answer::No)
                return;
            if (!stessoFile(file, sFilePortafoglio)) {
                dbExe.Close();
                store::Database::CopyFile(sFilePortafoglio, file);
                dbExe.Open(file);
                // sFilePortafoglio keeps naming the file before the copy.
                impostaCaption(kProdotto + title);
                dbSet.Execute("UPDATE Settaggi SET ApriUltimo = '" + file + "'");
            }
        }
        ControlloMenu();
    } catch (const std::exception&) {
        return;
    }
}
