#include "ledger/frmImportazioneGuidata.h"

#include "app/Module1.h"
#include "ledger/ModelliSalvati.h"
#include "platform/DataSource.h"
#include "platform/MessageBox.h"
#include "platform/Numbers.h"

#include <QComboBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

using Module1::dbSet;
using ledger::Campo;
using ledger::Mappatura;
using ledger::Parole;

namespace {

// The file's first rows, enough to find the header among its account lines.
constexpr int kRigheMostrate = 100;

const QString kNessuna = QStringLiteral("(nessuna)");
const QString kPersonalizzato = QStringLiteral("Personalizzato");
const char* const kNomiCampi[ledger::kCampi] = {"Data", "Ora", "Tipo", "Segno", "Cod", "Titolo", "Qta", "Prezzo", "Importo", "Cambio"};
const char* const kEtichetteCampi[ledger::kCampi] = {"Data",   "Ora",      "Tipo",   "Segno",   "Codice",
                                                     "Titolo", "Quantità", "Prezzo", "Importo", "Cambio"};
const char* const kNomiParole[ledger::kParole] = {"Acquisto", "Vendita", "Versamento", "Prelievo", "Dividendi", "Costi"};

QString testoSeparatore(QChar c) { return c == u'\t' ? QStringLiteral("Tab") : QString(c); }
QChar separatoreDa(const QString& s) { return s == u"Tab" ? QChar(u'\t') : s.front(); }

QTableView* griglia(QWidget* parent, QStandardItemModel* model, const QString& name)
{
    auto* t = new QTableView(parent);
    t->setObjectName(name);
    t->setModel(model);
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    t->setSelectionBehavior(QAbstractItemView::SelectRows);
    t->setAlternatingRowColors(true);
    t->verticalHeader()->setDefaultSectionSize(t->fontMetrics().height() + 6);
    t->horizontalHeader()->setDefaultSectionSize(110);
    return t;
}

} // namespace

std::unique_ptr<frmImportazioneGuidata> frmImportazioneGuidata::Apri(const QString& path, QWidget* parent)
{
    try {
        return std::make_unique<frmImportazioneGuidata>(path, parent);
    } catch (const platform::Failure& e) {
        platform::MsgBox(QString::fromStdString(e.what()), platform::Buttons::Ok, platform::Icon::Exclamation, parent);
        return nullptr;
    }
}

std::optional<ledger::Staging> frmImportazioneGuidata::Esegui(const QString& path, QWidget* parent)
{
    const std::unique_ptr<frmImportazioneGuidata> w = Apri(path, parent);
    if (!w || w->exec() != QDialog::Accepted)
        return std::nullopt;
    return w->Risultato();
}

frmImportazioneGuidata::frmImportazioneGuidata(const QString& path, QWidget* parent) : QDialog(parent), file_(path)
{
    setObjectName(QStringLiteral("frmImportazioneGuidata"));
    setWindowTitle(QStringLiteral("Importazione guidata"));
    setModal(true);
    salvati_ = ledger::CaricaModelli(dbSet);
    crea();
    Module1::ApplicaColori(this);
    setWindowTitle(QStringLiteral("Importazione guidata - ") + QFileInfo(path).fileName());
    riconosci();
    mostra();
    anteprima();
}

