#include "ledger/frmEseguiti.h"

#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "ledger/Commit.h"
#include "ledger/Sequence.h"
#include "platform/DataSource.h"
#include "platform/Forms.h"
#include "platform/ListaTipi.h"
#include "platform/MessageBox.h"
#include "platform/Numbers.h"

#include <QComboBox>
#include <QDateEdit>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

using Module1::dbExe;
using Module1::dbSet;

namespace {

// Grid columns, numbered as the routines read them.
enum Colonna { cData, cTipo, cSistema, cCodice, cTitolo, cQta, cPrezzo, cImporto, cErrore, cOttimale };

const QList<platform::GridColumn> kColonne = {
    {"Data", "Data"},     {"Tipo", "Tipo"},         {"Sistema", "System"}, {"Codice", "Cod"},
    {"Titolo", "Titolo"}, {"Quantita'", "Qta"},     {"Prezzo", "Prezzo"},  {"Importo", "Importo"},
    {"Errore", "Errore"}, {"Prezzo Ottimale", "PrezzoOttimale"},
};

// Guards the window's own logic against re-entering itself through change events.
struct Guard {
    bool& flag;
    bool was;
    explicit Guard(bool& f) : flag(f), was(f) { flag = true; }
    ~Guard() { flag = was; }
};

} // namespace

frmEseguiti* frmEseguiti::Instance() { return platform::Form<frmEseguiti>(); }

