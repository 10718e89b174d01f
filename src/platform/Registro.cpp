#include "platform/Registro.h"

#include "platform/Programmi.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <QXmlStreamWriter>

#include <utility>

namespace platform {

namespace {

// The registry's key paths start with a backslash under the root and ignore case.
QString normale(const QString& chiave)
{
    QString k = chiave.toLower();
    while (k.startsWith(QLatin1Char('\\')))
        k.remove(0, 1);
    return k;
}

// A class name as it may stand in a file name or a MIME type.
QString nomeFile(const QString& classe)
{
    QString out;
    for (const QChar c : classe.toLower())
        out += (c.isLetterOrNumber() && c.unicode() < 128) || c == QLatin1Char('-') || c == QLatin1Char('.') ? c : QLatin1Char('-');
    return out;
}

// One argument of an Exec line, quoted where the desktop entry's rules need it.
QString argomentoDesktop(QString arg)
{
    static const QString riservati = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    arg.replace(QLatin1Char('%'), QStringLiteral("%%"));
    bool quota = arg.isEmpty();
    for (const QChar c : arg)
        quota = quota || riservati.contains(c);
    if (!quota)
        return arg;
    QString out = QStringLiteral("\"");
    for (const QChar c : arg) {
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') || c == QLatin1Char('\\'))
            out += QLatin1Char('\\');
        out += c;
    }
    return out + QLatin1Char('"');
}

// A value of type string in a desktop entry.
QString stringaDesktop(QString s)
{
    s.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    s.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    s.replace(QLatin1Char('\t'), QStringLiteral("\\t"));
    return s;
}

bool scrivi(const QString& percorso, const QByteArray& contenuto)
{
    QDir().mkpath(QFileInfo(percorso).path());
    QSaveFile f(percorso);
    if (!f.open(QIODevice::WriteOnly))
        return false;
    f.write(contenuto);
    return f.commit();
}

void copia(const QString& da, const QString& a)
{
    QDir().mkpath(QFileInfo(a).path());
    QFile::remove(a);
    QFile::copy(da, a);
}

RegistroTipiFile*& sostituto()
{
    static RegistroTipiFile* r = nullptr;
    return r;
}

} // namespace

RegistroFreedesktop::RegistroFreedesktop(QString cartellaDati) : cartella_(std::move(cartellaDati)) {}

QString RegistroFreedesktop::cartella() const
{
    return cartella_.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) : cartella_;
}

QString RegistroFreedesktop::TipoMime(const QString& classe) { return QStringLiteral("application/x-") + nomeFile(classe); }

QString RegistroFreedesktop::NomeIcona(const QString& classe) { return TipoMime(classe).replace(QLatin1Char('/'), QLatin1Char('-')); }

QString RegistroFreedesktop::ComandoDesktop(const QString& comando)
{
    QStringList parti;
    for (const QString& arg : QProcess::splitCommand(comando))
        parti << (arg == QLatin1String("%1") ? QStringLiteral("%f") : argomentoDesktop(arg));
    return stringaDesktop(parti.join(QLatin1Char(' ')));
}

QString RegistroFreedesktop::valore(const QString& chiave, const QString& nome) const
{
    return chiavi_.value(normale(chiave)).value(nome.toLower()).toString();
}

void RegistroFreedesktop::ScriviRegistroTesto(const QString& chiave, const QString& nome, const QString& testo)
{
    chiavi_[normale(chiave)][nome.toLower()] = testo;
    scriviFile();
}

void RegistroFreedesktop::ScriviRegistroNumero(const QString& chiave, const QString& nome, std::uint32_t numero)
{
    chiavi_[normale(chiave)][nome.toLower()] = QVariant::fromValue(numero);
    scriviFile();
}

void RegistroFreedesktop::scriviFile() const
{
    // Extensions by the class they name. The content type and the edit flags have no
    // counterpart here: the class gets a MIME type of its own.
    QMap<QString, QStringList> estensioni;
    for (auto it = chiavi_.begin(); it != chiavi_.end(); ++it) {
        const QString classe = it.value().value(QString()).toString();
        if (it.key().startsWith(QLatin1Char('.')) && !it.key().contains(QLatin1Char('\\')) && !classe.isEmpty())
            estensioni[classe.toLower()] << it.key().mid(1);
    }
    const QDir dati(cartella());
    for (auto it = estensioni.begin(); it != estensioni.end(); ++it) {
        const QString classe = it.key();
        const QString tipo = TipoMime(classe);
        const QString icona = NomeIcona(classe);
        QString nome = valore(classe);
        if (nome.isEmpty())
            nome = classe;

        QByteArray xml;
        QXmlStreamWriter x(&xml);
        x.setAutoFormatting(true);
        x.writeStartDocument();
        const QString ns = QStringLiteral("http://www.freedesktop.org/standards/shared-mime-info");
        x.writeDefaultNamespace(ns);
        x.writeStartElement(ns, QStringLiteral("mime-info"));
        x.writeStartElement(ns, QStringLiteral("mime-type"));
        x.writeAttribute(QStringLiteral("type"), tipo);
        x.writeTextElement(ns, QStringLiteral("comment"), nome);
        x.writeEmptyElement(ns, QStringLiteral("icon"));
        x.writeAttribute(QStringLiteral("name"), icona);
        for (const QString& ext : it.value()) {
            x.writeEmptyElement(ns, QStringLiteral("glob"));
            x.writeAttribute(QStringLiteral("pattern"), QStringLiteral("*.") + ext);
        }
        x.writeEndDocument();
        scrivi(dati.filePath(QStringLiteral("mime/packages/") + nomeFile(classe) + QStringLiteral(".xml")), xml);

        const QString fileIcona = valore(classe + QStringLiteral("\\defaulticon"));
        if (!fileIcona.isEmpty() && QFileInfo(fileIcona).isFile())
            copia(fileIcona, dati.filePath(QStringLiteral("icons/hicolor/scalable/mimetypes/") + icona + QLatin1Char('.')
                                           + QFileInfo(fileIcona).suffix()));

        const QString comando = valore(classe + QStringLiteral("\\shell\\open\\command"));
        if (comando.isEmpty())
            continue;
        // Not in the menus: it is how the files open, not a launcher. Its own file name, so it
        // never hides an installed launcher of the same name (quorvel.desktop).
        const QString voce = QStringLiteral("[Desktop Entry]\nType=Application\nName=") + stringaDesktop(nome)
            + QStringLiteral("\nExec=") + ComandoDesktop(comando) + QStringLiteral("\nIcon=") + icona
            + QStringLiteral("\nMimeType=") + tipo + QStringLiteral(";\nNoDisplay=true\nTerminal=false\n");
        scrivi(dati.filePath(QStringLiteral("applications/") + nomeFile(classe) + QStringLiteral("-file.desktop")), voce.toUtf8());
    }
}

void RegistroFreedesktop::Notifica()
{
    const QDir dati(cartella());
    const QString mime = PrimoSulPercorso({QStringLiteral("update-mime-database")});
    if (!mime.isEmpty())
        AvviaProgramma(mime, {dati.filePath(QStringLiteral("mime"))});
    const QString desktop = PrimoSulPercorso({QStringLiteral("update-desktop-database")});
    if (!desktop.isEmpty())
        AvviaProgramma(desktop, {dati.filePath(QStringLiteral("applications"))});
}

RegistroTipiFile& Registro()
{
    static RegistroFreedesktop proprio;
    return sostituto() ? *sostituto() : proprio;
}

void SostituisciRegistro(RegistroTipiFile* registro) { sostituto() = registro; }

} // namespace platform
