#include "app/MDIForm1.h"

#include "app/Finestre.h"
#include "app/Module1.h"
#include "app/Presentazione.h"
#include "instruments/BarraOrologi.h"
#include "instruments/clClock.h"
#include "ledger/Replay.h"
#include "platform/Forms.h"
#include "platform/HelpWindow.h"
#include "platform/MessageBox.h"
#include "platform/Numbers.h"
#include "platform/PictureSurface.h"
#include "platform/ToolbarCustomize.h"

#include <QAction>
#include <QDateEdit>
#include <QDateTime>
#include <QEvent>
#include <QFile>
#include <QIcon>
#include <QLabel>
#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

namespace {

// One row of Toolbar1: key, caption, tool tip, picture number. An empty key is a separator.
struct Pulsante {
    const char* key;
    const char* caption;
    const char* tip;
    int image;
};

constexpr Pulsante kPulsanti[17] = {
    {"Nuovo", "Nuovo", "Nuovo", 13},
    {"Apri", "Apri", "Apri", 14},
    {"", "", "", 0},
    {"Calcolatore", "Calcolatore", "Calcolatore finanziario", 1},
    {"Conto", "Conto", "Conto titoli", 15},
    {"Eseguiti", "Eseguiti", "Tabella eseguiti", 2},
    {"Portafoglio", "Portafoglio", "Tabella titoli in portafoglio", 3},
    {"Op.Chiuse", "Op.Chiuse", "Tabella Operazioni Chiuse", 4},
    {"", "", "", 0},
    {"Report", "Report", "Report", 5},
    {"Errori", "St.errori", "Statistiche errori", 7},
    {"Periodo", "St.Giorno", "Statistiche prestazioni per giorno settimanale", 11},
    {"Sequenze", "Operazioni", "Grafico operazioni", 6},
    {"GP", "Capitale", "Grafico del capitale", 12},
    {"Risk", "Risk", "Risk", 9},
    {"MDD", "MDD", "MDD", 8},
    {"Medie", "Medie", "Medie", 10},
};

// The window each toolbar key opens.
const QHash<QString, QString>& finestraDelTasto()
{
    static const QHash<QString, QString> map = {
        {"Calcolatore", "Calcolatore"},     {"Conto", "frmContoTitoli"},     {"Eseguiti", "frmEseguiti"},
        {"Portafoglio", "frmPortafoglio"},  {"Op.Chiuse", "frmOperazioniChiuse"}, {"Report", "frmReport"},
        {"Errori", "frmErrori"},            {"Periodo", "frmStGiorno"},       {"Sequenze", "frmGrOperazioni"},
        {"GP", "frmCapitale"},              {"Risk", "frmRisk"},              {"MDD", "frmMDD"},
        {"Medie", "frmMedie"},
    };
    return map;
}

// The window each menu entry shows.
const QHash<QString, QString>& finestraDelMenu()
{
    static const QHash<QString, QString> map = {
        {"mnu_Importa", "Importa"},
        {"mnu_Esporta", "frmEsporta"},
        {"mnu_Password", "Pwd"},
        {"mnu_ParametriIniziali", "frmParametriIniziali"},
        {"mnu_PersonalizzaErrori", "frmPersonalizzaErrori"},
        {"mnu_OpzioniVista", "OpzioniVista"},
        {"mnu_Calcolatore", "Calcolatore"},
        {"mnu_ContoTitoli", "frmContoTitoli"},
        {"mnu_Eseguiti", "frmEseguiti"},
        {"mnu_Portafoglio", "frmPortafoglio"},
        {"mnu_OperazioniChiuse", "frmOperazioniChiuse"},
        {"mnu_Report", "frmReport"},
        {"mnu_StatistichePeriodo", "frmStGiorno"},
        {"mnu_Errori", "frmErrori"},
        {"mnu_SequenzeOperazioni", "frmGrOperazioni"},
        {"mnu_GP", "frmCapitale"},
        {"mnu_Risk", "frmRisk"},
        {"mnu_MDD", "frmMDD"},
        {"mnu_Medie", "frmMedie"},
        {"mnu_Tips", "Tip"},
        {"mnu_About", "FrmAbout"},
    };
    return map;
}

struct Finestra {
    MDIForm1::Factory factory;
    bool modal = false;
};
QHash<QString, Finestra>& finestre()
{
    static QHash<QString, Finestra> map;
    return map;
}

// The windows whose Main rereads them when the data change, in the order of the tests.
const QStringList kConMain = {"frmEseguiti", "frmOperazioniChiuse", "frmCapitale", "frmErrori", "frmMDD", "frmStGiorno",
                              "frmPortafoglio", "frmReport", "frmGrOperazioni", "frmRisk", "frmContoTitoli"};

QIcon immagine(int number, bool large)
{
    const QString path = QStringLiteral(":/icons/%1.svg").arg(number);
    if (number <= 0 || !QFile::exists(path))
        return {};
    QIcon icon;
    const int size = large ? 32 : 16;
    icon.addFile(path, QSize(size, size));
    return icon;
}

} // namespace