void frmImportazioneGuidata::crea()
{
    righeFile_ = new QStandardItemModel(this);
    tbl_File_ = griglia(this, righeFile_, QStringLiteral("tbl_File"));
    righeAnteprima_ = new QStandardItemModel(this);
    tbl_Anteprima_ = griglia(this, righeAnteprima_, QStringLiteral("tbl_Anteprima"));
    righeAnteprima_->setHorizontalHeaderLabels({QStringLiteral("Riga"), QStringLiteral("Esito"), QStringLiteral("Data"),
                                                QStringLiteral("Tipo"), QStringLiteral("Cod"), QStringLiteral("Titolo / Descrizione"),
                                                QStringLiteral("Qta"), QStringLiteral("Prezzo"), QStringLiteral("Importo")});
    const int larghezze[] = {50, 90, 90, 130, 120, 0, 80, 90, 90};
    for (int c = 0; c < 9; ++c)
        tbl_Anteprima_->setColumnWidth(c, larghezze[c]);
    tbl_Anteprima_->horizontalHeader()->setSectionResizeMode(5, QHeaderView::Stretch);
    tbl_Anteprima_->verticalHeader()->setVisible(false);

    spn_Intestazione_ = new QSpinBox(this);
    spn_Intestazione_->setObjectName(QStringLiteral("spn_Intestazione"));
    spn_Intestazione_->setRange(1, std::max<int>(1, static_cast<int>(file_.Righe().size())));
    auto combo = [this](const QString& name, const QStringList& items) {
        auto* c = new QComboBox(this);
        c->setObjectName(name);
        c->addItems(items);
        return c;
    };
    cmb_Separatore_ = combo(QStringLiteral("cmb_Separatore"), {QStringLiteral(","), QStringLiteral(";"), QStringLiteral("Tab")});
    cmb_Separatore_->setEnabled(!file_.Foglio());
    cmb_Decimale_ = combo(QStringLiteral("cmb_Decimale"), {QStringLiteral(","), QStringLiteral(".")});
    QStringList formati;
    for (int f = 0; f < ledger::kFormatiData; ++f)
        formati << ledger::NomeFormato(static_cast<ledger::FormatoData>(f));
    cmb_FormatoData_ = combo(QStringLiteral("cmb_FormatoData"), formati);
    cmb_Modello_ = combo(QStringLiteral("cmb_Modello"), {});
    cmb_Modello_->setMinimumWidth(170);
    for (int c = 0; c < ledger::kCampi; ++c) {
        colonne_[static_cast<std::size_t>(c)] = combo(QStringLiteral("cmb_") + QString::fromLatin1(kNomiCampi[c]), {kNessuna});
        connect(colonne_[static_cast<std::size_t>(c)], &QComboBox::currentIndexChanged, this, [this, c](int i) {
            if (mostrando_)
                return;
            mappa_.colonne[static_cast<std::size_t>(c)] = i > 0 ? colonne_[static_cast<std::size_t>(c)]->currentText() : QString();
            leggiControlli(true);
        });
        // A long header of the file must not squeeze the word lists beside.
        colonne_[static_cast<std::size_t>(c)]->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        colonne_[static_cast<std::size_t>(c)]->setMinimumContentsLength(14);
    }
    for (int p = 0; p < ledger::kParole; ++p) {
        auto* e = new QLineEdit(this);
        e->setMinimumWidth(170);
        e->setObjectName(QStringLiteral("txt_") + QString::fromLatin1(kNomiParole[p]));
        e->setToolTip(QStringLiteral("Valori della colonna Tipo, separati da \";\""));
        parole_[static_cast<std::size_t>(p)] = e;
        connect(e, &QLineEdit::textChanged, this, [this]() { leggiControlli(false); });
    }
    dbc_System_ = new QComboBox(this);
    dbc_System_->setObjectName(QStringLiteral("dbc_System"));
    dbc_System_->setEditable(true);
    dbc_System_->setInsertPolicy(QComboBox::NoInsert);
    platform::FillCombo(dbc_System_, dbSet.OpenRecordset(QStringLiteral("SELECT Cod FROM System")), QStringLiteral("Cod"));
    dbc_System_->setEditText(dbc_System_->itemText(0));
    Module1::FiltroCaratteri(dbc_System_);

    lab_Eseguiti_ = new QLabel(QStringLiteral("0"), this);
    lab_Eseguiti_->setObjectName(QStringLiteral("lab_Eseguiti"));
    lab_Movimenti_ = new QLabel(QStringLiteral("0"), this);
    lab_Movimenti_->setObjectName(QStringLiteral("lab_Movimenti"));
    lab_Scartate_ = new QLabel(QStringLiteral("0"), this);
    lab_Scartate_->setObjectName(QStringLiteral("lab_Scartate"));
    for (QLabel* l : {lab_Eseguiti_, lab_Movimenti_, lab_Scartate_}) {
        l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        l->setMinimumWidth(56);
    }
    txt_NomeModello_ = new QLineEdit(this);
    txt_NomeModello_->setObjectName(QStringLiteral("txt_NomeModello"));
    txt_NomeModello_->setPlaceholderText(QStringLiteral("nome del modello"));
    Module1::FiltroCaratteri(txt_NomeModello_);
    auto bottone = [this](const QString& text, const QString& name) {
        auto* b = new QPushButton(text, this);
        b->setObjectName(name);
        b->setAutoDefault(false);
        b->setMinimumWidth(100);
        return b;
    };
    cmd_SalvaModello_ = bottone(QStringLiteral("Salva modello"), QStringLiteral("cmd_SalvaModello"));
    cmd_SalvaModello_->setEnabled(false);
    cmd_Ok_ = bottone(QStringLiteral("OK"), QStringLiteral("cmd_Ok"));
    cmd_Annulla_ = bottone(QStringLiteral("Annulla"), QStringLiteral("cmd_Annulla"));

    connect(spn_Intestazione_, &QSpinBox::valueChanged, this, &frmImportazioneGuidata::spn_Intestazione_Change);
    connect(cmb_Separatore_, &QComboBox::currentIndexChanged, this, &frmImportazioneGuidata::cmb_Separatore_Click);
    connect(cmb_Decimale_, &QComboBox::currentIndexChanged, this, [this]() { leggiControlli(false); });
    connect(cmb_FormatoData_, &QComboBox::currentIndexChanged, this, [this]() { leggiControlli(false); });
    connect(cmb_Modello_, &QComboBox::activated, this, &frmImportazioneGuidata::cmb_Modello_Click);
    connect(dbc_System_, &QComboBox::editTextChanged, this, [this]() { leggiControlli(false); });
    connect(txt_NomeModello_, &QLineEdit::textChanged, this,
            [this](const QString& t) { cmd_SalvaModello_->setEnabled(!t.trimmed().isEmpty()); });
    connect(cmd_SalvaModello_, &QPushButton::clicked, this, &frmImportazioneGuidata::cmd_SalvaModello_Click);
    connect(cmd_Ok_, &QPushButton::clicked, this, &frmImportazioneGuidata::cmd_Ok_Click);
    connect(cmd_Annulla_, &QPushButton::clicked, this, &QDialog::reject);

    // The file as it is, and how to read it.
    auto* lettura = new QHBoxLayout;
    auto etichetta = [this, lettura](const QString& text, QWidget* w) {
        lettura->addWidget(new QLabel(text, this));
        lettura->addWidget(w);
        lettura->addSpacing(12);
    };
    etichetta(QStringLiteral("Modello"), cmb_Modello_);
    etichetta(QStringLiteral("Intestazione alla riga"), spn_Intestazione_);
    etichetta(QStringLiteral("Separatore"), cmb_Separatore_);
    etichetta(QStringLiteral("Decimale"), cmb_Decimale_);
    etichetta(QStringLiteral("Formato data"), cmb_FormatoData_);
    lettura->addStretch();
    auto* file = new QGroupBox(QStringLiteral("Contenuto del file"), this);
    auto* f = new QVBoxLayout(file);
    f->addLayout(lettura);
    f->addWidget(tbl_File_, 1);

    // What each column means, in two columns of fields.
    auto* campi = new QGroupBox(QStringLiteral("Colonne"), this);
    auto* gc = new QGridLayout(campi);
    for (int c = 0; c < ledger::kCampi; ++c) {
        const int riga = c % 5, colonna = (c / 5) * 2;
        gc->addWidget(new QLabel(QString::fromUtf8(kEtichetteCampi[c]), this), riga, colonna);
        gc->addWidget(colonne_[static_cast<std::size_t>(c)], riga, colonna + 1);
    }
    gc->setColumnStretch(1, 1);
    gc->setColumnStretch(3, 1);
    gc->setColumnMinimumWidth(2, 60);

    auto* valori = new QGroupBox(QStringLiteral("Valori della colonna Tipo"), this);
    auto* gv = new QGridLayout(valori);
    for (int p = 0; p < ledger::kParole; ++p) {
        const int riga = p % 3, colonna = (p / 3) * 2;
        gv->addWidget(new QLabel(QString::fromLatin1(kNomiParole[p]), this), riga, colonna);
        gv->addWidget(parole_[static_cast<std::size_t>(p)], riga, colonna + 1);
    }
    gv->addWidget(new QLabel(QStringLiteral("System"), this), 3, 0);
    gv->addWidget(dbc_System_, 3, 1);
    gv->setColumnStretch(1, 1);
    gv->setColumnStretch(3, 1);

    auto* mezzo = new QHBoxLayout;
    mezzo->addWidget(campi, 2);
    mezzo->addWidget(valori, 3);

    auto* anteprima = new QGroupBox(QStringLiteral("Anteprima dell'importazione"), this);
    auto* a = new QVBoxLayout(anteprima);
    a->addWidget(tbl_Anteprima_, 1);
    auto* conta = new QHBoxLayout;
    conta->addStretch();
    for (const auto& [testo, lab] : {std::pair{QStringLiteral("Eseguiti :"), lab_Eseguiti_},
                                     std::pair{QStringLiteral("Movimenti :"), lab_Movimenti_},
                                     std::pair{QStringLiteral("Scartate :"), lab_Scartate_}}) {
        conta->addSpacing(12);
        conta->addWidget(new QLabel(testo, this));
        conta->addWidget(lab);
    }
    a->addLayout(conta);

    auto* piede = new QHBoxLayout;
    piede->addWidget(new QLabel(QStringLiteral("Salva come"), this));
    piede->addWidget(txt_NomeModello_);
    piede->addWidget(cmd_SalvaModello_);
    piede->addStretch();
    piede->addWidget(cmd_Ok_);
    piede->addWidget(cmd_Annulla_);

    auto* tutto = new QVBoxLayout(this);
    tutto->addWidget(file, 3);
    tutto->addLayout(mezzo);
    tutto->addWidget(anteprima, 3);
    tutto->addLayout(piede);
    resize(1060, 780);
}

