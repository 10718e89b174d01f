#include "ledger/Importa.h"

#include "account/Conto.h"
#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "ledger/FoglioEseguiti.h"
#include "ledger/Import.h"
#include "ledger/Sequence.h"
#include "ledger/frmImportazioneGuidata.h"
#include "platform/DataSource.h"
#include "platform/FileLists.h"
#include "platform/Forms.h"
#include "platform/MessageBox.h"
#include "platform/Numbers.h"
#include "platform/Workbook.h"

#include <QComboBox>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

using Module1::dbExe;

namespace {

const QStringList kFormati = {
    QStringLiteral("Real Tick III               .csv    "),
    QStringLiteral("Quorvel Op. chiuse   .xls "),
    QStringLiteral("Quorvel Eseguiti        .xls"),
    QStringLiteral("Importazione guidata .xls"),
};

// The folder the window showed last in this run, where it opens next time.
QString& ultimaCartella()
{
    static QString cartella = QDir::homePath();
    return cartella;
}

// The names the probe writes under the heading.
const QList<QPair<const char*, QString>> kIntestazioni = {
    {"B2", QStringLiteral("System")},      {"C2", QStringLiteral("Cod")},         {"D2", QStringLiteral("Titolo")},
    {"E2", QStringLiteral("PzoCarico")},   {"F2", QStringLiteral("Quantità")},    {"G2", QStringLiteral("Prezzo")},
    {"H2", QStringLiteral("Commissioni")}, {"I2", QStringLiteral("GP")},          {"J2", QStringLiteral("GPPercentuale")},
    {"K2", QStringLiteral("Errore")},      {"L2", QStringLiteral("PzoOttimale")},
};

// A click on the format's text opens its list, as on a list that can't be typed into.
class ApriLista final : public QObject {
public:
    explicit ApriLista(QComboBox* combo) : QObject(combo), combo_(combo) {}
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonPress && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
            combo_->showPopup();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QComboBox* combo_;
};

} // namespace

Importa* Importa::Instance() { return platform::Form<Importa>(); }

Importa::Importa()
{
    setObjectName(QStringLiteral("Importa"));
    setWindowTitle(QStringLiteral("Importa dati"));
    setModal(true);
    crea();

    guidata_ = &frmImportazioneGuidata::Esegui;

    // Load, in its order.
    File1_->SetPattern(QStringLiteral("*.csv"));
    RiempiListaFile();
    ProgressBar1_->setVisible(false);
}

