#include "app/Module1.h"

#include "app/MDIForm1.h"
#include "ledger/Import.h"
#include "platform/Forms.h"
#include "platform/Registro.h"
#include "prefs/AssociaFile.h"
#include "stats/Report.h"
#include "store/Delivered.h"

#include "platform/KeyFilter.h"
#include "platform/PictureSurface.h"

#include <QApplication>
#include <QAudioDevice>
#include <QColor>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>

#include <algorithm>
#include <QMediaDevices>
#include <QRadioButton>
#include <QSoundEffect>
#include <QTimer>
#include <QUrl>
#include <QtEndian>

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
    store::CompletaImpostazioni(dbSet);
    if (bPrimoAvvio)
        prefs::AssociaFile(platform::Registro(), FileProgramma(QStringLiteral("sync.svg")), QApplication::applicationFilePath());
    MDIForm1::Instance()->Load();
    MDIForm1::Instance()->show();
    // The start-up windows come with the frame, not when the desktop activates it: a desktop
    // may keep a new window in the background, and no command of the frame may run before them.
    MDIForm1::Instance()->Form_Activate();
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
    // The frame's background is the area its child windows open in; their controls are theirs.
    const QList<QMdiArea*> aree = window->findChildren<QMdiArea*>();
    for (QMdiArea* area : aree)
        area->setBackground(sfondo);
    auto inArea = [&aree](const QWidget* c) {
        return std::any_of(aree.begin(), aree.end(), [c](const QMdiArea* a) { return a->isAncestorOf(c); });
    };
    for (QWidget* c : window->findChildren<QWidget*>()) {
        if (inArea(c))
            continue;
        if (qobject_cast<QLabel*>(c)) {
            paint(c, QPalette::Window, sfondo);
            paint(c, QPalette::WindowText, testo);
        } else if (qobject_cast<QGroupBox*>(c) || qobject_cast<QRadioButton*>(c)) {
            paint(c, QPalette::Window, sfondo);
        } else if (auto* pic = qobject_cast<platform::PictureSurface*>(c)) {
            pic->SetForeColor(lancette);
        }
    }
}

std::optional<double> UtileNetto() { return stats::UtileNetto(dbExe, dbSet, sFilePortafoglio); }

int DurataWave(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray head = f.read(12);
    if (head.size() < 12 || !head.startsWith("RIFF") || head.mid(8, 4) != "WAVE")
        return 0;
    quint32 byteRate = 0;
    while (!f.atEnd()) {
        const QByteArray chunk = f.read(8);
        if (chunk.size() < 8)
            break;
        const quint32 size = qFromLittleEndian<quint32>(chunk.constData() + 4);
        if (chunk.startsWith("fmt ")) {
            const QByteArray fmt = f.read(size);
            if (fmt.size() >= 12)
                byteRate = qFromLittleEndian<quint32>(fmt.constData() + 8);
        } else if (chunk.startsWith("data")) {
            return byteRate ? static_cast<int>(qint64(size) * 1000 / byteRate) : 0;
        } else {
            f.skip(size + (size & 1));
        }
    }
    return 0;
}

void SuonaWave(const QString& name)
{
    const QString path = FileProgramma(name);
    const int durata = DurataWave(path);
    if (durata <= 0 || QMediaDevices::audioOutputs().isEmpty())
        return;
    QSoundEffect effect;
    effect.setSource(QUrl::fromLocalFile(path));
    QEventLoop loop;
    QTimer limit;
    limit.setSingleShot(true);
    // Without a real device the effect may report "playing" forever: never wait longer than the sound.
    QObject::connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&effect, &QSoundEffect::playingChanged, &loop, [&]() {
        if (!effect.isPlaying())
            loop.quit();
    });
    QObject::connect(&effect, &QSoundEffect::statusChanged, &loop, [&]() {
        if (effect.status() == QSoundEffect::Error)
            loop.quit();
        else if (effect.status() == QSoundEffect::Ready && !effect.isPlaying())
            effect.play();
    });
    if (effect.status() == QSoundEffect::Ready)
        effect.play();
    limit.start(durata + 250);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

QString DataDaNomeFile(const QString& path) { return ledger::DataDaNomeFile(path); }

bool FileEsiste(const QString& path)
{
    if (path.isEmpty() || QFileInfo(path).isDir())
        return false;
    QFile f(path);
    return f.open(QIODevice::ReadOnly);
}

int FiltraCarattere(int key)
{
    static const QString refused = QStringLiteral("!@#$%^&*()_+-='");
    if (key > 0 && key < 0x10000 && refused.contains(QChar(key))) {
        QApplication::beep();
        return 0;
    }
    return key;
}

int SoloNumeri(const QString& text, int caret, int key, int digits, int decimals)
{
    if (key == 8)
        return key;
    if (key == ',' && !text.contains(',') && decimals != 0)
        return key;
    const int comma = static_cast<int>(text.indexOf(','));
    const QString intera = comma < 0 ? text : text.left(comma);
    const QString decimale = comma < 0 ? QString() : text.mid(comma + 1);
    const bool inDecimals = text.left(caret).contains(',');
    const int length = static_cast<int>(inDecimals ? decimale.size() : intera.size());
    const int limit = inDecimals ? decimals : digits;
    if (length < limit && key >= '0' && key <= '9')
        return key;
    return 0;
}

int SoloNumeri(const QLineEdit* box, int key, int digits, int decimals)
{
    // A selection dragged leftwards leaves the caret at its right end; the text left of
    // the caret is what lies before the selection.
    const int caret = box->hasSelectedText() ? box->selectionStart() : box->cursorPosition();
    return SoloNumeri(box->text(), caret, key, digits, decimals);
}

namespace {
int filtraCarattere(QLineEdit*, int key) { return FiltraCarattere(key); }
platform::KeyRoutine soloNumeri(int digits, int decimals)
{
    return [digits, decimals](QLineEdit* b, int key) { return SoloNumeri(b, key, digits, decimals); };
}
} // namespace

void FiltroCaratteri(QLineEdit* box) { platform::AttachKeyRoutine(box, filtraCarattere); }
void FiltroCaratteri(QComboBox* box) { platform::AttachKeyRoutine(box, filtraCarattere); }
void FiltroNumeri(QLineEdit* box, int digits, int decimals) { platform::AttachKeyRoutine(box, soloNumeri(digits, decimals)); }
void FiltroNumeri(QComboBox* box, int digits, int decimals) { platform::AttachKeyRoutine(box, soloNumeri(digits, decimals)); }

} // namespace Module1
