#include "store/Delivered.h"

#include "store/Database.h"

#include <QDir>
#include <QFile>

namespace store {

namespace {

QString resourceText(const QString& name)
{
    QFile f(QStringLiteral(":/data/") + name);
    if (!f.open(QIODevice::ReadOnly))
        throw DbError(QStringLiteral("Risorsa mancante"), name);
    return QString::fromUtf8(f.readAll());
}

// Builds next to the target and renames, so a failed start leaves no half file.
void createAtomically(const QString& path, const QString& script)
{
    const QString tmp = path + QStringLiteral(".new");
    QFile::remove(tmp);
    Database::Create(tmp, script);
    QFile::remove(path);
    if (!QFile::rename(tmp, path))
        throw DbError(QStringLiteral("Impossibile creare il file"), path);
}

void copyResource(const QString& name, const QString& target)
{
    if (QFile::exists(target))
        return;
    if (QFile::copy(QStringLiteral(":/data/") + name, target))
        QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
}

} // namespace

QString SettingsScript()
{
    return resourceText(QStringLiteral("settings-schema.sql")) + resourceText(QStringLiteral("settings-data.sql"))
        + resourceText(QStringLiteral("tips.sql"));
}

QString PortfolioScript() { return resourceText(QStringLiteral("portfolio.sql")); }

void CompletaImpostazioni(Database& dbSet)
{
    QString schema = resourceText(QStringLiteral("settings-schema.sql"));
    dbSet.ExecuteScript(schema.replace(QStringLiteral("CREATE TABLE "), QStringLiteral("CREATE TABLE IF NOT EXISTS ")));
}

void CreateEmptyPortfolio(const QString& path) { createAtomically(path, PortfolioScript()); }

bool InstallDelivered(const QString& programFolder)
{
    const QDir dir(programFolder);
    if (dir.exists(kSettingsFile))
        return false;
    if (!QDir().mkpath(programFolder))
        throw DbError(QStringLiteral("Impossibile creare la cartella del programma"), programFolder);
    // The scratch portfolio first: DataSet.qvd is what marks the installation as done.
    if (!dir.exists(kScratchPortfolio))
        CreateEmptyPortfolio(dir.filePath(kScratchPortfolio));
    copyResource(QStringLiteral("Start"), dir.filePath(QStringLiteral("Start")));
    copyResource(kLogoFile, dir.filePath(kLogoFile));
    copyResource(QStringLiteral("sync.svg"), dir.filePath(QStringLiteral("sync.svg")));
    createAtomically(dir.filePath(kSettingsFile), SettingsScript());
    return true;
}

} // namespace store