void Importa::crea()
{
    Combo1_ = new QComboBox(this);
    Combo1_->setObjectName(QStringLiteral("Combo1"));
    Combo1_->setEditable(true);
    Combo1_->addItems(kFormati);
    Combo1_->setCurrentIndex(-1);
    Combo1_->setEditText(QStringLiteral("Real Tick III .cvs"));
    Combo1_->lineEdit()->setReadOnly(true);
    Combo1_->lineEdit()->installEventFilter(new ApriLista(Combo1_));
    Combo1_->setMinimumWidth(260);
    connect(Combo1_, &QComboBox::activated, this, &Importa::Combo1_Click);

    Drive1_ = new platform::DriveList(this);
    Drive1_->setObjectName(QStringLiteral("Drive1"));
    Dir1_ = new platform::DirList(this);
    Dir1_->setObjectName(QStringLiteral("Dir1"));
    File1_ = new platform::FileList(this);
    File1_->setObjectName(QStringLiteral("File1"));
    // It only feeds the list of ticks.
    File1_->setVisible(false);
    const QString cartella = ultimaCartella();
    Dir1_->SetPath(cartella);
    File1_->SetPath(Dir1_->Path());
    Drive1_->ShowDriveOf(Dir1_->Path());
    connect(Drive1_, &platform::DriveList::Change, this, &Importa::Drive1_Change);
    connect(Dir1_, &platform::DirList::Change, this, &Importa::Dir1_Change);

    List1_ = new platform::CheckList(this);
    List1_->setObjectName(QStringLiteral("List1"));
    Dir1_->setMinimumHeight(130);
    List1_->setMinimumHeight(130);
    connect(List1_, &platform::CheckList::Click, this, &Importa::List1_Click);

    lab_FileSelezionati_ = new QLabel(QStringLiteral("0"), this);
    lab_FileSelezionati_->setObjectName(QStringLiteral("lab_FileSelezionati"));
    lab_NumeroEseguiti_ = new QLabel(QStringLiteral("0"), this);
    lab_NumeroEseguiti_->setObjectName(QStringLiteral("lab_NumeroEseguiti"));
    for (QLabel* l : {lab_FileSelezionati_, lab_NumeroEseguiti_}) {
        l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        l->setMinimumWidth(56);
    }

    Data1_ = new platform::DataSource(this);
    Data1_->setObjectName(QStringLiteral("Data1"));
    modello_ = new platform::EditableRecordsetModel(
        Data1_, {{"Data", "Data"}, {"Tipo", "Tipo"}, {"System", "System"}, {"Cod", "Cod"}, {"Titolo", "Titolo"},
                 {"Qta", "Qta"}, {"Prezzo", "Prezzo"}},
        this);
    DBGrid1_ = new QTableView(this);
    DBGrid1_->setObjectName(QStringLiteral("DBGrid1"));
    DBGrid1_->setModel(modello_);
    DBGrid1_->setAlternatingRowColors(true);
    DBGrid1_->setSelectionBehavior(QAbstractItemView::SelectItems);
    DBGrid1_->verticalHeader()->setDefaultSectionSize(DBGrid1_->fontMetrics().height() + 8);
    // Seven short columns: they share the width.
    DBGrid1_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    DBGrid1_->setMinimumHeight(170);
    connect(modello_, &platform::EditableRecordsetModel::EditRefused, this, [this](const QString& value) {
        platform::MsgBox("Valore non valido: " + value, platform::Buttons::Ok, platform::Icon::Exclamation, this);
    });

    ProgressBar1_ = new QProgressBar(this);
    ProgressBar1_->setObjectName(QStringLiteral("ProgressBar1"));
    ProgressBar1_->setRange(0, 100);
    ProgressBar1_->setValue(0);
    ProgressBar1_->setTextVisible(false);
    cmd_Ok_ = new QPushButton(QStringLiteral("OK"), this);
    cmd_Ok_->setObjectName(QStringLiteral("cmd_Ok"));
    cmd_Annulla_ = new QPushButton(QStringLiteral("Annulla"), this);
    cmd_Annulla_->setObjectName(QStringLiteral("cmd_Annulla"));
    for (QPushButton* b : {cmd_Ok_, cmd_Annulla_}) {
        b->setMinimumWidth(100);
        b->setAutoDefault(false);
    }
    connect(cmd_Ok_, &QPushButton::clicked, this, &Importa::cmd_Ok_Click);
    connect(cmd_Annulla_, &QPushButton::clicked, this, &Importa::cmd_Annulla_Click);

    // Format and folder on the left, the files to tick on the right.
    auto* formato = new QHBoxLayout;
    formato->addWidget(new QLabel(QStringLiteral("Formato :"), this));
    formato->addWidget(Combo1_);
    formato->addStretch();

    auto* cartelle = new QGroupBox(QStringLiteral("Cartella"), this);
    auto* c = new QVBoxLayout(cartelle);
    c->addWidget(Drive1_);
    c->addWidget(Dir1_, 1);
    c->addWidget(File1_);

    auto* file = new QGroupBox(QStringLiteral("File"), this);
    auto* f = new QVBoxLayout(file);
    f->addWidget(List1_, 1);
    auto* conta = new QHBoxLayout;
    conta->addWidget(new QLabel(QStringLiteral("File selezionati da importare"), this));
    conta->addStretch();
    conta->addWidget(lab_FileSelezionati_);
    f->addLayout(conta);

    auto* sopra = new QHBoxLayout;
    sopra->addWidget(cartelle, 2);
    sopra->addWidget(file, 3);

    auto* anteprima = new QGroupBox(QStringLiteral("Anteprima contenuto"), this);
    auto* a = new QVBoxLayout(anteprima);
    a->addWidget(DBGrid1_, 1);
    auto* eseguiti = new QHBoxLayout;
    eseguiti->addStretch();
    eseguiti->addWidget(new QLabel(QStringLiteral("eseguiti :"), this));
    eseguiti->addWidget(lab_NumeroEseguiti_);
    a->addLayout(eseguiti);

    auto* piede = new QHBoxLayout;
    piede->addWidget(ProgressBar1_, 1);
    piede->addStretch();
    piede->addWidget(cmd_Ok_);
    piede->addWidget(cmd_Annulla_);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(formato);
    layout->addLayout(sopra, 2);
    layout->addWidget(anteprima, 3);
    layout->addLayout(piede);
    resize(900, 640);
}

