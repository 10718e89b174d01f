// The windows that menus and toolbar open, in one place.
#include "app/Finestre.h"

#include "app/MDIForm1.h"
#include "instruments/Calcolatore.h"
#include "ledger/frmEseguiti.h"
#include "stats/frmReport.h"
#include "store/frmParametriIniziali.h"
// account and portfolio
#include "account/frmContoTitoli.h"
#include "stats/Curve.h"
#include "stats/frmOperazioniChiuse.h"
#include "stats/frmPortafoglio.h"

// statistics
#include "stats/frmErrori.h"
#include "stats/frmMDD.h"
#include "stats/frmMedie.h"
#include "stats/frmPersonalizzaErrori.h"
#include "stats/frmRisk.h"
#include "stats/frmStGiorno.h"

// import
#include "ledger/Importa.h"

// export
#include "export/frmEsporta.h"

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
    MDIForm1::RegistraFinestra(QStringLiteral("frmContoTitoli"), []() -> QWidget* { return frmContoTitoli::Instance(); });
    MDIForm1::RegistraFinestra(QStringLiteral("frmPortafoglio"), []() -> QWidget* { return frmPortafoglio::Instance(); });
    MDIForm1::RegistraFinestra(QStringLiteral("frmOperazioniChiuse"),
                               []() -> QWidget* { return frmOperazioniChiuse::Instance(); });
    MDIForm1::RegistraFinestra(QStringLiteral("frmCapitale"), []() -> QWidget* { return frmCapitale::Instance(); });
    MDIForm1::RegistraFinestra(QStringLiteral("frmGrOperazioni"), []() -> QWidget* { return frmGrOperazioni::Instance(); });

    // statistics
    MDIForm1::RegistraFinestra(QStringLiteral("frmMDD"), []() -> QWidget* { return frmMDD::Instance(); });
    MDIForm1::RegistraFinestra(QStringLiteral("frmRisk"), []() -> QWidget* { return frmRisk::Instance(); });
    MDIForm1::RegistraFinestra(QStringLiteral("frmMedie"), []() -> QWidget* { return frmMedie::Instance(); });
    MDIForm1::RegistraFinestra(QStringLiteral("frmStGiorno"), []() -> QWidget* { return frmStGiorno::Instance(); });
    MDIForm1::RegistraFinestra(QStringLiteral("frmErrori"), []() -> QWidget* { return frmErrori::Instance(); });
    MDIForm1::RegistraFinestra(
        QStringLiteral("frmPersonalizzaErrori"), []() -> QWidget* { return frmPersonalizzaErrori::Instance(); }, true);

    // import
    MDIForm1::RegistraFinestra(QStringLiteral("Importa"), []() -> QWidget* { return Importa::Instance(); }, true);

    // export
    MDIForm1::RegistraFinestra(QStringLiteral("frmEsporta"), []() -> QWidget* { return frmEsporta::Instance(); }, true);

    // preferences and password
    MDIForm1::RegistraFinestra(QStringLiteral("Pwd"), []() -> QWidget* { return Pwd::Instance(); }, true);
    MDIForm1::RegistraFinestra(QStringLiteral("OpzioniVista"), []() -> QWidget* { return OpzioniVista::Instance(); }, true);
    MDIForm1::RegistraFinestra(QStringLiteral("Tip"), []() -> QWidget* { return Tip::Instance(); }, true);
    MDIForm1::RegistraFinestra(QStringLiteral("frmBenvenuto"), []() -> QWidget* { return frmBenvenuto::Instance(); }, true);
    MDIForm1::RegistraFinestra(QStringLiteral("FrmAbout"), []() -> QWidget* { return FrmAbout::Instance(); }, true);
}