void frmImportazioneGuidata::riconosci()
{
    // A saved model may have been made with another separator than the one guessed.
    std::optional<ledger::Riconoscimento> r = ledger::RiconosciModello(file_.Righe(), salvati_);
    if (!r && !file_.Foglio()) {
        const QChar guessed = file_.Separatore();
        for (const QChar sep : {QChar(u','), QChar(u';'), QChar(u'\t')}) {
            if (sep == guessed)
                continue;
            file_.Dividi(sep);
            if ((r = ledger::RiconosciModello(file_.Righe(), salvati_)))
                break;
        }
        if (!r)
            file_.Dividi(guessed);
    }
    if (r) {
        mappa_ = r->modello;
    } else {
        mappa_ = Mappatura();
        mappa_.nome = kPersonalizzato;
        mappa_.rigaIntestazione = static_cast<int>(platform::IndovinaIntestazione(file_.Righe()) + 1);
    }
    mappa_.separatore = file_.Separatore();
    ledger::IndovinaFormati(file_.Righe(), mappa_, file_.Foglio());
}

void frmImportazioneGuidata::usaModello(const Mappatura& m)
{
    const int riga = mappa_.rigaIntestazione;
    mappa_ = m;
    if (m.nome == kPersonalizzato) {
        mappa_.rigaIntestazione = riga;
    } else {
        if (!file_.Foglio() && m.separatore != file_.Separatore() && !m.intestazione.isEmpty())
            file_.Dividi(m.separatore);
        // The model's header where the file has it, else the line shown.
        const std::optional<ledger::Riconoscimento> r = ledger::RiconosciModello(
            file_.Righe(), m.intestazione.isEmpty() ? QList<Mappatura>() : QList<Mappatura>{m});
        mappa_.rigaIntestazione = r && r->modello.nome == m.nome ? r->modello.rigaIntestazione : riga;
    }
    mappa_.separatore = file_.Separatore();
    ledger::IndovinaFormati(file_.Righe(), mappa_, file_.Foglio());
    mostra();
    anteprima();
}