void Importa::RiempiListaFile()
{
    if (File1_->ListCount() == 0)
        return;
    for (int i = 0; i < File1_->ListCount(); ++i)
        List1_->AddItem(File1_->List(i));
}

QString Importa::percorso(int item) const { return QDir(File1_->Path()).filePath(List1_->item(item)->text()); }

void Importa::Combo1_Click(int index)
{
    if (index == 0)
        File1_->SetPattern(QStringLiteral("*.csv"));
    else if (index == 1 || index == 2)
        File1_->SetPattern(QStringLiteral("*.xlsx"));
    else if (index == 3)
        File1_->SetPattern(QStringLiteral("*.csv;*.txt;*.xlsx"));
    guidate_.clear();
    List1_->clear();
    RiempiListaFile();
    // OK of these formats brings in what the preview holds: it holds nothing of another format.
    if (index >= 2 || formatoPrecedente_ >= 2) {
        dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
        lab_FileSelezionati_->setText(QStringLiteral("0"));
        anteprima();
    }
    formatoPrecedente_ = index;
}

void Importa::Drive1_Change() { Dir1_->SetPath(Drive1_->Drive()); }

void Importa::Dir1_Change()
{
    ultimaCartella() = Dir1_->Path();
    Drive1_->ShowDriveOf(Dir1_->Path());
    File1_->SetPath(Dir1_->Path());
    guidate_.clear();
    List1_->clear();
    RiempiListaFile();
}

void Importa::LeggiRealTick(const QString& path)
{
    if (!ledger::LeggiRealTick(dbExe, path))
        platform::MsgBox(QString::fromLatin1(ledger::kRealTickNonValido), platform::Buttons::Ok, platform::Icon::None, this);
}

void Importa::ProbaFoglio(const QString& path)
{
    platform::Workbook foglio(path);
    platform::MsgBox(platform::Workbook::Text(foglio.Cell(QStringLiteral("A2"))), platform::Buttons::Ok,
                     platform::Icon::None, this);
    for (const auto& [cella, testo] : kIntestazioni)
        foglio.SetCell(QString::fromLatin1(cella), testo);
}

QList<ledger::EseguitoImportato> Importa::LeggiFoglioEseguiti(const QString& path)
{
    try {
        return ledger::LeggiFoglioEseguiti(path);
    } catch (const std::exception& e) {
        // A file from outside: whatever stops it, the user reads why and nothing is staged.
        platform::MsgBox(QString::fromStdString(e.what()), platform::Buttons::Ok, platform::Icon::Exclamation, this);
        return {};
    }
}

void Importa::guidaNuoveSpunte()
{
    QHash<QString, ledger::Staging> spuntate;
    for (int i = 0; i < List1_->count(); ++i) {
        if (!List1_->Selected(i))
            continue;
        const QString path = percorso(i);
        if (guidate_.contains(path)) {
            spuntate.insert(path, guidate_.take(path));
            continue;
        }
        if (std::optional<ledger::Staging> s = guidata_(path, this)) {
            spuntate.insert(path, std::move(*s));
            continue;
        }
        // Cancelled or unreadable: the file stays out.
        guidando_ = true;
        List1_->item(i)->setCheckState(Qt::Unchecked);
        guidando_ = false;
    }
    // Unticked files are mapped afresh when ticked again.
    guidate_ = std::move(spuntate);
}

