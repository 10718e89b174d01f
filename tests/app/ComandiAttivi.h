#pragma once
// The frame's commands that come and go with the data, read as one line for compact comparisons.
#include "app/MDIForm1.h"

#include <QAction>
#include <QStringList>

namespace testing_support {

// The enabled ones: menus without their "mnu_", then the toolbar's buttons 5 to 17 by number.
inline QString ComandiAttivi(const MDIForm1* frame)
{
    QStringList on;
    for (const char* m : {"Salva", "Importa", "Eseguiti", "Portafoglio", "Errori", "OperazioniChiuse", "SequenzeOperazioni",
                          "Esporta", "GP", "StatistichePeriodo", "Report", "Risk", "MDD", "Medie", "ApriUltimo"})
        if (frame->Menu(QStringLiteral("mnu_") + QLatin1String(m))->isEnabled())
            on << QLatin1String(m);
    for (int i = 5; i <= 17; ++i)
        if (i != 9 && frame->Button(i)->isEnabled())
            on << QString::number(i);
    return on.join(' ');
}

} // namespace testing_support
