// The windows that menus and toolbar open, in one place.
#include "app/Finestre.h"

#include "app/MDIForm1.h"
#include "instruments/Calcolatore.h"
#include "ledger/frmEseguiti.h"
#include "stats/frmReport.h"
#include "store/frmParametriIniziali.h"
// account and portfolio

// statistics

// import
#include "ledger/Importa.h"

// export

// preferences and password


void RegistraFinestre()
{
    MDIForm1::RegistraFinestra(QStringLiteral("frmEseguiti"), []() -> QWidget* { return frmEseguiti::Instance(); });
    MDIForm1::RegistraFinestra(
        QStringLiteral("frmParametriIniziali"), []() -> QWidget* { return frmParametriIniziali::Instance(); }, true);
    MDIForm1::RegistraFinestra(QStringLiteral("frmReport"), []() -> QWidget* { return frmReport::Instance(); });
    MDIForm1::RegistraFinestra(QStringLiteral("Calcolatore"), []() -> QWidget* { return Calcolatore::Instance(); });

    // account and portfolio

    // statistics

    // import
    MDIForm1::RegistraFinestra(QStringLiteral("Importa"), []() -> QWidget* { return Importa::Instance(); }, true);

    // export

    // preferences and password

}
