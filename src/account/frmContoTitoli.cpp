#include "account/frmContoTitoli.h"

#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/Chart.h"
#include "platform/ChartStyle.h"
#include "platform/DataSource.h"
#include "platform/Forms.h"
#include "platform/ListaTipi.h"
#include "platform/MessageBox.h"
#include "platform/Numbers.h"

#include <QComboBox>
#include <QDateEdit>
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

enum Colonna { cData, cTipo, cImporto, cDescrizione };

const QList<platform::GridColumn> kColonne = {
    {"Data", "Data"}, {"Tipo", "Tipo"}, {"Importo", "Importo"}, {"Descrizione", "Descrizione"}};

// Chart columns: value label and colour.
const QStringList kEtichette = {"Dividendi", "Versamento", "Prelievo", "CostiGestione", "saldoOperazioni"};
const QVector<QColor> kColori = {QColor(0, 160, 0), QColor(40, 100, 200), QColor(200, 40, 40), QColor(230, 130, 40),
                                 QColor(110, 80, 170)};

// The classic scroll-bar colour: an empty description shows greyed when deleting.
const QColor kColoreScrollBar(200, 200, 200);

bool portafoglioAperto() { return !Module1::sFilePortafoglio.isEmpty(); }

} // namespace

frmContoTitoli* frmContoTitoli::Instance() { return platform::Form<frmContoTitoli>(); }