MDIForm1* MDIForm1::Instance() { return platform::Form<MDIForm1>(); }

MDIForm1::MDIForm1()
{
    setObjectName(QStringLiteral("MDIForm1"));
    impostaCaption(QStringLiteral("Quorvel"));
    mdiArea_ = new QMdiArea(this);
    mdiArea_->setObjectName(QStringLiteral("MDIClient"));
    mdiArea_->setBackground(QColor(0x5b, 0x6e, 0x82));
    setCentralWidget(mdiArea_);
    creaMenu();
    creaToolbar();
    creaBarraStato();
    collegaMenu();
    RegistraFinestre();
    Timer2_ = new QTimer(this);
    Timer2_->setObjectName(QStringLiteral("Timer2"));
    Timer2_->setInterval(3000);
    connect(Timer2_, &QTimer::timeout, this, &MDIForm1::Timer2_Timer);
    resize(1280, 800);
}

MDIForm1::~MDIForm1() = default;

QAction* MDIForm1::voce(QMenu* menu, const QString& name, const QString& caption)
{
    QAction* a = menu->addAction(caption);
    a->setObjectName(name);
    return a;
}

void MDIForm1::creaMenu()
{
    QMenu* file = menuBar()->addMenu(QStringLiteral("File"));
    file->menuAction()->setObjectName(QStringLiteral("mnu_File"));
    voce(file, QStringLiteral("mnu_NuovoPortafoglio"), QStringLiteral("Nuovo Portafoglio"));
    voce(file, QStringLiteral("mnu_Apri"), QStringLiteral("Apri"));
    voce(file, QStringLiteral("mnu_Salva"), QStringLiteral("Salva con nome"));
    file->addSeparator();
    voce(file, QStringLiteral("mnu_Importa"), QStringLiteral("Importa"));
    voce(file, QStringLiteral("mnu_Esporta"), QStringLiteral("Esporta"));
    file->addSeparator();
    connect(voce(file, QStringLiteral("mnu_Exit"), QStringLiteral("Chiudi")), &QAction::triggered, this,
            &MDIForm1::mnu_Exit_Click);
    file->addSeparator();
    // Greyed with this caption until a file has been opened or saved.
    voce(file, QStringLiteral("mnu_ApriUltimo"), QStringLiteral("Ultimo file aperto"));

    QMenu* strumenti = menuBar()->addMenu(QStringLiteral("Strumenti"));
    strumenti->menuAction()->setObjectName(QStringLiteral("mnu_Strumenti"));
    voce(strumenti, QStringLiteral("mnu_Password"), QStringLiteral("Password"));
    voce(strumenti, QStringLiteral("mnu_ParametriIniziali"), QStringLiteral("Parametri Iniziali"));
    voce(strumenti, QStringLiteral("mnu_PersonalizzaErrori"), QStringLiteral("Personalizza Errori"));

    QMenu* opzioni = menuBar()->addMenu(QStringLiteral("Opzioni"));
    opzioni->menuAction()->setObjectName(QStringLiteral("mnu_Opzioni"));
    voce(opzioni, QStringLiteral("mnu_OpzioniVista"), QStringLiteral("Vista"));
    voce(opzioni, QStringLiteral("mnu_Menu"), QStringLiteral("Menu"));

    QMenu* vista = menuBar()->addMenu(QStringLiteral("Visualizza"));
    vista->menuAction()->setObjectName(QStringLiteral("mnu_view"));
    voce(vista, QStringLiteral("mnu_Calcolatore"), QStringLiteral("Calcolatore finanziario"));
    voce(vista, QStringLiteral("mnu_ContoTitoli"), QStringLiteral("Gestione Conto Titoli"));
    vista->addSeparator();
    voce(vista, QStringLiteral("mnu_Eseguiti"), QStringLiteral("Tabella Eseguiti"));
    voce(vista, QStringLiteral("mnu_Portafoglio"), QStringLiteral("Tabella portafoglio titoli"));
    voce(vista, QStringLiteral("mnu_OperazioniChiuse"), QStringLiteral("Tabella operazioni chiuse"));
    vista->addSeparator();
    voce(vista, QStringLiteral("mnu_Report"), QStringLiteral("Report"));
    voce(vista, QStringLiteral("mnu_StatistichePeriodo"), QStringLiteral("Statistiche giorno"));
    voce(vista, QStringLiteral("mnu_Errori"), QStringLiteral("Statistiche errori"));
    voce(vista, QStringLiteral("mnu_SequenzeOperazioni"), QStringLiteral("Grafico operazioni"));
    voce(vista, QStringLiteral("mnu_GP"), QStringLiteral("Grafico capitale"));
    voce(vista, QStringLiteral("mnu_Risk"), QStringLiteral("Risk"));
    voce(vista, QStringLiteral("mnu_MDD"), QStringLiteral("Massimo Draw Down (MDD)"));
    voce(vista, QStringLiteral("mnu_Medie"), QStringLiteral("Medie"));

    QMenu* help = menuBar()->addMenu(QStringLiteral("?"));
    help->menuAction()->setObjectName(QStringLiteral("mnu_HelpIndex"));
    voce(help, QStringLiteral("mnu_Help"), QStringLiteral("Help"));
    voce(help, QStringLiteral("mnu_Tips"), QStringLiteral("Consigli"));
    voce(help, QStringLiteral("mnu_About"), QStringLiteral("About"));
}

