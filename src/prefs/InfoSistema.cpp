#include "prefs/InfoSistema.h"

#include "platform/Programmi.h"

namespace prefs {

const QStringList& ProgrammiInfoSistema()
{
    static const QStringList programmi = {QStringLiteral("hardinfo2"), QStringLiteral("hardinfo"),
                                          QStringLiteral("kinfocenter"), QStringLiteral("gnome-system-monitor")};
    return programmi;
}

bool AvviaInfoSistema()
{
    const QString programma = platform::PrimoSulPercorso(ProgrammiInfoSistema());
    return !programma.isEmpty() && platform::AvviaProgramma(programma);
}

} // namespace prefs
