#include "prefs/AssociaFile.h"

#include "platform/Registro.h"

namespace prefs {

QString ComandoApri(const QString& programma)
{
    const QString p = programma.contains(QLatin1Char(' ')) ? QLatin1Char('"') + programma + QLatin1Char('"') : programma;
    return p + QStringLiteral(" %1");
}

void AssociaFile(platform::RegistroTipiFile& registro, const QString& icona, const QString& programma)
{
    // The extension twice, once with a capital: one key where names ignore case.
    registro.ScriviRegistroTesto(QStringLiteral("\\.Qvp"), QString(), QStringLiteral("Quorvel"));
    registro.ScriviRegistroTesto(QStringLiteral("\\.qvp"), QStringLiteral("Content Type"), QStringLiteral("text/plain"));
    registro.ScriviRegistroTesto(QStringLiteral("\\Quorvel"), QString(), QStringLiteral("Quorvel"));
    registro.ScriviRegistroNumero(QStringLiteral("\\Quorvel"), QStringLiteral("EditFlags"), 0);
    registro.ScriviRegistroTesto(QStringLiteral("\\Quorvel\\DefaultIcon"), QString(), icona);
    registro.ScriviRegistroTesto(QStringLiteral("\\Quorvel\\Shell"), QString(), QString());
    registro.ScriviRegistroTesto(QStringLiteral("\\Quorvel\\Shell\\Open"), QString(), QString());
    registro.ScriviRegistroTesto(QStringLiteral("\\Quorvel\\Shell\\Open\\command"), QString(), ComandoApri(programma));
    registro.Notifica();
}

} // namespace prefs