void MDIForm1::creaToolbar()
{
    toolbar1_ = addToolBar(QStringLiteral("Barra principale"));
    toolbar1_->setObjectName(QStringLiteral("Toolbar1"));
    toolbar1_->setMovable(false);
    buttons_.resize(18);
    for (int i = 1; i <= 17; ++i) {
        const Pulsante& p = kPulsanti[i - 1];
        QAction* a = p.key[0] ? toolbar1_->addAction(QString::fromUtf8(p.caption)) : toolbar1_->addSeparator();
        a->setObjectName(QString::fromUtf8(p.key));
        if (p.key[0])
            a->setToolTip(QString::fromUtf8(p.tip));
        buttons_[i] = a;
    }
    connect(toolbar1_, &QToolBar::actionTriggered, this, &MDIForm1::Toolbar1_ButtonClick);

    addToolBarBreak();
    toolbar3_ = addToolBar(QStringLiteral("Orologi"));
    toolbar3_->setObjectName(QStringLiteral("Toolbar3"));
    toolbar3_->setMovable(false);
    toolbar3_->setFixedHeight(kAltezzaOrologi);
    dtp_Data_ = new QDateEdit(toolbar3_);
    dtp_Data_->setObjectName(QStringLiteral("dtp_Data"));
    dtp_Data_->setCalendarPopup(true);
    dtp_Data_->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    toolbar3_->addWidget(dtp_Data_);
    toolbar3_->addSeparator();
    orologi_ = new BarraOrologi(toolbar3_);
}

void MDIForm1::creaBarraStato()
{
    QStatusBar* bar = statusBar();
    bar->setObjectName(QStringLiteral("StatusBar1"));
    oraPanel_ = new QLabel(bar);
    oraPanel_->setObjectName(QStringLiteral("Panel_Ora"));
    dataPanel_ = new QLabel(bar);
    dataPanel_->setObjectName(QStringLiteral("Panel_Data"));
    for (QLabel* l : {dataPanel_, oraPanel_}) {
        l->setMinimumWidth(90);
        l->setAlignment(Qt::AlignCenter);
        l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        bar->addPermanentWidget(l);
    }
    orologio_ = new QTimer(this);
    connect(orologio_, &QTimer::timeout, this, &MDIForm1::aggiornaOrologio);
    orologio_->start(1000);
    aggiornaOrologio();
}