frmContoTitoli::frmContoTitoli()
{
    setObjectName(QStringLiteral("frmContoTitoli"));
    setWindowTitle(QStringLiteral("Gestione conto titoli"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/15.svg")));
    crea();
    Colore();
    Main();
}

void frmContoTitoli::crea()
{
    frm_Modo_ = new QGroupBox(QStringLiteral("Operazione"), this);
    auto* modoLayout = new QHBoxLayout(frm_Modo_);
    const char* captions[4] = {"Nuovo", "Modifica", nullptr, "Elimina"};
    for (int i : {0, 1, 3}) {
        Option1_[i] = new QRadioButton(QString::fromLatin1(captions[i]), frm_Modo_);
        Option1_[i]->setObjectName(QStringLiteral("Option1(%1)").arg(i));
        modoLayout->addWidget(Option1_[i]);
        connect(Option1_[i], &QRadioButton::clicked, this, &frmContoTitoli::Option1_Click);
    }
    modoLayout->addStretch();
    Option1_[0]->setChecked(true);

    frm_Movimento_ = new QGroupBox(QStringLiteral("Movimento"), this);
    auto* campiLayout = new QGridLayout(frm_Movimento_);
    dtp_Data_ = new QDateEdit(QDate::currentDate(), frm_Movimento_);
    dtp_Data_->setObjectName(QStringLiteral("dtp_Data"));
    dtp_Data_->setCalendarPopup(true);
    dtp_Data_->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    dtp_Data_->setMinimumWidth(115);
    cmb_Tipo_ = new QComboBox(frm_Movimento_);
    cmb_Tipo_->setObjectName(QStringLiteral("cmb_Tipo"));
    cmb_Tipo_->addItems(account::TipiMovimento());
    platform::ListaTipi(cmb_Tipo_);
    txtImporto_ = new QLineEdit(frm_Movimento_);
    txtImporto_->setObjectName(QStringLiteral("txtImporto"));
    txtImporto_->setAlignment(Qt::AlignRight);
    txtImporto_->setMaximumWidth(120);
    txt_Descrizione_ = new QLineEdit(frm_Movimento_);
    txt_Descrizione_->setObjectName(QStringLiteral("txt_Descrizione"));
    txt_Descrizione_->setMinimumWidth(140);
    cmd_Ok_ = new QPushButton(QStringLiteral("Conferma"), frm_Movimento_);
    cmd_Ok_->setObjectName(QStringLiteral("cmd_Ok"));
    cmd_Ok_->setDefault(true);
    cmd_Ok_->setMinimumWidth(100);
    const QStringList etichette = {"Data", "Tipo", "Importo", "Descrizione"};
    const QList<QWidget*> campi = {dtp_Data_, cmb_Tipo_, txtImporto_, txt_Descrizione_};
    for (int i = 0; i < campi.size(); ++i) {
        auto* l = new QLabel(etichette[i], frm_Movimento_);
        l->setBuddy(campi[i]);
        campiLayout->addWidget(l, 0, i);
        campiLayout->addWidget(campi[i], 1, i);
    }
    campiLayout->addWidget(cmd_Ok_, 1, 4);
    campiLayout->setColumnStretch(3, 1);
    campiLayout->setHorizontalSpacing(10);

    lab_NessunPortafoglio_ = new QLabel(
        QStringLiteral("Nessun portafoglio aperto: apri o crea un portafoglio per registrare i movimenti."), this);
    lab_NessunPortafoglio_->setObjectName(QStringLiteral("lab_NessunPortafoglio"));

    dat_Conto_ = new platform::DataSource(this);
    dat_Conto_->setObjectName(QStringLiteral("dat_Conto"));
    DBGrid1_ = new platform::DataGrid(this);
    DBGrid1_->setObjectName(QStringLiteral("DBGrid1"));
    DBGrid1_->Bind(dat_Conto_, kColonne);
    DBGrid1_->setColumnWidth(cData, 90);
    DBGrid1_->setColumnWidth(cTipo, 130);
    DBGrid1_->setColumnWidth(cImporto, 90);
    DBGrid1_->setMinimumWidth(300);

    auto* grafico = new QWidget(this);
    auto* graficoLayout = new QVBoxLayout(grafico);
    graficoLayout->setContentsMargins(0, 0, 0, 0);
    msc_ContoTitoli_ = new platform::Chart(grafico);
    msc_ContoTitoli_->setObjectName(QStringLiteral("msc_ContoTitoli"));
    msc_ContoTitoli_->SetSeriesColors(kColori);
    msc_ContoTitoli_->setMinimumSize(280, 180);
    msc_ContoTitoli_->SetChartType(platform::Chart::Bar2D);
    msc_ContoTitoli_->SetRowCount(1);
    msc_ContoTitoli_->SetRow(1);
    msc_ContoTitoli_->SetRowLabel(QStringLiteral("Conto titoli"));
    frm_Grafici_ = new platform::ChartStyleSwitch({"Barre", "Barre 3D"}, {msc_ContoTitoli_}, grafico);
    // This window's switch is the control array Option2, without an index 1.
    frm_Grafici_->Button(0)->setObjectName(QStringLiteral("Option2(0)"));
    frm_Grafici_->Button(1)->setObjectName(QStringLiteral("Option2(2)"));
    frm_Grafici_->Button(0)->setChecked(true);
    graficoLayout->addWidget(msc_ContoTitoli_, 1);
    graficoLayout->addWidget(frm_Grafici_);

    auto* centro = new QHBoxLayout;
    centro->addWidget(DBGrid1_, 1);
    centro->addWidget(grafico, 1);

    lab_Saldo_ = new QLabel(this);
    lab_Saldo_->setObjectName(QStringLiteral("lab_Saldo"));
    lab_Saldo_->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    lab_Saldo_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lab_Saldo_->setMinimumWidth(140);
    QFont grassetto = lab_Saldo_->font();
    grassetto.setBold(true);
    lab_Saldo_->setFont(grassetto);
    Command1_ = new QPushButton(QStringLiteral("Esci"), this);
    Command1_->setObjectName(QStringLiteral("Command1"));
    Command1_->setMinimumWidth(100);
    auto* piede = new QHBoxLayout;
    piede->addWidget(new QLabel(QStringLiteral("Saldo conto titoli:"), this));
    piede->addWidget(lab_Saldo_);
    piede->addStretch();
    piede->addWidget(Command1_);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frm_Modo_);
    layout->addWidget(frm_Movimento_);
    layout->addWidget(lab_NessunPortafoglio_);
    layout->addLayout(centro, 1);
    layout->addLayout(piede);
    // Smaller than what the fields and the grid need, the window would only cut them.
    layout->setSizeConstraint(QLayout::SetMinimumSize);
    resize(1040, 560);

    Module1::FiltroNumeri(txtImporto_, 5, 2);
    Module1::FiltroCaratteri(txt_Descrizione_);

    connect(cmd_Ok_, &QPushButton::clicked, this, &frmContoTitoli::cmd_Ok_Click);
    connect(Command1_, &QPushButton::clicked, this, [this]() { platform::Forms::Unload(objectName()); });
    connect(DBGrid1_, &platform::DataGrid::RowColChange, this, &frmContoTitoli::DBGrid1_RowColChange);
    connect(txtImporto_, &QLineEdit::textChanged, this, &frmContoTitoli::txtImporto_Change);
}

void frmContoTitoli::Colore() { Module1::ApplicaColori(this); }

bool frmContoTitoli::modoNuovo() const { return Option1_[0]->isChecked(); }
bool frmContoTitoli::modoModifica() const { return Option1_[1]->isChecked(); }
bool frmContoTitoli::modoElimina() const { return Option1_[3]->isChecked(); }

void frmContoTitoli::Main()
{
    // Without a portfolio there is nothing to read or write: an empty account, the entry closed.
    const bool aperto = portafoglioAperto();
    frm_Modo_->setEnabled(aperto);
    frm_Movimento_->setEnabled(aperto);
    lab_NessunPortafoglio_->setVisible(!aperto);
    if (aperto) {
        dat_Conto_->SetSource(&dbExe, QStringLiteral("SELECT * FROM Conto ORDER BY Data"));
        dat_Conto_->Refresh();
        if (dat_Conto_->Recordset().RecordCount() > 0) {
            Option1_[1]->setEnabled(true);
            Option1_[3]->setEnabled(true);
        }
    }
    cmb_Tipo_->setCurrentIndex(0);
    CalcolaSaldo();
}

void frmContoTitoli::scegliNuovo()
{
    const bool era = Option1_[0]->isChecked();
    Option1_[0]->setChecked(true);
    // Selecting the option runs its click, as a click would.
    if (!era)
        logicaModo();
}

void frmContoTitoli::vaiAllaRiga(int n)
{
    // A position past the last row (another portfolio has fewer movements) stays on the last.
    dat_Conto_->MoveFirst();
    dat_Conto_->Move(std::min(n, dat_Conto_->Recordset().RecordCount() - 1));
}

void frmContoTitoli::CalcolaSaldo()
{
    const store::Recordset settaggi = dbSet.OpenRecordset(QStringLiteral("SELECT *  FROM Settaggi"));
    store::Recordset& conto = dat_Conto_->Recordset();
    account::Movimenti m;
    if (conto.RecordCount() == 0) {
        cmd_Ok_->setEnabled(false);
        scegliNuovo();
        Option1_[1]->setEnabled(false);
        Option1_[3]->setEnabled(false);
    } else {
        m = account::SommaMovimenti(conto, [this]() {
            platform::MsgBox(account::TipoSconosciuto(), platform::Buttons::Ok, platform::Icon::None, this);
        });
        Option1_[1]->setEnabled(true);
        Option1_[3]->setEnabled(true);
        vaiAllaRiga(nPosizioneConto_);
    }
    // The open positions don't enter the balance.
    const num::Figure utile = Module1::UtileNetto();
    lab_Saldo_->setText(num::Text(num::ValueOf(utile) + m.saldo + settaggi.Number(QStringLiteral("CapitaleIniziale"))));

    msc_ContoTitoli_->SetColumnCount(5);
    msc_ContoTitoli_->SetRowCount(1);
    msc_ContoTitoli_->SetRow(1);
    const QString valori[5] = {num::Text(m.dividendi), num::Text(m.versamenti), num::Text(m.prelievi), num::Text(m.costi),
                               num::Text(utile)};
    for (int c = 1; c <= 5; ++c) {
        msc_ContoTitoli_->SetColumn(c);
        msc_ContoTitoli_->SetData(valori[c - 1]);
        msc_ContoTitoli_->SetColumnLabel(kEtichette[c - 1]);
    }
}

void frmContoTitoli::DBGrid1_RowColChange() { logicaModo(); }
void frmContoTitoli::Option1_Click() { logicaModo(); }

void frmContoTitoli::sfondoDescrizione(const QColor& color)
{
    QPalette p = txt_Descrizione_->palette();
    p.setColor(QPalette::Base, color);
    txt_Descrizione_->setPalette(p);
}

void frmContoTitoli::riempiDallaRiga()
{
    const QDate data = num::ParseShortDate(DBGrid1_->Column(cData));
    if (data.isValid())
        dtp_Data_->setDate(data);
    platform::MostraTipo(cmb_Tipo_, DBGrid1_->Column(cTipo));
    txtImporto_->setText(DBGrid1_->Column(cImporto));
    txt_Descrizione_->setText(DBGrid1_->Column(cDescrizione));
}

void frmContoTitoli::logicaModo()
{
    const QColor finestra = palette().color(QPalette::Base);
    const QColor pulsante = palette().color(QPalette::Button);
    if (modoElimina()) {
        for (QWidget* w : std::initializer_list<QWidget*>{dtp_Data_, cmb_Tipo_, txtImporto_, txt_Descrizione_})
            w->setEnabled(false);
        cmd_Ok_->setEnabled(true);
        sfondoDescrizione(DBGrid1_->Column(cDescrizione) == QLatin1String(".") ? kColoreScrollBar : finestra);
        riempiDallaRiga();
    }
    if (modoModifica()) {
        for (QWidget* w : std::initializer_list<QWidget*>{dtp_Data_, cmb_Tipo_, txtImporto_, txt_Descrizione_})
            w->setEnabled(true);
        sfondoDescrizione(finestra);
        riempiDallaRiga();
    }
    if (modoNuovo()) {
        for (QWidget* w : std::initializer_list<QWidget*>{dtp_Data_, cmb_Tipo_, txtImporto_})
            w->setEnabled(true);
        dtp_Data_->setDate(QDate::currentDate());
        cmb_Tipo_->setCurrentIndex(0);
        txtImporto_->clear();
        txtImporto_Change(); // also when it was empty already
        // Until an amount is typed there is nothing to describe.
        txt_Descrizione_->setText(QStringLiteral("."));
        txt_Descrizione_->setEnabled(false);
        sfondoDescrizione(pulsante);
    }
}

void frmContoTitoli::txtImporto_Change()
{
    if (modoElimina())
        return;
    // Compared with a point, which the key filter never lets through: a lone "," counts as an amount.
    const QString testo = txtImporto_->text();
    const bool importo = !testo.isEmpty() && testo != QLatin1String(".");
    cmd_Ok_->setEnabled(importo);
    txt_Descrizione_->setEnabled(importo);
    sfondoDescrizione(palette().color(importo ? QPalette::Base : QPalette::Button));
}

account::CampiMovimento frmContoTitoli::campi() const
{
    return {dtp_Data_->date(), cmb_Tipo_->currentText(), txtImporto_->text(), txt_Descrizione_->text()};
}

void frmContoTitoli::eseguiEliminazione()
{
    store::Recordset& griglia = dat_Conto_->Recordset();
    // Only a selected row can be deleted (after the first movement the grid may stand before its first row).
    if (griglia.RecordCount() == 0 || griglia.AbsolutePosition() < 0)
        return;
    const QString id = griglia.Text(QStringLiteral("ID"));
    (void)dbExe.OpenRecordset("SELECT ID  FROM Conto WHERE ID=" + id);
    nPosizioneConto_ = num::ToInt16(griglia.AbsolutePosition());
    dat_Conto_->Delete();
    const int righe = griglia.RecordCount();
    if (nPosizioneConto_ + 1 <= righe) {
        dat_Conto_->MoveNext();
    } else {
        if (righe > 0)
            dat_Conto_->MovePrevious();
        nPosizioneConto_ = num::ToInt16(nPosizioneConto_ - 1);
    }
    if (righe <= 0)
        cmd_Ok_->setEnabled(false);
}

void frmContoTitoli::eseguiNuovo(store::Recordset& conto)
{
    if (txt_Descrizione_->text().isEmpty())
        txt_Descrizione_->setText(QStringLiteral("."));
    dbExe.Execute(account::InsertMovimento(campi()));
    // The last row by date, not necessarily the new one: the grid returns there.
    long long id = 0;
    if (conto.RecordCount() > 0) {
        conto.MoveLast();
        id = conto.Field(QStringLiteral("ID")).toLongLong();
    }
    dat_Conto_->Refresh();
    dat_Conto_->FindFirst("ID = " + QString::number(id));
    nPosizioneConto_ = num::ToInt16(dat_Conto_->Recordset().AbsolutePosition());
}

void frmContoTitoli::eseguiModifica()
{
    store::Recordset& griglia = dat_Conto_->Recordset();
    if (griglia.AbsolutePosition() < 0)
        return;
    const long long id = griglia.Field(QStringLiteral("ID")).toLongLong();
    nPosizioneConto_ = num::ToInt16(griglia.AbsolutePosition());
    if (txt_Descrizione_->text().isEmpty())
        txt_Descrizione_->setText(QStringLiteral("."));
    dbExe.Execute(account::UpdateMovimento(campi(), id));
    dat_Conto_->Refresh();
    dat_Conto_->Move(nPosizioneConto_);
}

void frmContoTitoli::cmd_Ok_Click()
{
    store::Recordset conto = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM Conto ORDER BY Data"));
    if (modoElimina())
        eseguiEliminazione();
    if (modoNuovo())
        eseguiNuovo(conto);
    if (modoModifica())
        eseguiModifica();
    CalcolaSaldo();
    MDIForm1::Instance()->ControlloMenu();
}