void frmImportazioneGuidata::riempiModelli()
{
    cmb_Modello_->clear();
    for (const Mappatura& m : ledger::ModelliPredefiniti())
        cmb_Modello_->addItem(m.nome);
    for (const Mappatura& m : salvati_)
        cmb_Modello_->addItem(m.nome);
    cmb_Modello_->addItem(kPersonalizzato);
    const int i = cmb_Modello_->findText(mappa_.nome, Qt::MatchFixedString);
    cmb_Modello_->setCurrentIndex(i >= 0 ? i : cmb_Modello_->count() - 1);
}

void frmImportazioneGuidata::riempiFile()
{
    righeFile_->clear();
    const platform::Tabella& righe = file_.Righe();
    const int n = static_cast<int>(std::min<qsizetype>(righe.size(), kRigheMostrate));
    int larghezza = 0;
    for (int r = 0; r < n; ++r)
        larghezza = std::max(larghezza, static_cast<int>(righe[r].size()));
    righeFile_->setRowCount(n);
    righeFile_->setColumnCount(larghezza);
    QFont grassetto = tbl_File_->font();
    grassetto.setBold(true);
    for (int r = 0; r < n; ++r) {
        const bool intestazione = r + 1 == mappa_.rigaIntestazione;
        for (int c = 0; c < righe[r].size(); ++c) {
            auto* item = new QStandardItem(righe[r][c]);
            if (intestazione)
                item->setFont(grassetto);
            righeFile_->setItem(r, c, item);
        }
    }
    // Wide enough for what the cells hold, within reason.
    tbl_File_->resizeColumnsToContents();
    for (int c = 0; c < larghezza; ++c)
        tbl_File_->setColumnWidth(c, std::clamp(tbl_File_->columnWidth(c), 60, 220));
    // The header near the top, with the line before it.
    if (mappa_.rigaIntestazione <= n)
        tbl_File_->scrollTo(righeFile_->index(std::max(mappa_.rigaIntestazione - 2, 0), 0), QAbstractItemView::PositionAtTop);
}