void MDIForm1::aggiornaOrologio()
{
    const QDateTime now = QDateTime::currentDateTime();
    oraPanel_->setText(now.toString(QStringLiteral("HH:mm")));
    dataPanel_->setText(num::DateText(now.date()));
}

QAction* MDIForm1::Button(int index) const
{
    if (index < 1 || index > 17)
        throw platform::IndexOutOfRange(index);
    return buttons_[index];
}

QAction* MDIForm1::Menu(const QString& name) const { return findChild<QAction*>(name); }

void MDIForm1::Colore() { Module1::ApplicaColori(this); }

void MDIForm1::Load()
{
    using Module1::dbSet;
    Colore();
    dtp_Data_->setDate(QDate::currentDate());
    rsSettaggi_ = dbSet.OpenRecordset(QStringLiteral("SELECT  * FROM Settaggi"));
    toolbar3_->setVisible(rsSettaggi_.Number(QStringLiteral("Clock")) != 0);
    toolbar3_->setFixedHeight(kAltezzaOrologi);
    toolbar1_->setVisible(rsSettaggi_.Number(QStringLiteral("Menu")) != 0);
    ToolbarMenu(num::ToInt16(rsSettaggi_.Number(QStringLiteral("Icone32"))),
                num::ToInt16(rsSettaggi_.Number(QStringLiteral("IconeName"))));

    for (int i : {1, 2, 4, 5})
        Button(i)->setEnabled(true);
    for (int i : {6, 7, 8, 10, 11, 12, 13, 14, 15, 16, 17})
        Button(i)->setEnabled(false);
    for (const char* name : {"mnu_Salva", "mnu_Importa", "mnu_Eseguiti", "mnu_Portafoglio", "mnu_Errori",
                             "mnu_OperazioniChiuse", "mnu_SequenzeOperazioni", "mnu_Esporta", "mnu_GP",
                             "mnu_StatistichePeriodo", "mnu_Report", "mnu_Risk", "mnu_MDD", "mnu_Medie"})
        Menu(QString::fromLatin1(name))->setEnabled(false);

    QAction* ultimo = Menu(QStringLiteral("mnu_ApriUltimo"));
    const QString apriUltimo = rsSettaggi_.Text(QStringLiteral("ApriUltimo"));
    if (apriUltimo == QLatin1String("0")) {
        ultimo->setEnabled(false);
    } else {
        ultimo->setEnabled(true);
        ultimo->setText(apriUltimo);
    }

    clock_ = std::make_unique<clClock>();
    clock_->diameter = num::ToInt16(orologi_->Orologio(0)->ScaleWidth() / 2.0);
    Timer2_->start();
    Timer2_Timer(); // the clocks show at once, not three seconds later
    Presentazione::Instance()->exec();
    Module1::bAvvioInCorso = true;
}

void MDIForm1::Timer2_Timer()
{
    if (clock_)
        orologi_->Aggiorna(*clock_);
}

void MDIForm1::Form_Activate()
{
    if (!Module1::bAvvioInCorso)
        return;
    if (rsSettaggi_.Number(QStringLiteral("Tip")) == 1)
        MostraFinestra(QStringLiteral("Tip"));
    Module1::bAvvioInCorso = false;
    rsSettaggi_ = Module1::dbSet.OpenRecordset(QStringLiteral("SELECT Tip, Benvenuto FROM Settaggi"));
    if (rsSettaggi_.Number(QStringLiteral("Benvenuto")) == 1)
        MostraFinestra(QStringLiteral("frmBenvenuto"));
    switch (Module1::iSceltaBenvenuto) {
    case 1: mnu_NuovoPortafoglio_Click(); break;
    case 2: mnu_Apri_Click(); break;
    case 3: mnu_ApriUltimo_Click(); break;
    default: break; // without a choice the user starts from the frame
    }
}