void Importa::anteprima()
{
    Data1_->SetSource(&dbExe, QStringLiteral("SELECT Data, Tipo ,System,")
                                  + QStringLiteral("Cod ,Titolo, Qta, Prezzo, Errore, PrezzoOttimale FROM EseguitiTemp"));
    Data1_->Refresh();
    lab_NumeroEseguiti_->setText(QString::number(Data1_->Recordset().RecordCount()));
}

void Importa::List1_Click()
{
    if (guidando_)
        return; // a tick the guided mapping takes back
    const int formato = Combo1_->currentIndex();
    if (formato == 3)
        guidaNuoveSpunte();
    lab_FileSelezionati_->setText(QString::number(List1_->SelCount()));
    dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
    QList<ledger::EseguitoImportato> eseguiti;
    for (int i = 0; i < List1_->count(); ++i) {
        if (!List1_->Selected(i))
            continue;
        if (formato <= 0)
            LeggiRealTick(percorso(i));
        else if (formato == 1)
            ProbaFoglio(percorso(i));
        else if (formato == 2)
            eseguiti += LeggiFoglioEseguiti(percorso(i));
        else if (formato == 3)
            eseguiti += guidate_.value(percorso(i)).eseguiti;
    }
    // Broker files are not named by their dates: the trades of all ticked files go in by date,
    // each file's own order kept within a day, so a buy in one file meets its sale in another.
    std::stable_sort(eseguiti.begin(), eseguiti.end(), [](const auto& a, const auto& b) { return a.data < b.data; });
    ledger::PreparaEseguiti(dbExe, eseguiti);
    anteprima();
}

void Importa::AvanzaBarra(std::int16_t& contatore)
{
    if (ProgressBar1_->maximum() <= contatore) {
        contatore = 0;
        ProgressBar1_->setValue(0);
    } else {
        contatore = num::ToInt16(contatore + 1.0);
        ProgressBar1_->setValue(contatore);
    }
    dipingiBarra();
}

void Importa::dipingiBarra()
{
    // The import holds the event loop: paint the bar now, once a percent (a paint a row
    // was most of the time of a large file).
    const int percento = ProgressBar1_->maximum() > 0 ? ProgressBar1_->value() * 100 / ProgressBar1_->maximum() : 0;
    if (percento != percentoDipinto_) {
        percentoDipinto_ = percento;
        ProgressBar1_->repaint();
    }
}

ledger::ImportaEseguiti Importa::importatore(std::int16_t& contatore, const std::function<bool(const QString&)>& domanda)
{
    ledger::ImportaEseguiti importa;
    importa.inizio = [this](int righe) {
        ProgressBar1_->setMaximum(righe);
        ProgressBar1_->setVisible(true);
    };
    importa.rigaInserita = [this, &contatore]() { AvanzaBarra(contatore); };
    importa.importareComunque = domanda;
    return importa;
}

void Importa::cmd_Ok_Click()
{
    const int formato = Combo1_->currentIndex();
    if (formato == 2 || formato == 3) {
        importaAnteprima();
        return;
    }
    // While its questions are open the window can't be closed.
    importando_ = true;
    // Whatever the format shows, the ticked files are read as day files, afresh.
    dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
    for (int i = 0; i < List1_->count(); ++i)
        if (List1_->Selected(i))
            LeggiRealTick(percorso(i));

    std::int16_t contatore = 0;
    ledger::ImportaEseguiti importa = importatore(contatore, [this](const QString& domanda) {
        return platform::MsgBox(domanda, platform::Buttons::YesNo, platform::Icon::Exclamation, this) == platform::Answer::Yes;
    });
    // The import and the replay after it stand or fall together: a replay that fails on an
    // imported row would otherwise fail again at every opening of the portfolio.
    store::Transaction tutto(dbExe);
    const int righe = importa.Esegui(dbExe);
    importando_ = false;
    if (righe == 0) {
        nienteDaImportare();
        return;
    }
    dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
    chiusa_ = true;
    MDIForm1::Instance()->ControlloMenu();
    tutto.Commit();
    accept();
}

