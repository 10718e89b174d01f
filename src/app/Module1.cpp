#include "app/Module1.h"

#include "app/MDIForm1.h"
#include "platform/Forms.h"
#include "store/Delivered.h"

#include <QColor>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>

namespace Module1 {

store::Database dbSet;
store::Database dbExe;
QString sFilePortafoglio;
QString sErroreSequenza;
bool bAvvioInCorso = false;
int iSceltaBenvenuto = 0;
bool bPrimoAvvio = false;
QString sCartellaProgramma;

QString FileProgramma(const QString& name) { return QDir(sCartellaProgramma).filePath(name); }

void Main(const QString& programFolder)
{
    sCartellaProgramma = programFolder;
    sFilePortafoglio.clear();
    sErroreSequenza.clear();
    bAvvioInCorso = false;
    iSceltaBenvenuto = 0;
    dbExe.Close();
    bPrimoAvvio = store::InstallDelivered(programFolder);
    dbSet.Open(FileProgramma(store::kSettingsFile));
    MDIForm1::Instance()->Load();
    MDIForm1::Instance()->show();
}

namespace {
QColor rgb(double value)
{
    const auto v = static_cast<unsigned>(value);
    return QColor((v >> 16) & 0xFF, (v >> 8) & 0xFF, v & 0xFF);
}
void paint(QWidget* w, QPalette::ColorRole role, const QColor& c)
{
    QPalette p = w->palette();
    p.setColor(role, c);
    w->setPalette(p);
}
} // namespace

void ApplicaColori(QWidget* window)
{
    const store::Recordset colori = dbSet.OpenRecordset(QStringLiteral("SELECT *  FROM Colori"));
    const QColor sfondo = rgb(colori.Number(QStringLiteral("ColoreSfondo")));
    const QColor testo = rgb(colori.Number(QStringLiteral("ColoreTesto")));
    const QColor lancette = rgb(colori.Number(QStringLiteral("ClockLancette")));
    paint(window, QPalette::Window, sfondo);
    window->setAutoFillBackground(true);
    for (QWidget* c : window->findChildren<QWidget*>()) {
        if (qobject_cast<QLabel*>(c)) {
            paint(c, QPalette::Window, sfondo);
            paint(c, QPalette::WindowText, testo);
        } else if (qobject_cast<QGroupBox*>(c) || qobject_cast<QRadioButton*>(c)) {
            paint(c, QPalette::Window, sfondo);
        } else if (c->property("pictureSurface").toBool()) {
            paint(c, QPalette::WindowText, lancette);
        }
    }
}

} // namespace Module1