void MDIForm1::ToolbarMenu(std::int16_t Icone32, std::int16_t IconeName)
{
    const bool grandi = Icone32 == 1;
    toolbar1_->setIconSize(grandi ? QSize(32, 32) : QSize(16, 16));
    const bool conNomi = grandi && IconeName == 1;
    toolbar1_->setToolButtonStyle(conNomi ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonIconOnly);
    for (int i = 1; i <= 17; ++i) {
        const Pulsante& p = kPulsanti[i - 1];
        if (!p.key[0])
            continue;
        QAction* a = buttons_[i];
        if (grandi)
            a->setToolTip(QString::fromUtf8(p.tip));
        a->setIconText(conNomi ? QString::fromUtf8(p.caption) : QString());
        a->setText(conNomi ? QString::fromUtf8(p.caption) : QString());
        a->setIcon(immagine(p.image, grandi));
    }
}

void MDIForm1::RicalcolaPortafoglio()
{
    ledger::RicalcolaPortafoglio(Module1::dbExe, Module1::dbSet, [this](const QString& text) {
        platform::MsgBox(text, platform::Buttons::Ok, platform::Icon::None, this);
    });
}

void MDIForm1::collegaMenu()
{
    connect(Menu("mnu_NuovoPortafoglio"), &QAction::triggered, this, &MDIForm1::mnu_NuovoPortafoglio_Click);
    connect(Menu("mnu_Apri"), &QAction::triggered, this, &MDIForm1::mnu_Apri_Click);
    connect(Menu("mnu_ApriUltimo"), &QAction::triggered, this, &MDIForm1::mnu_ApriUltimo_Click);
    connect(Menu("mnu_Salva"), &QAction::triggered, this, &MDIForm1::mnu_Salva_Click);
    connect(Menu("mnu_Help"), &QAction::triggered, this, &MDIForm1::mnu_Help_Click);
    connect(Menu("mnu_Menu"), &QAction::triggered, this, &MDIForm1::mnu_Menu_Click);
    const auto& map = finestraDelMenu();
    for (auto it = map.begin(); it != map.end(); ++it) {
        const QString window = it.value();
        connect(Menu(it.key()), &QAction::triggered, this, [this, window]() { MostraFinestra(window); });
    }
}

void MDIForm1::RegistraFinestra(const QString& name, Factory factory, bool modal)
{
    if (!factory)
        finestre().remove(name);
    else
        finestre().insert(name, Finestra{std::move(factory), modal});
}

QWidget* MDIForm1::MostraFinestra(const QString& name)
{
    const auto it = finestre().constFind(name);
    if (it == finestre().constEnd())
        return nullptr; // its window has not been built yet
    QWidget* w = it->factory();
    if (it->modal) {
        if (auto* dialog = qobject_cast<QDialog*>(w))
            dialog->exec();
        return w;
    }
    QMdiSubWindow* sub = qobject_cast<QMdiSubWindow*>(w->parentWidget());
    if (!sub) {
        const QSize voluta = w->size();
        sub = mdiArea_->addSubWindow(w);
        sub->resize(voluta + QSize(12, 34));
        // Cascade from the top left so a new window never opens half outside the frame.
        const int step = static_cast<int>(mdiArea_->subWindowList().size() - 1) % 8;
        sub->move(step * 28, step * 28);
        sub->setAttribute(Qt::WA_DeleteOnClose);
        sub->setWindowIcon(w->windowIcon());
    }
    w->show();
    sub->show();
    return w;
}

void MDIForm1::abilita(std::initializer_list<const char*> menus, bool on)
{
    for (const char* name : menus)
        Menu(QString::fromLatin1(name))->setEnabled(on);
}

void MDIForm1::abilitaPulsanti(std::initializer_list<int> buttons, bool on)
{
    for (int i : buttons)
        Button(i)->setEnabled(on);
}

void MDIForm1::scarica(std::initializer_list<const char*> windows)
{
    for (const char* name : windows)
        platform::Forms::Unload(QString::fromLatin1(name));
}

