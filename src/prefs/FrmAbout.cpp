#include "prefs/FrmAbout.h"

#include "app/Module1.h"
#include "platform/Forms.h"
#include "platform/Immagine.h"
#include "platform/MessageBox.h"
#include "prefs/InfoSistema.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>

namespace {

// Role, then who; the first ten of the twenty-one places are used.
const char* const kCrediti[10] = {
    "Analisi: Marco Bellandi",
    "Analisi: Chiara Ferretti",
    "Programmazione: Luca Moretti",
    "Programmazione: Giulia Santoro",
    "Programmazione: Andrea Colombo",
    "Programmazione: Marco Bellandi",
    "Programmazione: Francesca Rinaldi",
    "Grafica: Paolo Galli",
    "Grafica: Elena Marchetti",
    "Grafica: Chiara Ferretti",
};
constexpr short nUltimaRiga = 9;

// The credits move in twips, 12 to a pixel.
constexpr int kTwips = 12;
constexpr QSize kArea(340, 230);

} // namespace

FrmAbout* FrmAbout::Instance() { return platform::Form<FrmAbout>(); }

FrmAbout::FrmAbout()
{
    setObjectName(QStringLiteral("FrmAbout"));
    setWindowTitle(QStringLiteral("About Quorvel"));
    setModal(true);

    auto* logo = new QLabel(this);
    logo->setObjectName(QStringLiteral("picIcon"));
    logo->setPixmap(platform::ImmagineSvg(QStringLiteral(":/icons/quorvel.svg"), QSize(64, 64), devicePixelRatioF()));
    auto* titolo = new QLabel(QStringLiteral("Quorvel"), this);
    titolo->setObjectName(QStringLiteral("lblTitle"));
    QFont grande = titolo->font();
    grande.setBold(true);
    grande.setPointSizeF(grande.pointSizeF() * 1.8);
    titolo->setFont(grande);
    auto* versione = new QLabel(QStringLiteral("Versione 1.02 - diario di trading per il risparmiatore privato"), this);
    versione->setObjectName(QStringLiteral("lblVersion"));

    auto* Frame1 = new QGroupBox(this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    Picture1_ = new QWidget(Frame1);
    Picture1_->setObjectName(QStringLiteral("Picture1"));
    Picture1_->setFixedSize(kArea);
    QPalette nero = Picture1_->palette();
    nero.setColor(QPalette::Window, Qt::black);
    Picture1_->setPalette(nero);
    Picture1_->setAutoFillBackground(true);
    auto* cornice = new QVBoxLayout(Frame1);
    cornice->setContentsMargins(6, 6, 6, 6);
    cornice->addWidget(Picture1_, 0, Qt::AlignCenter);

    auto* Label1 = new QLabel(
        QStringLiteral("Quorvel è un programma per uso personale. Le cifre che mostra dipendono soltanto dai dati "
                       "inseriti e non sono consigli di investimento. © Il gruppo Quorvel. Tutti i diritti riservati."),
        this);
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setWordWrap(true);
    QFont piccolo = Label1->font();
    piccolo.setPointSizeF(piccolo.pointSizeF() * 0.9);
    Label1->setFont(piccolo);

    auto* cmd_Ok = new QPushButton(QStringLiteral("OK"), this);
    cmd_Ok->setObjectName(QStringLiteral("cmd_Ok"));
    cmd_Ok->setDefault(true);
    auto* cmd_SystemInfo = new QPushButton(QStringLiteral("System Info.."), this);
    cmd_SystemInfo->setObjectName(QStringLiteral("cmd_SystemInfo"));
    for (QPushButton* b : {cmd_Ok, cmd_SystemInfo})
        b->setMinimumWidth(110);

    auto* griglia = new QGridLayout(this);
    griglia->setContentsMargins(16, 16, 16, 14);
    griglia->setHorizontalSpacing(14);
    griglia->addWidget(logo, 0, 0, 2, 1, Qt::AlignTop);
    griglia->addWidget(titolo, 0, 1, 1, 2);
    griglia->addWidget(versione, 1, 1, 1, 2);
    griglia->addWidget(Frame1, 2, 1, 1, 2);
    griglia->addWidget(Label1, 3, 1, 2, 1);
    griglia->addWidget(cmd_Ok, 3, 2, Qt::AlignTop);
    griglia->addWidget(cmd_SystemInfo, 4, 2, Qt::AlignTop);
    griglia->setColumnStretch(1, 1);
    griglia->setSizeConstraint(QLayout::SetFixedSize);

    connect(cmd_Ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmd_SystemInfo, &QPushButton::clicked, this, &FrmAbout::cmd_SystemInfo_Click);

    Timer1_ = new QTimer(this);
    Timer1_->setObjectName(QStringLiteral("Timer1"));
    Timer1_->setInterval(1);
    connect(Timer1_, &QTimer::timeout, this, &FrmAbout::Timer1_Timer);

    // Load: the colours, then the lines one below the other.
    Module1::ApplicaColori(this);
    QFont riga = font();
    riga.setPointSizeF(riga.pointSizeF() * 1.1);
    const int altezzaRiga = QFontMetrics(riga).height() + 6;
    for (int i = 0; i <= nUltimaRiga; ++i) {
        auto* l = new QLabel(QString::fromUtf8(kCrediti[i]), Picture1_);
        l->setObjectName(QStringLiteral("lblCredits(%1)").arg(i));
        l->setFont(riga);
        l->setAlignment(Qt::AlignCenter);
        l->setGeometry(0, 0, kArea.width(), altezzaRiga);
        lblCredits_ << l;
    }
    crediti_ = std::make_unique<prefs::Crediti>(nUltimaRiga + 1, altezzaRiga * kTwips, kArea.height() * kTwips,
                                                kArea.height() * kTwips / 3);
    Timer1_Timer();
    Timer1_->start();
}

void FrmAbout::Timer1_Timer()
{
    crediti_->Passo();
    for (int i = 0; i <= nUltimaRiga; ++i) {
        QLabel* l = lblCredits_[i];
        const prefs::Rgb c = crediti_->Colore(i);
        QPalette p = l->palette();
        p.setColor(QPalette::WindowText, QColor(c.rosso, c.verde, c.blu));
        l->setPalette(p);
        l->move(0, static_cast<int>(std::floor(crediti_->Top(i) / double(kTwips))));
    }
}

void FrmAbout::cmd_SystemInfo_Click()
{
    if (!prefs::AvviaInfoSistema())
        platform::MsgBox(QStringLiteral("System Information Is Unavailable At This Time"), platform::Buttons::Ok,
                         platform::Icon::None, this);
}

void FrmAbout::done(int result)
{
    Timer1_->stop();
    FinestraModale::done(result);
}
