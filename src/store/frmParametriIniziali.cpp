#include "store/frmParametriIniziali.h"

#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/DataSource.h"
#include "platform/Forms.h"
#include "platform/MessageBox.h"
#include "platform/Numbers.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

using Module1::dbSet;

frmParametriIniziali* frmParametriIniziali::Instance() { return platform::Form<frmParametriIniziali>(); }

QLineEdit* frmParametriIniziali::campo(const QString& name, int digits, int decimals)
{
    auto* e = new QLineEdit(this);
    e->setObjectName(name);
    e->setAlignment(Qt::AlignRight);
    e->setMaximumWidth(120);
    Module1::FiltroNumeri(e, digits, decimals);
    return e;
}

frmParametriIniziali::frmParametriIniziali()
{
    setObjectName(QStringLiteral("frmParametriIniziali"));
    setWindowTitle(QStringLiteral("Parametri iniziali"));
    setModal(true);
    txtCapitaleIniziale_ = campo(QStringLiteral("txtCapitaleIniziale"), 5, 2);
    txtCapitalGain_ = campo(QStringLiteral("txtCapitalGain"), 2, 2);
    txtSLMM_ = campo(QStringLiteral("txtSLMM"), 5, 2);
    txtSLP_ = campo(QStringLiteral("txtSLP"), 2, 2);

    auto* figure = new QGroupBox(QStringLiteral("Capitale e stop loss"), this);
    auto* g = new QGridLayout(figure);
    g->addWidget(new QLabel(QStringLiteral("Capitale Iniziale"), this), 0, 0);
    g->addWidget(txtCapitaleIniziale_, 0, 1);
    g->addWidget(new QLabel(QStringLiteral("Capital Gain"), this), 0, 2);
    g->addWidget(txtCapitalGain_, 0, 3);
    g->addWidget(new QLabel(QStringLiteral("M.M. stop loss"), this), 1, 0);
    g->addWidget(txtSLMM_, 1, 1);
    g->addWidget(new QLabel(QStringLiteral("%  stop loss"), this), 1, 2);
    g->addWidget(txtSLP_, 1, 3);
    g->setColumnStretch(4, 1);

    Data1_ = new platform::DataSource(this);
    Data1_->setObjectName(QStringLiteral("Data1"));
    auto* sistemi = new QGroupBox(QStringLiteral("Sistemi di trading"), this);
    auto* s = new QVBoxLayout(sistemi);
    auto* intestazioni = new QHBoxLayout;
    intestazioni->addWidget(new QLabel(QStringLiteral("Sistema :"), this));
    intestazioni->addStretch();
    intestazioni->addWidget(new QLabel(QStringLiteral("Commissioni  %."), this));
    intestazioni->addSpacing(16);
    intestazioni->addWidget(new QLabel(QStringLiteral("Commissioni Minime  "), this));
    s->addLayout(intestazioni);
    DBGrid1_ = new QTableView(this);
    DBGrid1_->setObjectName(QStringLiteral("DBGrid1"));
    DBGrid1_->verticalHeader()->setDefaultSectionSize(DBGrid1_->fontMetrics().height() + 8);
    DBGrid1_->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    DBGrid1_->horizontalHeader()->setStretchLastSection(true);
    DBGrid1_->setSelectionBehavior(QAbstractItemView::SelectRows);
    s->addWidget(DBGrid1_);
    auto* aggiungi = new QPushButton(QStringLiteral("Aggiungi sistema"), this);
    aggiungi->setObjectName(QStringLiteral("cmd_Aggiungi"));
    auto* elimina = new QPushButton(QStringLiteral("Elimina sistema"), this);
    elimina->setObjectName(QStringLiteral("cmd_Elimina"));
    auto* bottoni = new QHBoxLayout;
    bottoni->addWidget(aggiungi);
    bottoni->addWidget(elimina);
    bottoni->addStretch();
    s->addLayout(bottoni);
    connect(aggiungi, &QPushButton::clicked, this, &frmParametriIniziali::aggiungiSistema);
    connect(elimina, &QPushButton::clicked, this, &frmParametriIniziali::eliminaSistema);

    auto* Command2 = new QPushButton(QStringLiteral("Esci"), this);
    Command2->setObjectName(QStringLiteral("Command2"));
    connect(Command2, &QPushButton::clicked, this, &QDialog::accept);
    auto* piede = new QHBoxLayout;
    piede->addStretch();
    piede->addWidget(Command2);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(figure);
    layout->addWidget(sistemi, 1);
    layout->addLayout(piede);
    resize(640, 460);

    // Load, in its order.
    Module1::ApplicaColori(this);
    Data1_->SetSource(&dbSet, QStringLiteral("SELECT * FROM System"));
    Data1_->Refresh();
    model_ = new platform::EditableRecordsetModel(
        Data1_, {{"Cod", "Cod"}, {"Descrizione", "Descrizione"}, {"%.", "Commissioni"}, {"€", "CommissioniMin"}}, this);
    DBGrid1_->setModel(model_);
    DBGrid1_->setColumnWidth(0, 80);
    DBGrid1_->setColumnWidth(1, 300);
    DBGrid1_->setColumnWidth(2, 80);
    connect(model_, &platform::EditableRecordsetModel::EditRefused, this, [this](const QString& value) {
        platform::MsgBox("Valore non valido: " + value, platform::Buttons::Ok, platform::Icon::Exclamation, this);
    });
    settaggi_ = dbSet.OpenRecordset(QStringLiteral("SELECT *  FROM Settaggi"));
    txtCapitaleIniziale_->setText(settaggi_.Text(QStringLiteral("CapitaleIniziale")));
    txtCapitalGain_->setText(settaggi_.Text(QStringLiteral("CapitalGain")));
    txtCapitaleIniziale_->setText(settaggi_.Text(QStringLiteral("CapitaleIniziale")));
    txtSLMM_->setText(settaggi_.Text(QStringLiteral("SLMM")));
    txtSLP_->setText(settaggi_.Text(QStringLiteral("SLP")));
}