void MDIForm1::ControlloMenu()
{
    using Module1::dbExe;
    if (Module1::sFilePortafoglio.isEmpty())
        return;
    const store::Recordset eseguiti = dbExe.OpenRecordset(QStringLiteral("SELECT Data  FROM Eseguiti"));
    if (eseguiti.RecordCount() > 0) {
        RicalcolaPortafoglio();
        store::Recordset chiuse = dbExe.OpenRecordset(QStringLiteral("SELECT Data FROM OperazioniChiuse"));
        if (chiuse.RecordCount() > 0) {
            chiuse.MoveLast();
            chiuse.MoveFirst();
            abilita({"mnu_Report", "mnu_Errori", "mnu_StatistichePeriodo", "mnu_OperazioniChiuse",
                     "mnu_SequenzeOperazioni", "mnu_Esporta", "mnu_GP", "mnu_Portafoglio"},
                    true);
            abilitaPulsanti({6, 7, 8, 10, 11, 12, 13, 14}, true);
            // With exactly one closed operation these keep whatever state they had.
            if (chiuse.RecordCount() > 1) {
                abilita({"mnu_Risk", "mnu_MDD", "mnu_Medie"}, true);
                abilitaPulsanti({15, 16, 17}, true);
            }
        } else {
            scarica({"frmOperazioniChiuse", "frmGrOperazioni", "frmCapitale", "frmStGiorno", "frmReport", "frmMDD",
                     "frmRisk"});
            abilita({"mnu_OperazioniChiuse", "mnu_SequenzeOperazioni", "mnu_GP", "mnu_StatistichePeriodo"}, false);
            abilita({"mnu_Errori", "mnu_Portafoglio"}, true);
            abilitaPulsanti({5, 6, 7}, true);
            abilitaPulsanti({8, 10, 11, 12, 13, 14, 15, 16, 17}, false);
            // Report, export, risk, draw down and averages menus are left as they are.
        }
    } else {
        scarica({"frmOperazioniChiuse", "frmGrOperazioni", "frmCapitale", "frmStGiorno", "frmErrori", "frmPortafoglio",
                 "frmReport", "frmRisk", "frmMDD", "frmMedie"});
        abilita({"mnu_Portafoglio", "mnu_Errori", "mnu_OperazioniChiuse", "mnu_SequenzeOperazioni", "mnu_Esporta",
                 "mnu_GP", "mnu_StatistichePeriodo", "mnu_Report", "mnu_Risk", "mnu_MDD", "mnu_Medie"},
                false);
        abilitaPulsanti({7, 8, 10, 11, 12, 13, 14, 15, 16, 17}, false);
    }
    const QList<QWidget*> loaded = platform::Forms::Loaded();
    for (QWidget* w : loaded) {
        if (platform::Forms::IsLoaded(w) && kConMain.contains(w->objectName()))
            QMetaObject::invokeMethod(w, "Main", Qt::DirectConnection);
    }
}

void MDIForm1::mnu_Exit_Click() { close(); }

void MDIForm1::mnu_Help_Click()
{
    auto* help = platform::Form<platform::HelpWindow>(this);
    help->ShowPage();
}

void MDIForm1::mnu_Menu_Click()
{
    platform::ToolbarCustomize dialog(toolbar1_, this);
    dialog.exec();
}

void MDIForm1::Toolbar1_ButtonClick(QAction* button)
{
    const QString key = button->objectName();
    if (key == QLatin1String("Nuovo")) {
        mnu_NuovoPortafoglio_Click();
        return;
    }
    if (key == QLatin1String("Apri")) {
        mnu_Apri_Click();
        return;
    }
    const auto it = finestraDelTasto().constFind(key);
    if (it == finestraDelTasto().constEnd())
        return;
    if (key == QLatin1String("Calcolatore")) {
        MostraFinestra(it.value());
        return;
    }
    const auto f = finestre().constFind(it.value());
    if (f == finestre().constEnd())
        return;
    QWidget* w = f->factory();
    if (auto* sub = qobject_cast<QMdiSubWindow*>(w->parentWidget()); sub && sub->isMinimized())
        sub->showNormal();
    MostraFinestra(it.value());
    if (auto* sub = qobject_cast<QMdiSubWindow*>(w->parentWidget())) {
        mdiArea_->setActiveSubWindow(sub);
        sub->raise();
    }
}