frmEseguiti::frmEseguiti()
{
    setObjectName(QStringLiteral("frmEseguiti"));
    setWindowTitle(QStringLiteral("Eseguiti"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/2.svg")));
    crea();
    Colore();
    dPosizioneRiga_ = 0;
    Main();
}

void frmEseguiti::crea()
{
    auto* modo = new QGroupBox(QStringLiteral("Operazione"), this);
    auto* modoLayout = new QHBoxLayout(modo);
    const char* captions[4] = {"Nuovo", "Modifica", nullptr, "Elimina"};
    for (int i : {0, 1, 3}) {
        Option1_[i] = new QRadioButton(QString::fromLatin1(captions[i]), modo);
        Option1_[i]->setObjectName(QStringLiteral("Option1(%1)").arg(i));
        modoLayout->addWidget(Option1_[i]);
        connect(Option1_[i], &QRadioButton::clicked, this, &frmEseguiti::Option1_Click);
    }
    Option1_[0]->setChecked(true);

    auto* campi = new QGroupBox(QStringLiteral("Eseguito"), this);
    auto* grid = new QGridLayout(campi);
    auto etichetta = [this](const QString& text, const QString& name = QString()) {
        auto* l = new QLabel(text, this);
        if (!name.isEmpty())
            l->setObjectName(name);
        return l;
    };
    dtp_Data_ = new QDateEdit(this);
    dtp_Data_->setObjectName(QStringLiteral("dtp_Data"));
    dtp_Data_->setCalendarPopup(true);
    dtp_Data_->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    cmb_Tipo_ = new QComboBox(this);
    cmb_Tipo_->setObjectName(QStringLiteral("cmb_Tipo"));
    cmb_Tipo_->addItems({QStringLiteral("Buy"), QStringLiteral("Sell")});
    platform::ListaTipi(cmb_Tipo_);
    dbc_System_ = new QComboBox(this);
    dbc_System_->setObjectName(QStringLiteral("dbc_System"));
    dbc_System_->setEditable(true);
    txt_Codice_ = new QLineEdit(this);
    txt_Codice_->setObjectName(QStringLiteral("txt_Codice"));
    cmb_Codice_ = new QComboBox(this);
    cmb_Codice_->setObjectName(QStringLiteral("cmb_Codice"));
    txt_Titolo_ = new QLineEdit(this);
    txt_Titolo_->setObjectName(QStringLiteral("txt_Titolo"));
    cmb_Titolo_ = new QComboBox(this);
    cmb_Titolo_->setObjectName(QStringLiteral("cmb_Titolo"));
    txtQta_ = new QLineEdit(this);
    txtQta_->setObjectName(QStringLiteral("txtQta"));
    txtPrezzo_ = new QLineEdit(this);
    txtPrezzo_->setObjectName(QStringLiteral("txtPrezzo"));
    lab_Importo_ = etichetta(QStringLiteral("0"), QStringLiteral("lab_Importo"));
    lab_Importo_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    lab_Importo_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lab_Importo_->setMinimumWidth(110);
    dbc_Errore_ = new QComboBox(this);
    dbc_Errore_->setObjectName(QStringLiteral("dbc_Errore"));
    dbc_Errore_->setEditable(true);
    txtPzoOttimale_ = new QLineEdit(this);
    txtPzoOttimale_->setObjectName(QStringLiteral("txtPzoOttimale"));
    lab_PzoOttimale_ = etichetta(QStringLiteral("Pzo ottimale"), QStringLiteral("lab_PzoOttimale"));
    cmd_Ok_ = new QPushButton(QStringLiteral("Conferma"), this);
    cmd_Ok_->setObjectName(QStringLiteral("cmd_Ok"));
    cmd_Ok_->setDefault(true);
    cmd_Ok_->setMinimumWidth(110);

    for (QLineEdit* e : {txtQta_, txtPrezzo_, txtPzoOttimale_})
        e->setAlignment(Qt::AlignRight);
    txt_Titolo_->setMinimumWidth(220);
    cmb_Titolo_->setMinimumWidth(220);
    dtp_Data_->setMinimumWidth(115);

    grid->addWidget(etichetta(QStringLiteral("Data")), 0, 0);
    grid->addWidget(dtp_Data_, 1, 0);
    grid->addWidget(etichetta(QStringLiteral("Tipo")), 0, 1);
    grid->addWidget(cmb_Tipo_, 1, 1);
    grid->addWidget(etichetta(QStringLiteral("Sistema")), 0, 2);
    grid->addWidget(dbc_System_, 1, 2);
    grid->addWidget(etichetta(QStringLiteral("Codice"), QStringLiteral("lab_EseguitiCodice")), 0, 3);
    grid->addWidget(txt_Codice_, 1, 3);
    grid->addWidget(cmb_Codice_, 1, 3);
    grid->addWidget(etichetta(QStringLiteral("Titolo")), 0, 4, 1, 2);
    grid->addWidget(txt_Titolo_, 1, 4, 1, 2);
    grid->addWidget(cmb_Titolo_, 1, 4, 1, 2);
    grid->addWidget(etichetta(QStringLiteral("Quantita'")), 2, 0);
    grid->addWidget(txtQta_, 3, 0);
    grid->addWidget(etichetta(QStringLiteral("Prezzo")), 2, 1);
    grid->addWidget(txtPrezzo_, 3, 1);
    grid->addWidget(etichetta(QStringLiteral("Importo")), 2, 2);
    grid->addWidget(lab_Importo_, 3, 2);
    grid->addWidget(etichetta(QStringLiteral("Errore")), 2, 3);
    grid->addWidget(dbc_Errore_, 3, 3);
    grid->addWidget(lab_PzoOttimale_, 2, 4);
    grid->addWidget(txtPzoOttimale_, 3, 4);
    grid->addWidget(cmd_Ok_, 3, 5);
    grid->setColumnStretch(4, 1);
    grid->setHorizontalSpacing(10);

    lab_RowSelect_ = etichetta(QStringLiteral("1"), QStringLiteral("lab_RowSelect"));
    lab_TotaleEseguiti_ = etichetta(QStringLiteral("0"), QStringLiteral("lab_TotaleEseguiti"));
    auto* conta = new QHBoxLayout;
    conta->addWidget(etichetta(QStringLiteral("Numero riga selezionata")));
    conta->addWidget(lab_RowSelect_);
    conta->addSpacing(24);
    conta->addWidget(etichetta(QStringLiteral("Totale operazioni")));
    conta->addWidget(lab_TotaleEseguiti_);
    conta->addStretch();

    dat_Eseguiti_ = new platform::DataSource(this);
    dat_Eseguiti_->setObjectName(QStringLiteral("dat_Eseguiti"));
    dat_System_ = new platform::DataSource(this);
    dat_System_->setObjectName(QStringLiteral("dat_System"));
    dat_Errore_ = new platform::DataSource(this);
    dat_Errore_->setObjectName(QStringLiteral("dat_Errore"));
    dat_Eseguiti_->SetSource(&dbExe, QStringLiteral("SELECT * FROM EseguitiTemp ORDER BY Data"));
    dbg_Eseguiti_ = new platform::DataGrid(this);
    dbg_Eseguiti_->setObjectName(QStringLiteral("dbg_Eseguiti"));
    dbg_Eseguiti_->SetAllowDelete(true);
    dat_Eseguiti_->Refresh();
    dbg_Eseguiti_->Bind(dat_Eseguiti_, kColonne);
    dbg_Eseguiti_->setColumnWidth(cData, 90);
    dbg_Eseguiti_->setColumnWidth(cTitolo, 190);
    auto* tabella = new QGroupBox(QStringLiteral("Tabella eseguiti"), this);
    auto* tabellaLayout = new QVBoxLayout(tabella);
    tabellaLayout->addWidget(dbg_Eseguiti_);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(modo);
    layout->addWidget(campi);
    layout->addLayout(conta);
    layout->addWidget(tabella, 1);
    resize(1120, 600);

    Module1::FiltroNumeri(txtPrezzo_, 5, 2);
    Module1::FiltroNumeri(txtPzoOttimale_, 5, 2);
    Module1::FiltroNumeri(txtQta_, 8, 0);
    Module1::FiltroCaratteri(txt_Codice_);
    Module1::FiltroCaratteri(txt_Titolo_);
    Module1::FiltroCaratteri(dbc_System_);

    connect(cmd_Ok_, &QPushButton::clicked, this, &frmEseguiti::cmd_Ok_Click);
    connect(cmb_Tipo_, &QComboBox::activated, this, &frmEseguiti::cmb_Tipo_Click);
    connect(cmb_Codice_, &QComboBox::activated, this, &frmEseguiti::cmb_Codice_Click);
    connect(cmb_Titolo_, &QComboBox::activated, this, &frmEseguiti::cmb_Titolo_Click);
    connect(dbc_Errore_, &QComboBox::activated, this, &frmEseguiti::dbc_Errore_Click);
    connect(dbg_Eseguiti_, &platform::DataGrid::RowColChange, this, &frmEseguiti::dbg_Eseguiti_RowColChange);
    connect(dat_Eseguiti_, &platform::DataSource::RowsChanged, this, [this]() {
        if (!inLogica_)
            copiaRidotta_ = true;
    });
    connect(txtPrezzo_, &QLineEdit::textChanged, this, &frmEseguiti::txtPrezzo_Change);
    connect(txtQta_, &QLineEdit::textChanged, this, &frmEseguiti::txtQta_Change);
    connect(txt_Codice_, &QLineEdit::textChanged, this, &frmEseguiti::ControlloConferma);
    connect(txt_Titolo_, &QLineEdit::textChanged, this, &frmEseguiti::ControlloConferma);
    connect(dbc_System_, &QComboBox::editTextChanged, this, &frmEseguiti::ControlloConferma);
}

void frmEseguiti::Colore() { Module1::ApplicaColori(this); }

bool frmEseguiti::modoNuovo() const { return Option1_[0]->isChecked(); }
bool frmEseguiti::modoModifica() const { return Option1_[1]->isChecked(); }
bool frmEseguiti::modoElimina() const { return Option1_[3]->isChecked(); }

void frmEseguiti::Main()
{
    Guard g(inLogica_);
    // rsEseguiti is not opened here: cmd_Ok reopens it before it reads it, and a snapshot
    // of every trade nobody reads was a sixth of a confirm at 10,000 trades.
    // The undo record of the next change.
    dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
    dbExe.Execute(QStringLiteral("INSERT INTO EseguitiTemp SELECT * FROM Eseguiti"));
    copiaRidotta_ = false;
    dat_Eseguiti_->SetSource(&dbExe, QStringLiteral("SELECT * FROM EseguitiTemp ORDER BY Data"));
    dat_Errore_->SetSource(&dbSet, QStringLiteral("SELECT Cod FROM Errori"));
    dat_System_->SetSource(&dbSet, QStringLiteral("SELECT Cod FROM System"));
    dat_Errore_->Refresh();
    dat_System_->Refresh();
    platform::FillCombo(dbc_Errore_, dat_Errore_->Recordset(), QStringLiteral("Cod"));
    platform::FillCombo(dbc_System_, dat_System_->Recordset(), QStringLiteral("Cod"));
    rsErrori_ = dbSet.OpenRecordset(QStringLiteral("SELECT Cod FROM Errori"));
    dat_Eseguiti_->Refresh();

    store::Recordset& rs = dat_Eseguiti_->Recordset();
    if (rs.RecordCount() == 0) {
        Option1_[0]->setChecked(true);
        Option1_[1]->setEnabled(false);
        Option1_[3]->setEnabled(false);
        inLogica_ = false;
        logicaModo();
        inLogica_ = true;
    } else {
        dat_Eseguiti_->MoveLast();
        dat_Eseguiti_->MoveFirst();
        Option1_[1]->setEnabled(true);
        Option1_[3]->setEnabled(true);
        if (dPosizioneRiga_ < 0)
            dPosizioneRiga_ = 0;
        // A position past the last row (the table shrank elsewhere) stays on the last row.
        const int riga = std::min(static_cast<int>(num::Floor(dPosizioneRiga_)), rs.RecordCount() - 1);
        inLogica_ = false;
        dat_Eseguiti_->Move(riga);
        inLogica_ = true;
    }
    lab_TotaleEseguiti_->setText(QString::number(rs.RecordCount()));
    inLogica_ = false;
    logicaTipo();
}

void frmEseguiti::dbg_Eseguiti_RowColChange()
{
    if (inLogica_)
        return;
    lab_RowSelect_->setText(QString::number(dat_Eseguiti_->Recordset().AbsolutePosition() + 1));
    logicaModo();
}

void frmEseguiti::Option1_Click()
{
    if (!inLogica_)
        logicaModo();
}

void frmEseguiti::AbilitaCampi(bool on)
{
    for (QWidget* w : std::initializer_list<QWidget*>{dtp_Data_, cmb_Tipo_, dbc_System_, txt_Codice_, txt_Titolo_, txtQta_,
                                                      txtPrezzo_, dbc_Errore_, txtPzoOttimale_})
        w->setEnabled(on);
}

void frmEseguiti::mostraTesti(bool testi)
{
    txt_Codice_->setVisible(testi);
    txt_Titolo_->setVisible(testi);
    cmb_Codice_->setVisible(!testi);
    cmb_Titolo_->setVisible(!testi);
}

void frmEseguiti::impostaData(const QString& text)
{
    const QDate d = num::ParseShortDate(text);
    if (d.isValid())
        dtp_Data_->setDate(d);
}

void frmEseguiti::riempiErroreEOttimale()
{
    if (dbg_Eseguiti_->Column(cErrore).isEmpty()) {
        dbc_Errore_->setEditText(rsErrori_.Eof() ? QString() : rsErrori_.Text(QStringLiteral("Cod")));
        txtPzoOttimale_->setText(txtPrezzo_->text());
    } else {
        dbc_Errore_->setEditText(dbg_Eseguiti_->Column(cErrore));
        txtPzoOttimale_->setText(dbg_Eseguiti_->Column(cOttimale));
    }
}

void frmEseguiti::riempiDallaRiga()
{
    impostaData(dbg_Eseguiti_->Column(cData));
    platform::MostraTipo(cmb_Tipo_, dbg_Eseguiti_->Column(cTipo));
    dbc_System_->setEditText(dbg_Eseguiti_->Column(cSistema));
    txtQta_->setText(dbg_Eseguiti_->Column(cQta));
    txtPrezzo_->setText(dbg_Eseguiti_->Column(cPrezzo));
    riempiErroreEOttimale();
}

void frmEseguiti::logicaModo()
{
    const bool righe = dat_Eseguiti_->Recordset().RecordCount() > 0 && dat_Eseguiti_->Recordset().AbsolutePosition() >= 0;
    if (modoElimina()) {
        AbilitaCampi(false);
        cmd_Ok_->setEnabled(true);
        if (righe) {
            mostraTesti(true);
            txt_Codice_->setEnabled(false);
            txt_Titolo_->setEnabled(false);
            txt_Codice_->setText(dbg_Eseguiti_->Column(cCodice));
            txt_Titolo_->setText(dbg_Eseguiti_->Column(cTitolo));
            riempiDallaRiga();
        }
    }
    if (modoModifica()) {
        AbilitaCampi(true);
        if (righe) {
            if (dbg_Eseguiti_->Column(cTipo) == QLatin1String("Sell")) {
                if (cmb_Tipo_->count() == 1)
                    cmb_Tipo_->addItem(QStringLiteral("Sell"));
                mostraTesti(false);
                cmb_Codice_->addItem(dbg_Eseguiti_->Column(cCodice));
                cmb_Codice_->setCurrentIndex(0);
                cmb_Titolo_->addItem(dbg_Eseguiti_->Column(cTitolo));
                cmb_Titolo_->setCurrentIndex(0);
            } else {
                mostraTesti(true);
                txt_Codice_->setText(dbg_Eseguiti_->Column(cCodice));
                txt_Titolo_->setText(dbg_Eseguiti_->Column(cTitolo));
            }
            riempiDallaRiga();
        }
    }
    if (modoNuovo()) {
        AbilitaCampi(true);
        mostraTesti(true);
        dtp_Data_->setDate(QDate::currentDate());
        platform::MostraTipo(cmb_Tipo_, QStringLiteral("Buy"));
        const store::Recordset& sistemi = dat_System_->Recordset();
        dbc_System_->setEditText(sistemi.Eof() ? QString() : sistemi.Text(QStringLiteral("Cod")));
        txt_Codice_->clear();
        txt_Titolo_->clear();
        txtQta_->clear();
        txtPrezzo_->clear();
        const store::Recordset& errori = dat_Errore_->Recordset();
        dbc_Errore_->setEditText(errori.Eof() ? QString() : errori.Text(QStringLiteral("Cod")));
        txtPzoOttimale_->clear();
    }
    logicaTipo();
    logicaErrore();
    ControlloConferma();
}

void frmEseguiti::cmb_Tipo_Click() { logicaTipo(); }

void frmEseguiti::logicaTipo()
{
    rsPortafoglio_ = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM Portafoglio "));
    if (rsPortafoglio_.RecordCount() == 0) {
        if (modoNuovo()) {
            if (cmb_Tipo_->count() >= 2)
                cmb_Tipo_->removeItem(1); // nothing to sell
        } else {
            cmb_Codice_->clear();
            cmb_Titolo_->clear();
            cmb_Codice_->addItem(dbg_Eseguiti_->Column(cCodice));
            cmb_Titolo_->addItem(dbg_Eseguiti_->Column(cTitolo));
            cmb_Codice_->setCurrentIndex(0);
            cmb_Titolo_->setCurrentIndex(0);
        }
        return;
    }
    if (cmb_Tipo_->count() == 1)
        cmb_Tipo_->addItem(QStringLiteral("Sell"));
    if (modoElimina())
        return;
    if (cmb_Tipo_->currentText() == QLatin1String("Sell")) {
        mostraTesti(false);
        rsPortafoglio_ = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM Portafoglio "));
        if (modoNuovo()) {
            riempiPosizioni(false);
            const store::Recordset& sistemi = dat_System_->Recordset();
            dbc_System_->setEditText(sistemi.Eof() ? QString() : sistemi.Text(QStringLiteral("Cod")));
            sincronizzaQuantita();
        } else if (modoModifica()) {
            riempiPosizioni(true);
            dbc_System_->setEditText(dbg_Eseguiti_->Column(cSistema));
        }
    } else {
        mostraTesti(true);
        txt_Codice_->setEnabled(true);
        txt_Titolo_->setEnabled(true);
        if (modoNuovo()) {
            txt_Codice_->clear();
            txt_Titolo_->clear();
            txtQta_->clear();
            txtPrezzo_->clear();
        } else {
            dbc_System_->setEditText(dbg_Eseguiti_->Column(cSistema));
            txt_Codice_->setText(dbg_Eseguiti_->Column(cCodice));
            txt_Titolo_->setText(dbg_Eseguiti_->Column(cTitolo));
            txtQta_->setText(dbg_Eseguiti_->Column(cQta));
            txtPrezzo_->setText(dbg_Eseguiti_->Column(cPrezzo));
        }
    }
    ControlloConferma();
}

void frmEseguiti::riempiPosizioni(bool rigaPrima)
{
    // In modify mode the edited trade's own code stays first, even if its position is closed.
    cmb_Codice_->clear();
    cmb_Titolo_->clear();
    if (rigaPrima) {
        cmb_Codice_->addItem(dbg_Eseguiti_->Column(cCodice));
        cmb_Titolo_->addItem(dbg_Eseguiti_->Column(cTitolo));
    }
    while (!rsPortafoglio_.Eof()) {
        const QString cod = rsPortafoglio_.Text(QStringLiteral("Cod"));
        if (!rigaPrima || cod != cmb_Codice_->itemText(0)) {
            cmb_Codice_->addItem(cod);
            cmb_Titolo_->addItem(rsPortafoglio_.Text(QStringLiteral("Titolo")));
        }
        rsPortafoglio_.MoveNext();
    }
    cmb_Codice_->setCurrentIndex(0);
    cmb_Titolo_->setCurrentIndex(0);
}

void frmEseguiti::sincronizzaQuantita()
{
    if (!modoNuovo())
        return;
    rsPortafoglio_ = dbExe.OpenRecordset("SELECT * FROM Portafoglio WHERE Cod = '" + cmb_Codice_->currentText() + "'");
    txtQta_->setText(rsPortafoglio_.Text(QStringLiteral("qta")));
}

void frmEseguiti::cmb_Codice_Click()
{
    if (cmb_Titolo_->count() >= 1)
        cmb_Titolo_->setCurrentIndex(cmb_Codice_->currentIndex());
    sincronizzaQuantita();
    ControlloConferma();
}

void frmEseguiti::cmb_Titolo_Click()
{
    if (cmb_Codice_->count() >= 1)
        cmb_Codice_->setCurrentIndex(cmb_Titolo_->currentIndex());
    sincronizzaQuantita();
    ControlloConferma();
}

void frmEseguiti::dbc_Errore_Click() { logicaErrore(); }

void frmEseguiti::logicaErrore()
{
    const bool errore = dbc_Errore_->currentText() != QLatin1String("NE");
    txtPzoOttimale_->setEnabled(errore);
    QPalette p = txtPzoOttimale_->palette();
    p.setColor(QPalette::Base, errore ? palette().color(QPalette::Base) : palette().color(QPalette::Button));
    txtPzoOttimale_->setPalette(p);
    lab_PzoOttimale_->setEnabled(errore);
    if (!errore)
        txtPzoOttimale_->clear();
}

QString frmEseguiti::codice() const { return txt_Codice_->isVisibleTo(this) ? txt_Codice_->text() : cmb_Codice_->currentText(); }
QString frmEseguiti::titolo() const { return txt_Codice_->isVisibleTo(this) ? txt_Titolo_->text() : cmb_Titolo_->currentText(); }

void frmEseguiti::ControlloConferma()
{
    if (modoElimina())
        return;
    const QString prezzo = txtPrezzo_->text();
    const QString qta = txtQta_->text();
    cmd_Ok_->setEnabled(!codice().isEmpty() && !titolo().isEmpty() && !prezzo.isEmpty() && prezzo != QLatin1String("0")
                        && !qta.isEmpty() && qta != QLatin1String("0") && !dbc_System_->currentText().isEmpty());
}

void frmEseguiti::aggiornaImporto(bool daPrezzo)
{
    ControlloConferma();
    const QString prezzo = txtPrezzo_->text();
    const QString qta = txtQta_->text();
    if (daPrezzo) {
        if (qta.isEmpty())
            return;
        const bool numero = !prezzo.isEmpty() && prezzo != QLatin1String(",");
        lab_Importo_->setText(numero ? num::Text(ledger::Numero(prezzo) * ledger::Numero(qta)) : QStringLiteral("0"));
    } else {
        if (prezzo.isEmpty())
            return;
        lab_Importo_->setText(!qta.isEmpty() ? num::Text(ledger::Numero(prezzo) * ledger::Numero(qta)) : QStringLiteral("0"));
    }
}

void frmEseguiti::txtPrezzo_Change() { aggiornaImporto(true); }
void frmEseguiti::txtQta_Change() { aggiornaImporto(false); }

void frmEseguiti::annulla(const QString& head)
{
    ledger::RipristinaEseguiti(dbExe);
    platform::MsgBox(head + Module1::sErroreSequenza, platform::Buttons::Ok, platform::Icon::Exclamation, this);
    Module1::sErroreSequenza.clear();
}

namespace {
void controlloSequenza()
{
    const QString errore = ledger::ControlloSequenza(dbExe);
    if (!errore.isEmpty())
        Module1::sErroreSequenza = errore;
}
} // namespace

void frmEseguiti::eseguiEliminazione()
{
    platform::DataSource* dat = dat_Eseguiti_;
    store::Recordset& griglia = dat->Recordset();
    if (griglia.RecordCount() > 0 && griglia.AbsolutePosition() >= 0) {
        const QString id = griglia.Text(QStringLiteral("ID"));
        rsEseguiti_ = dbExe.OpenRecordset("SELECT ID  FROM Eseguiti WHERE ID=" + id);
        rsEseguiti_.Delete();
        dPosizioneRiga_ = griglia.AbsolutePosition();
        controlloSequenza();
        if (!Module1::sErroreSequenza.isEmpty())
            annulla(QStringLiteral("Impossibile eliminare "));
        else
            dat->Delete();
        if (griglia.RecordCount() > 0) {
            if (dPosizioneRiga_ + 1 > griglia.RecordCount()) {
                dat->MovePrevious();
                dPosizioneRiga_ -= 1;
            } else if (!griglia.Eof()) {
                dat->MoveNext();
            }
        }
    }
    if (griglia.RecordCount() < 1)
        cmd_Ok_->setEnabled(false);
}

void frmEseguiti::eseguiNuovo()
{
    auto campi = [this]() {
        return ledger::CampiEseguito{dtp_Data_->date(), cmb_Tipo_->currentText(), dbc_System_->currentText(),
                                     codice(), titolo(), txtQta_->text(), txtPrezzo_->text(), txtPzoOttimale_->text(),
                                     dbc_Errore_->currentText()};
    };
    const bool vuota = rsEseguiti_.RecordCount() == 0;
    dbExe.Execute(ledger::InsertEseguito(QStringLiteral("Eseguiti"), campi()));
    QString id;
    if (!vuota) {
        // The snapshot doesn't see the new row: read it explicitly, the highest record number.
        id = dbExe.OpenRecordset(QStringLiteral("SELECT Max(ID) AS ID FROM Eseguiti")).Text(QStringLiteral("ID"));
    }
    controlloSequenza();
    if (!Module1::sErroreSequenza.isEmpty()) {
        annulla(QStringLiteral("Impossibile inserire : "));
        return;
    }
    dbExe.Execute(ledger::InsertEseguito(QStringLiteral("EseguitiTemp"), campi()));
    dat_Eseguiti_->Refresh();
    dat_Eseguiti_->FindFirst("ID = " + (id.isEmpty() ? QStringLiteral("0") : id));
    dPosizioneRiga_ = dat_Eseguiti_->Recordset().AbsolutePosition();
}

void frmEseguiti::eseguiModifica()
{
    const ledger::CampiEseguito c{dtp_Data_->date(), cmb_Tipo_->currentText(), dbc_System_->currentText(), codice(),
                                  titolo(), txtQta_->text(), txtPrezzo_->text(), txtPzoOttimale_->text(),
                                  dbc_Errore_->currentText()};
    store::Recordset& griglia = dat_Eseguiti_->Recordset();
    const long long id = griglia.Field(QStringLiteral("ID")).toLongLong();
    // Compared with the first row of the table, whichever row is edited.
    if (c.titolo != rsEseguiti_.Text(QStringLiteral("Titolo")))
        dbExe.Execute("UPDATE Eseguiti SET Titolo='" + c.titolo + "' WHERE Cod ='" + c.codice + "'");
    dbExe.Execute(ledger::UpdateEseguito(c, id));
    controlloSequenza();
    if (!Module1::sErroreSequenza.isEmpty()) {
        annulla(QStringLiteral("Impossibile modificare "));
        return;
    }
    griglia.Edit();
    griglia.SetField(QStringLiteral("Data"), c.data);
    griglia.SetField(QStringLiteral("Tipo"), c.tipo);
    griglia.SetField(QStringLiteral("System"), c.sistema);
    griglia.SetField(QStringLiteral("Cod"), c.codice);
    griglia.SetField(QStringLiteral("Titolo"), cmb_Titolo_->currentText());
    griglia.SetField(QStringLiteral("qta"), txtQta_->text());
    griglia.SetField(QStringLiteral("Prezzo"), txtPrezzo_->text());
    griglia.SetField(QStringLiteral("Importo"), ledger::Importo(c));
    griglia.SetField(QStringLiteral("Errore"), c.errore);
    griglia.SetField(QStringLiteral("PrezzoOttimale"), txtPzoOttimale_->text());
    griglia.Update();
    dPosizioneRiga_ = griglia.AbsolutePosition();
    dat_Eseguiti_->Refresh();
}

void frmEseguiti::cmd_Ok_Click()
{
    // The change and the replay after it stand or fall together: a refused statement, the
    // journal's limit of codes or a trade the replay can't take leaves the file as before the click.
    store::Transaction click(dbExe);
    {
        Guard g(inLogica_);
        if (copiaRidotta_) {
            // The grid's Delete took rows out of the working copy alone; whole again, it is the undo record.
            dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
            dbExe.Execute(QStringLiteral("INSERT INTO EseguitiTemp SELECT * FROM Eseguiti"));
        }
        rsEseguitiTemp_ = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM EseguitiTemp "));
        rsEseguiti_ = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM Eseguiti "));
        if (modoElimina())
            eseguiEliminazione();
        if (txtPzoOttimale_->text().isEmpty())
            txtPzoOttimale_->setText(txtPrezzo_->text());
        if (modoNuovo())
            eseguiNuovo();
        if (modoModifica())
            eseguiModifica();
    }
    MDIForm1::Instance()->ControlloMenu();
    click.Commit();
}
