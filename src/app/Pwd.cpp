#include "app/Pwd.h"

#include "app/Codifica.h"
#include "app/Module1.h"
#include "platform/Forms.h"
#include "platform/Immagine.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>

Pwd* Pwd::Instance() { return platform::Form<Pwd>(); }

Pwd::Pwd()
{
    setObjectName(QStringLiteral("Pwd"));
    setModal(true);
    setWindowIcon(QIcon(QStringLiteral(":/images/lucchetto.svg")));
    auto box = [this](const char* name) {
        auto* e = new QLineEdit(this);
        e->setObjectName(QString::fromLatin1(name));
        e->setMinimumWidth(200);
        return e;
    };
    auto label = [this](const char* name) {
        auto* l = new QLabel(this);
        l->setObjectName(QString::fromLatin1(name));
        return l;
    };
    lab_1_ = label("lab_1");
    lab_2_ = label("lab_2");
    lab_3_ = label("lab_3");
    // In change mode these captions stand over the rows that the current password unlocks.
    lab_2_->setText(QStringLiteral("Nuova Password"));
    lab_3_->setText(QStringLiteral("Conferma password"));
    txt_1_ = box("txt_1");
    txt_2_ = box("txt_2");
    txt_3_ = box("txt_3");
    Command1_ = new QPushButton(QStringLiteral("OK"), this);
    Command1_->setObjectName(QStringLiteral("Command1"));
    Command1_->setDefault(true);
    com_Annulla_ = new QPushButton(QStringLiteral("Annulla"), this);
    com_Annulla_->setObjectName(QStringLiteral("com_Annulla"));
    StatusBar1_ = new QStatusBar(this);
    StatusBar1_->setObjectName(QStringLiteral("StatusBar1"));
    StatusBar1_->setSizeGripEnabled(false);

    auto* lucchetto = new QLabel(this);
    lucchetto->setObjectName(QStringLiteral("Image1"));
    lucchetto->setPixmap(platform::ImmagineSvg(QStringLiteral(":/images/lucchetto.svg"), QSize(40, 40), devicePixelRatioF()));
    auto* campi = new QGridLayout;
    campi->setContentsMargins(0, 0, 0, 0);
    campi->setVerticalSpacing(8);
    campi->setHorizontalSpacing(12);
    campi->addWidget(lab_1_, 0, 0);
    campi->addWidget(txt_1_, 0, 1);
    campi->addWidget(lab_2_, 1, 0);
    campi->addWidget(txt_2_, 1, 1);
    campi->addWidget(lab_3_, 2, 0);
    campi->addWidget(txt_3_, 2, 1);
    auto* corpo = new QHBoxLayout;
    corpo->setContentsMargins(16, 16, 16, 10);
    corpo->setSpacing(16);
    corpo->addWidget(lucchetto, 0, Qt::AlignTop);
    corpo->addLayout(campi);
    auto* bottoni = new QHBoxLayout;
    bottoni->setContentsMargins(16, 4, 16, 10);
    bottoni->addStretch();
    bottoni->addWidget(Command1_);
    bottoni->addWidget(com_Annulla_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(corpo);
    layout->addLayout(bottoni);
    layout->addWidget(StatusBar1_);
    // The window follows the rows that show.
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(txt_1_, &QLineEdit::textChanged, this, &Pwd::txt_1_Change);
    connect(Command1_, &QPushButton::clicked, this, &Pwd::Command1_Click);
    connect(com_Annulla_, &QPushButton::clicked, this, &QDialog::reject);

    // Load.
    Module1::ApplicaColori(this);
    rsPwd_ = Module1::dbSet.OpenRecordset(QStringLiteral("SELECT  Pwd  FROM Settaggi"));
    for (QLineEdit* e : {txt_1_, txt_2_, txt_3_})
        e->setEchoMode(QLineEdit::Password);
    password_ = Codifica(QStringLiteral("D"), kChiavePassword, rsPwd_.Text(QStringLiteral("Pwd")));
    if (nuova()) {
        lab_1_->setText(QStringLiteral("Password"));
        lab_2_->setText(QStringLiteral("Conferma Password"));
        lab_3_->hide();
        txt_3_->hide();
        setWindowTitle(QStringLiteral("Inserimento nuova pasword"));
    } else {
        lab_1_->setText(QStringLiteral("Password Corrente"));
        txt_2_->hide();
        txt_3_->hide();
        // Greyed until the current password unlocks their boxes.
        lab_2_->setEnabled(false);
        lab_3_->setEnabled(false);
        setWindowTitle(QStringLiteral("Modifica pasword"));
    }
    StatusBar1_->showMessage(QStringLiteral("inserire la password "));
    txt_1_->setFocus();
}

void Pwd::txt_1_Change()
{
    if (TestoAnsi(txt_1_->text()) != password_)
        return;
    // The current password unlocks the new one; only Annulla goes back.
    StatusBar1_->showMessage(QStringLiteral("Inserire nuova password"));
    lab_2_->setText(QStringLiteral("Nuova Password"));
    lab_3_->setText(QStringLiteral("Conferma password"));
    txt_1_->setEnabled(false);
    // Only the boxes: in new-password mode (where "0" unlocks) lab_3 stays hidden.
    txt_2_->show();
    txt_3_->show();
    lab_2_->setEnabled(true);
    lab_3_->setEnabled(true);
    txt_2_->setFocus();
}

void Pwd::Command1_Click()
{
    if (nuova()) {
        if (txt_1_->text() == txt_2_->text()) {
            scrivi(txt_1_->text());
            return;
        }
    } else if (TestoAnsi(txt_1_->text()) == password_ && txt_2_->text() == txt_3_->text()) {
        // Both boxes empty remove the password.
        if (txt_2_->text().isEmpty())
            txt_2_->setText(QStringLiteral("0"));
        scrivi(txt_2_->text());
        return;
    }
    StatusBar1_->showMessage(QStringLiteral("Password non corretta"));
}

void Pwd::scrivi(const QString& testo)
{
    const QString codificata = Codifica(QStringLiteral("E"), kChiavePassword, testo);
    Module1::dbSet.Execute("UPDATE Settaggi SET Pwd = '" + codificata + "'");
    accept();
}
