#include "app/Presentazione.h"

#include "app/Codifica.h"
#include "app/Module1.h"
#include "platform/Forms.h"
#include "platform/Immagine.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace {

constexpr QSize kDimensione(520, 320);

} // namespace

Presentazione* Presentazione::Instance() { return platform::Form<Presentazione>(); }

Presentazione::Presentazione()
{
    setObjectName(QStringLiteral("Presentazione"));
    setWindowTitle(QStringLiteral("Quorvel"));
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setModal(true);
    setFixedSize(kDimensione);

    Image1_ = new QLabel(this);
    Image1_->setObjectName(QStringLiteral("Image1"));
    Image1_->setGeometry(QRect(QPoint(0, 0), kDimensione));
    Image1_->setPixmap(platform::ImmagineSvg(QStringLiteral(":/images/presentazione.svg"), kDimensione, devicePixelRatioF()));

    Label1_ = new QLabel(QStringLiteral("Ver 1.02"), this);
    Label1_->setObjectName(QStringLiteral("Label1"));
    Label1_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Label1_->setGeometry(kDimensione.width() - 140, kDimensione.height() - 44, 120, 24);

    Picture1_ = new QWidget(this);
    Picture1_->setObjectName(QStringLiteral("Picture1"));
    lab_Pwd_ = new QLabel(QStringLiteral("Password"), Picture1_);
    lab_Pwd_->setObjectName(QStringLiteral("lab_Pwd"));
    txt_Pwd_ = new QLineEdit(Picture1_);
    txt_Pwd_->setObjectName(QStringLiteral("txt_Pwd"));
    txt_Pwd_->setEchoMode(QLineEdit::Password);
    txt_Pwd_->setFixedWidth(170);
    Command1_ = new QPushButton(QStringLiteral("OK"), Picture1_);
    Command1_->setObjectName(QStringLiteral("Command1"));
    Command1_->setDefault(true);
    auto* riga = new QHBoxLayout(Picture1_);
    riga->setContentsMargins(0, 0, 0, 0);
    riga->addWidget(lab_Pwd_);
    riga->addWidget(txt_Pwd_);
    riga->addWidget(Command1_);
    Picture1_->setGeometry(22, kDimensione.height() - 50, 320, 36);
    connect(Command1_, &QPushButton::clicked, this, &Presentazione::Command1_Click);

    Timer1_ = new QTimer(this);
    Timer1_->setObjectName(QStringLiteral("Timer1"));
    Timer1_->setInterval(2000);
    connect(Timer1_, &QTimer::timeout, this, &Presentazione::Timer1_Timer);

    // Load.
    Module1::ApplicaColori(this);
    rsPwd_ = Module1::dbSet.OpenRecordset(QStringLiteral("SELECT  Pwd  FROM Settaggi"));
    password_ = Codifica(QStringLiteral("D"), kChiavePassword, rsPwd_.Text(QStringLiteral("Pwd")));
    Picture1_->setVisible(password_ != QLatin1String("0"));
    if (Picture1_->isVisibleTo(this))
        txt_Pwd_->setFocus();
    Timer1_->start();
}

void Presentazione::Command1_Click()
{
    // No message, no count and no clearing: a wrong text simply stays.
    if (Picture1_->isHidden() || TestoAnsi(txt_Pwd_->text()) == password_) {
        Timer1_->stop();
        platform::Forms::Unload(objectName());
    }
}

void Presentazione::Timer1_Timer()
{
    Command1_Click();
    Module1::SuonaWave(QStringLiteral("Start"));
}

void Presentazione::closeEvent(QCloseEvent* event) { event->ignore(); }