void Importa::nienteDaImportare()
{
    platform::MsgBox(QStringLiteral("Non ci sono eseguiti da importare: spunta almeno un file con dati validi."),
                     platform::Buttons::Ok, platform::Icon::Information, this);
    anteprima();
}

void Importa::importaAnteprima()
{
    // The movements of the ticked files, in list order.
    QList<ledger::MovimentoImportato> movimenti;
    for (int i = 0; i < List1_->count(); ++i)
        if (List1_->Selected(i))
            movimenti += guidate_.value(percorso(i)).movimenti;

    // A refused row may answer for all the refused rows after it.
    std::optional<bool> perTutte;
    std::int16_t contatore = 0;
    ledger::ImportaEseguiti importa = importatore(contatore, [this, &perTutte](const QString& domanda) {
        if (perTutte)
            return *perTutte;
        switch (platform::MsgBox(domanda, platform::Buttons::YesNoAll, platform::Icon::Exclamation, this)) {
        case platform::Answer::YesToAll: perTutte = true; return true;
        case platform::Answer::NoToAll: perTutte = false; return false;
        case platform::Answer::Yes: return true;
        default: return false;
        }
    });
    importa.inserimento = ledger::InsertComeInAnteprima;
    // A year of a broker's trades may pass the 16-bit counter of the day files.
    int fatte = 0;
    importa.rigaInserita = [this, &fatte]() {
        ProgressBar1_->setValue(++fatte);
        dipingiBarra();
    };

    importando_ = true;
    QString errore;
    bool vuoto = false;
    try {
        // One file, one transaction with its replay: any failure leaves the portfolio as it was.
        store::Transaction tutto(dbExe);
        vuoto = importa.EseguiVeloce(dbExe) == 0 && movimenti.isEmpty();
        if (!vuoto) {
            for (const ledger::MovimentoImportato& m : movimenti) {
                // Booked as the account window books a movement typed by hand.
                const QString descrizione = m.descrizione.isEmpty() ? QStringLiteral(".") : m.descrizione;
                dbExe.Execute(account::InsertMovimento({m.data, m.tipo, num::Text(std::abs(m.importo)),
                                                        ledger::TestoImportato(descrizione)}));
            }
            dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
            chiusa_ = true;
            MDIForm1::Instance()->ControlloMenu();
            tutto.Commit();
        }
    } catch (const platform::IndexOutOfRange& e) {
        chiusa_ = false;
        errore = QStringLiteral("un portafoglio tiene al più %1 codici diversi (%2).")
                     .arg(ledger::kMaxCodici)
                     .arg(QString::fromStdString(e.what()));
    } catch (const std::exception& e) {
        chiusa_ = false;
        errore = QString::fromStdString(e.what());
    }
    importando_ = false;
    ProgressBar1_->setVisible(false);
    if (vuoto) {
        nienteDaImportare();
        return;
    }
    if (!errore.isEmpty()) {
        platform::MsgBox("Importazione non eseguita, il portafoglio è rimasto com'era: " + errore, platform::Buttons::Ok,
                         platform::Icon::Critical, this);
        anteprima();
        return;
    }
    accept();
}

void Importa::cmd_Annulla_Click()
{
    chiudiSenzaImportare();
    reject();
}

void Importa::chiudiSenzaImportare()
{
    chiusa_ = true;
    guidate_.clear();
    dbExe.Execute(QStringLiteral("DELETE * FROM EseguitiTemp"));
    // The open trade window keeps its undo record in EseguitiTemp: give it back.
    if (platform::Forms::Find(QStringLiteral("frmEseguiti")))
        dbExe.Execute(QStringLiteral("INSERT INTO EseguitiTemp SELECT * FROM Eseguiti"));
}

void Importa::done(int result)
{
    if (importando_)
        return; // a question of the import is still open
    if (!chiusa_) {
        // Closed by Esc or the title bar: as Annulla.
        chiudiSenzaImportare();
    }
    QDialog::done(result);
    platform::Forms::Unload(objectName());
}