void frmImportazioneGuidata::riempiColonne()
{
    const QStringList intestazione = ledger::Intestazione(file_.Righe().value(mappa_.rigaIntestazione - 1));
    QStringList nomi;
    for (const QString& c : intestazione)
        if (!c.isEmpty() && !nomi.contains(c, Qt::CaseInsensitive))
            nomi << c;
    for (int c = 0; c < ledger::kCampi; ++c) {
        QComboBox* combo = colonne_[static_cast<std::size_t>(c)];
        const QString& colonna = mappa_.colonne[static_cast<std::size_t>(c)];
        combo->clear();
        combo->addItem(kNessuna);
        combo->addItems(nomi);
        // A column the header lacks reads as none, and comes back with a header that has it.
        combo->setCurrentIndex(colonna.isEmpty() ? 0 : std::max(0, combo->findText(colonna.trimmed(), Qt::MatchFixedString)));
    }
}

void frmImportazioneGuidata::mostra()
{
    mostrando_ = true;
    riempiModelli();
    spn_Intestazione_->setValue(mappa_.rigaIntestazione);
    cmb_Separatore_->setCurrentText(testoSeparatore(file_.Separatore()));
    cmb_Decimale_->setCurrentText(QString(mappa_.decimale));
    cmb_FormatoData_->setCurrentIndex(static_cast<int>(mappa_.formatoData));
    riempiFile();
    riempiColonne();
    for (int p = 0; p < ledger::kParole; ++p)
        parole_[static_cast<std::size_t>(p)]->setText(mappa_.parole[static_cast<std::size_t>(p)]);
    mostrando_ = false;
}

void frmImportazioneGuidata::leggiControlli(bool formati)
{
    if (mostrando_)
        return;
    for (int p = 0; p < ledger::kParole; ++p)
        mappa_.parole[static_cast<std::size_t>(p)] = parole_[static_cast<std::size_t>(p)]->text();
    mappa_.decimale = cmb_Decimale_->currentText().front();
    mappa_.formatoData = static_cast<ledger::FormatoData>(cmb_FormatoData_->currentIndex());
    if (formati) {
        // A newly chosen column may tell the formats that nothing told before.
        ledger::IndovinaFormati(file_.Righe(), mappa_, file_.Foglio());
        mostrando_ = true;
        cmb_Decimale_->setCurrentText(QString(mappa_.decimale));
        cmb_FormatoData_->setCurrentIndex(static_cast<int>(mappa_.formatoData));
        mostrando_ = false;
    }
    anteprima();
}

void frmImportazioneGuidata::spn_Intestazione_Change()
{
    if (mostrando_)
        return;
    mappa_.rigaIntestazione = spn_Intestazione_->value();
    ledger::IndovinaFormati(file_.Righe(), mappa_, file_.Foglio());
    mostra();
    anteprima();
}

void frmImportazioneGuidata::cmb_Separatore_Click()
{
    if (mostrando_)
        return;
    file_.Dividi(separatoreDa(cmb_Separatore_->currentText()));
    mappa_.separatore = file_.Separatore();
    spn_Intestazione_->setMaximum(std::max<int>(1, static_cast<int>(file_.Righe().size())));
    mappa_.rigaIntestazione = std::min(mappa_.rigaIntestazione, spn_Intestazione_->maximum());
    ledger::IndovinaFormati(file_.Righe(), mappa_, file_.Foglio());
    mostra();
    anteprima();
}

