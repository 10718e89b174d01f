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

// export

// preferences and password
#include "app/Pwd.h"
#include "prefs/FrmAbout.h"
#include "prefs/OpzioniVista.h"
#include "prefs/Tip.h"
#include "prefs/frmBenvenuto.h"

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

    // export

    // preferences and password
    MDIForm1::RegistraFinestra(QStringLiteral("Pwd"), []() -> QWidget* { return Pwd::Instance(); }, true);
    MDIForm1::RegistraFinestra(QStringLiteral("OpzioniVista"), []() -> QWidget* { return OpzioniVista::Instance(); }, true);
    MDIForm1::RegistraFinestra(QStringLiteral("Tip"), []() -> QWidget* { return Tip::Instance(); }, true);
    MDIForm1::RegistraFinestra(QStringLiteral("frmBenvenuto"), []() -> QWidget* { return frmBenvenuto::Instance(); }, true);
    MDIForm1::RegistraFinestra(QStringLiteral("FrmAbout"), []() -> QWidget* { return FrmAbout::Instance(); }, true);
}
