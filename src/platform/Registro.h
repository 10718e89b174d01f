#pragma once
// The system's registry of file types, written as key paths under the root of
// file classes ("\.qvp", "\Quorvel\Shell\Open\command"), and its Linux form.
#include <QMap>
#include <QString>
#include <QVariant>

#include <cstdint>

namespace platform {

class RegistroTipiFile {
public:
    virtual ~RegistroTipiFile() = default;
    // Creates or opens the key and sets a value; an empty name is the key's default value.
    virtual void ScriviRegistroTesto(const QString& chiave, const QString& nome, const QString& testo) = 0;
    virtual void ScriviRegistroNumero(const QString& chiave, const QString& nome, std::uint32_t numero) = 0;
    // Lets the desktop know that the types changed.
    virtual void Notifica() = 0;
};

// The freedesktop form in a data folder: every write rewrites, for each class that an
// extension names, a shared-mime-info package (mime/packages), a hidden desktop entry
// that opens the class's files (applications/<class>-file.desktop) and its icon (icons/hicolor). Keys and
// names ignore case, as the registry's do. Failures are not reported.
class RegistroFreedesktop final : public RegistroTipiFile {
public:
    // An empty folder is the user's data folder ($XDG_DATA_HOME) at the time of each write.
    explicit RegistroFreedesktop(QString cartellaDati = {});

    void ScriviRegistroTesto(const QString& chiave, const QString& nome, const QString& testo) override;
    void ScriviRegistroNumero(const QString& chiave, const QString& nome, std::uint32_t numero) override;
    // Rebuilds the desktop's caches with update-mime-database and
    // update-desktop-database, where they are installed.
    void Notifica() override;

    // The MIME type and the icon name a class of files gets.
    static QString TipoMime(const QString& classe);
    static QString NomeIcona(const QString& classe);
    // A command line in the registry's form ("prog" %1) as a desktop entry's Exec.
    static QString ComandoDesktop(const QString& comando);

private:
    QString cartella() const;
    QString valore(const QString& chiave, const QString& nome = {}) const;
    void scriviFile() const;

    QString cartella_;
    QMap<QString, QMap<QString, QVariant>> chiavi_; // lower-case key, lower-case name
};

// The registry the program writes to: the freedesktop one in the user's data folder,
// unless a test has put another in its place.
RegistroTipiFile& Registro();
// nullptr puts the program's own back.
void SostituisciRegistro(RegistroTipiFile* registro);

} // namespace platform
