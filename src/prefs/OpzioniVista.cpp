#include "prefs/OpzioniVista.h"

#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/Forms.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>

#include <tuple>

namespace {
int valore(const QCheckBox* c) { return c->isChecked() ? 1 : 0; }
} // namespace

OpzioniVista* OpzioniVista::Instance() { return platform::Form<OpzioniVista>(); }

QCheckBox* OpzioniVista::casella(const char* name, const QString& caption)
{
    auto* c = new QCheckBox(caption, this);
    c->setObjectName(QString::fromLatin1(name));
    return c;
}

OpzioniVista::OpzioniVista()
{
    setObjectName(QStringLiteral("OpzioniVista"));
    setWindowTitle(QStringLiteral("Opzioni Vista"));
    setModal(true);
    chk_Tip_ = casella("chk_Tip", QStringLiteral("Visualizza le regole auree all'avvio"));
    chk_Benvenuto_ = casella("chk_Benvenuto", QStringLiteral("Visualizza benvenuto all' avvio"));
    chk_Clock_ = casella("chk_Clock", QStringLiteral("Visualizza orologli"));
    chk_Menu_ = casella("chk_Menu", QStringLiteral("Menu a icone"));
    chk_Icone32_ = casella("chk_Icone32", QStringLiteral("Icone grandi"));
    chk_IconeName_ = casella("chk_IconeName", QStringLiteral("Nomi delle icone"));

    auto* avvio = new QGroupBox(QStringLiteral("All'avvio"), this);
    avvio->setObjectName(QStringLiteral("Frame1"));
    auto* a = new QVBoxLayout(avvio);
    a->addWidget(chk_Tip_);
    a->addWidget(chk_Benvenuto_);
    auto* barre = new QGroupBox(QStringLiteral("Barre della finestra principale"), this);
    barre->setObjectName(QStringLiteral("Frame2"));
    auto* b = new QVBoxLayout(barre);
    b->addWidget(chk_Clock_);
    b->addWidget(chk_Menu_);
    // Indented under what they depend on.
    auto rientro = [b](QWidget* w, int passo) {
        auto* r = new QHBoxLayout;
        r->addSpacing(22 * passo);
        r->addWidget(w);
        b->addLayout(r);
    };
    rientro(chk_Icone32_, 1);
    rientro(chk_IconeName_, 2);

    auto bottone = [this](const char* name, const QString& caption) {
        auto* p = new QPushButton(caption, this);
        p->setObjectName(QString::fromLatin1(name));
        return p;
    };
    QPushButton* cmd_Ok = bottone("cmd_Ok", QStringLiteral("OK"));
    QPushButton* cmd_Applica = bottone("cmd_Applica", QStringLiteral("Applica"));
    QPushButton* cmd_Annulla = bottone("cmd_Annulla", QStringLiteral("Annulla"));
    cmd_Ok->setDefault(true);
    auto* bottoni = new QHBoxLayout;
    bottoni->addStretch();
    bottoni->addWidget(cmd_Ok);
    bottoni->addWidget(cmd_Applica);
    bottoni->addWidget(cmd_Annulla);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 14, 14, 12);
    layout->setSpacing(10);
    layout->addWidget(avvio);
    layout->addWidget(barre);
    layout->addStretch();
    layout->addLayout(bottoni);
    setMinimumWidth(380);

    connect(chk_Menu_, &QCheckBox::clicked, this, &OpzioniVista::chk_Menu_Click);
    connect(chk_Icone32_, &QCheckBox::clicked, this, &OpzioniVista::chk_Icone32_Click);
    connect(cmd_Ok, &QPushButton::clicked, this, &OpzioniVista::cmd_Ok_Click);
    connect(cmd_Applica, &QPushButton::clicked, this, &OpzioniVista::cmd_Applica_Click);
    connect(cmd_Annulla, &QPushButton::clicked, this, &QDialog::reject);

    // Load.
    Module1::ApplicaColori(this);
    rsSettaggi_ = Module1::dbSet.OpenRecordset(QStringLiteral("SELECT  * FROM Settaggi"));
    // In this order, and each value set counts as a click on its box: its rule runs at once,
    // so with Menu off and large icons on, the names' box ends enabled.
    const std::tuple<QCheckBox*, const char*, void (OpzioniVista::*)()> colonne[] = {
        {chk_Tip_, "Tip", nullptr},
        {chk_Benvenuto_, "Benvenuto", nullptr},
        {chk_Clock_, "Clock", nullptr},
        {chk_Menu_, "Menu", &OpzioniVista::chk_Menu_Click},
        {chk_Icone32_, "Icone32", &OpzioniVista::chk_Icone32_Click},
        {chk_IconeName_, "IconeName", nullptr}};
    for (const auto& [box, colonna, regola] : colonne) {
        box->setChecked(rsSettaggi_.Number(QString::fromLatin1(colonna)) != 0);
        if (regola)
            (this->*regola)();
    }
}

void OpzioniVista::chk_Menu_Click()
{
    if (!chk_Menu_->isChecked()) {
        chk_Icone32_->setEnabled(false);
        chk_IconeName_->setEnabled(false);
        return;
    }
    chk_Icone32_->setEnabled(true);
    chk_Icone32_Click();
}

void OpzioniVista::chk_Icone32_Click()
{
    // Names under the icons only with large icons.
    chk_IconeName_->setEnabled(chk_Icone32_->isChecked());
}

void OpzioniVista::cmd_Applica_Click()
{
    MDIForm1* frame = MDIForm1::Instance();
    frame->Toolbar1()->setVisible(chk_Menu_->isChecked());
    frame->Toolbar3()->setVisible(chk_Clock_->isChecked());
    frame->Toolbar3()->setFixedHeight(MDIForm1::kAltezzaOrologi);
    frame->ToolbarMenu(static_cast<std::int16_t>(valore(chk_Icone32_)), static_cast<std::int16_t>(valore(chk_IconeName_)));
}

void OpzioniVista::cmd_Ok_Click()
{
    cmd_Applica_Click();
    Module1::dbSet.Execute("UPDATE Settaggi SET Tip = " + QString::number(valore(chk_Tip_)) + ", Clock ="
                           + QString::number(valore(chk_Clock_)) + ", Menu =" + QString::number(valore(chk_Menu_))
                           + ",Benvenuto=" + QString::number(valore(chk_Benvenuto_)) + ",Icone32="
                           + QString::number(valore(chk_Icone32_)) + ",IconeName=" + QString::number(valore(chk_IconeName_)));
    accept();
}
