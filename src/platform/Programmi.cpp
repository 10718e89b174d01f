#include "platform/Programmi.h"

#include <QProcess>
#include <QStandardPaths>

namespace platform {

namespace {
Avviatore& avviatore()
{
    static Avviatore a;
    return a;
}
} // namespace

bool AvviaProgramma(const QString& programma, const QStringList& argomenti)
{
    if (avviatore())
        return avviatore()(programma, argomenti);
    return QProcess::startDetached(programma, argomenti);
}

void SostituisciAvviatore(Avviatore a) { avviatore() = std::move(a); }

QString PrimoSulPercorso(const QStringList& nomi)
{
    for (const QString& nome : nomi) {
        const QString percorso = QStandardPaths::findExecutable(nome);
        if (!percorso.isEmpty())
            return percorso;
    }
    return {};
}

} // namespace platform