void frmImportazioneGuidata::cmb_Modello_Click()
{
    const QString nome = cmb_Modello_->currentText();
    if (nome == kPersonalizzato) {
        Mappatura m;
        m.nome = kPersonalizzato;
        usaModello(m);
        return;
    }
    const QList<Mappatura> tutti = ledger::ModelliPredefiniti() + salvati_;
    const auto it = std::find_if(tutti.begin(), tutti.end(), [&](const Mappatura& m) { return m.nome == nome; });
    if (it != tutti.end())
        usaModello(*it);
}

void frmImportazioneGuidata::cmd_SalvaModello_Click()
{
    const QString nome = txt_NomeModello_->text().trimmed();
    if (nome.isEmpty())
        return;
    for (const Mappatura& m : ledger::ModelliPredefiniti())
        if (nome.compare(m.nome, Qt::CaseInsensitive) == 0 || nome.compare(kPersonalizzato, Qt::CaseInsensitive) == 0) {
            platform::MsgBox(QStringLiteral("\"%1\" è il nome di un modello predefinito: sceglierne un altro").arg(nome),
                             platform::Buttons::Ok, platform::Icon::Exclamation, this);
            return;
        }
    Mappatura m = mappa_;
    m.nome = nome;
    m.separatore = file_.Separatore();
    m.intestazione = ledger::Intestazione(file_.Righe().value(m.rigaIntestazione - 1));
    ledger::SalvaModello(dbSet, m);
    salvati_ = ledger::CaricaModelli(dbSet);
    mappa_.nome = nome;
    mostrando_ = true;
    riempiModelli();
    mostrando_ = false;
}

QString frmImportazioneGuidata::system() const { return dbc_System_->currentText().trimmed(); }

void frmImportazioneGuidata::anteprima()
{
    const ledger::Staging s = ledger::Applica(file_.Righe(), mappa_, system());
    lab_Eseguiti_->setText(QString::number(s.eseguiti.size()));
    lab_Movimenti_->setText(QString::number(s.movimenti.size()));
    lab_Scartate_->setText(QString::number(s.scartate.size()));

    righeAnteprima_->setRowCount(0);
    auto aggiungi = [this](int riga, const QString& esito, const QStringList& celle, bool scartata) {
        QList<QStandardItem*> items;
        items << new QStandardItem(QString::number(riga)) << new QStandardItem(esito);
        for (const QString& c : celle)
            items << new QStandardItem(c);
        for (int i : {0, 6, 7, 8})
            if (i < items.size())
                items[i]->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        if (scartata)
            for (QStandardItem* it : items)
                it->setForeground(QColor(150, 40, 40));
        righeAnteprima_->appendRow(items);
    };
    for (const ledger::EseguitoImportato& e : s.eseguiti)
        aggiungi(e.riga, QStringLiteral("Eseguito"),
                 {num::DateText(e.data), e.tipo, e.cod, e.titolo, num::Text(e.qta), num::Text(e.prezzo),
                  num::Text(e.qta * e.prezzo)}, // as it is stored
                 false);
    for (const ledger::MovimentoImportato& m : s.movimenti)
        aggiungi(m.riga, QStringLiteral("Movimento"), {num::DateText(m.data), m.tipo, QString(), m.descrizione, QString(), QString(), num::Text(m.importo)},
                 false);
    for (const ledger::RigaScartata& r : s.scartate)
        aggiungi(r.riga, QStringLiteral("Scartata"), {QString(), QString(), QString(), r.motivo}, true);
}

void frmImportazioneGuidata::cmd_Ok_Click()
{
    ledger::Staging s = ledger::Applica(file_.Righe(), mappa_, system());
    if (s.eseguiti.isEmpty() && s.movimenti.isEmpty()) {
        platform::MsgBox(QStringLiteral("Nessuna riga del file è un eseguito o un movimento del conto: indicare le colonne e i "
                                        "valori della colonna Tipo"),
                         platform::Buttons::Ok, platform::Icon::Exclamation, this);
        return;
    }
    if (!s.eseguiti.isEmpty() && system().isEmpty()) {
        platform::MsgBox(QStringLiteral("Indicare il System degli eseguiti"), platform::Buttons::Ok, platform::Icon::Exclamation, this);
        return;
    }
    risultato_ = std::move(s);
    accept();
}