void frmParametriIniziali::aggiungiSistema()
{
    model_->AppendRow(QStringLiteral("System"), QStringLiteral("Cod, Descrizione, Commissioni, CommissioniMin"),
                      QStringLiteral("'NUOVO','Nuovo sistema',0,0"));
    const QModelIndex nuovo = model_->index(model_->rowCount() - 1, 0);
    DBGrid1_->setCurrentIndex(nuovo);
    DBGrid1_->edit(nuovo);
}

void frmParametriIniziali::eliminaSistema()
{
    const int row = DBGrid1_->currentIndex().row();
    if (row < 0)
        return;
    // A trade always needs a system to choose.
    if (model_->rowCount() <= 1) {
        platform::MsgBox(QStringLiteral("Deve restare almeno un sistema di trading: l'ultimo non si può eliminare."),
                         platform::Buttons::Ok, platform::Icon::Information, this);
        return;
    }
    model_->RemoveRow(row);
}

void frmParametriIniziali::salva()
{
    // An emptied field keeps the value stored.
    auto valore = [this](QLineEdit* e, const char* column) {
        const QString t = num::CommaToPoint(e->text().trimmed());
        return t.isEmpty() ? num::SqlText(settaggi_.Number(QString::fromLatin1(column))) : t;
    };
    dbSet.Execute("UPDATE Settaggi SET CapitaleIniziale = " + valore(txtCapitaleIniziale_, "CapitaleIniziale")
                  + ", CapitalGain =" + valore(txtCapitalGain_, "CapitalGain") + ",SLMM =" + valore(txtSLMM_, "SLMM")
                  + ",SLP = " + valore(txtSLP_, "SLP"));
    Data1_->Refresh();
    MDIForm1::Instance()->ControlloMenu();
}

void frmParametriIniziali::done(int result)
{
    // Closing is saving, whichever way the window goes.
    if (!salvato_) {
        salvato_ = true;
        salva();
    }
    QDialog::done(result);
    platform::Forms::Unload(objectName());
}
