#include "stats/frmPersonalizzaErrori.h"

#include "app/Module1.h"
#include "platform/DataSource.h"
#include "platform/Forms.h"
#include "platform/MessageBox.h"
#include "platform/Numbers.h"
#include "store/Database.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

using Module1::dbSet;

frmPersonalizzaErrori* frmPersonalizzaErrori::Instance() { return platform::Form<frmPersonalizzaErrori>(); }

frmPersonalizzaErrori::frmPersonalizzaErrori()
{
    setObjectName(QStringLiteral("frmPersonalizzaErrori"));
    setWindowTitle(QStringLiteral("Personalizza errori"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/7.svg")));
    setModal(true);

    Data1_ = new platform::DataSource(this);
    Data1_->setObjectName(QStringLiteral("Data1"));
    DBGrid1_ = new QTableView(this);
    DBGrid1_->setObjectName(QStringLiteral("DBGrid1"));
    DBGrid1_->setSelectionBehavior(QAbstractItemView::SelectRows);
    DBGrid1_->setSelectionMode(QAbstractItemView::SingleSelection);
    DBGrid1_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                              | QAbstractItemView::AnyKeyPressed);
    DBGrid1_->verticalHeader()->setDefaultSectionSize(DBGrid1_->fontMetrics().height() + 8);
    DBGrid1_->horizontalHeader()->setStretchLastSection(true);
    DBGrid1_->installEventFilter(this);

    Text1_ = new QLineEdit(this);
    Text1_->setObjectName(QStringLiteral("Text1"));
    connect(Text1_, &QLineEdit::editingFinished, this, &frmPersonalizzaErrori::scriviNota);

    auto* cmd_Ripristino = new QPushButton(QStringLiteral("Ripristino settaggio errori di default"), this);
    cmd_Ripristino->setObjectName(QStringLiteral("cmd_Ripristino"));
    connect(cmd_Ripristino, &QPushButton::clicked, this, &frmPersonalizzaErrori::cmd_Ripristino_Click);
    auto* Command2 = new QPushButton(QStringLiteral("Esci"), this);
    Command2->setObjectName(QStringLiteral("Command2"));
    connect(Command2, &QPushButton::clicked, this, &QDialog::accept);
    // Return ends the typing of a note or a cell; it must never press the restore.
    for (QPushButton* b : {cmd_Ripristino, Command2})
        b->setAutoDefault(false);

    auto* nota = new QHBoxLayout;
    nota->addWidget(new QLabel(QStringLiteral("Note :"), this));
    nota->addWidget(Text1_, 1);
    auto* piede = new QHBoxLayout;
    piede->addWidget(cmd_Ripristino);
    piede->addStretch();
    piede->addWidget(Command2);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(DBGrid1_, 1);
    layout->addLayout(nota);
    layout->addSpacing(6);
    layout->addLayout(piede);
    resize(620, 440);

    // Load: colours, then the catalogue.
    Module1::ApplicaColori(this);
    Data1_->SetSource(&dbSet, QStringLiteral("SELECT Cod, Descrizione ,note") + QStringLiteral(" FROM Errori"));
    Data1_->Refresh();
    model_ = new platform::EditableRecordsetModel(Data1_, {{"Cod", "Cod"}, {"Descrizione", "Descrizione"}}, this);
    model_->SetAllowAddNew(QStringLiteral("Errori"));
    DBGrid1_->setModel(model_);
    DBGrid1_->setColumnWidth(0, 60);
    connect(model_, &platform::EditableRecordsetModel::EditRefused, this, [this]() {
        platform::MsgBox(QStringLiteral("Massimo 2 caratteri per questo campo"), platform::Buttons::Ok, platform::Icon::Critical, this);
    });
    connect(DBGrid1_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &frmPersonalizzaErrori::mostraNota);
    connect(model_, &QAbstractItemModel::modelReset, this, &frmPersonalizzaErrori::mostraNota);
    mostraNota();
}

void frmPersonalizzaErrori::mostraNota()
{
    const int riga = DBGrid1_->currentIndex().row();
    store::Recordset& rs = Data1_->Recordset();
    rigaNota_ = riga >= 0 && riga < rs.RecordCount() ? riga : -1;
    Text1_->setEnabled(rigaNota_ >= 0);
    QString nota;
    for (int i = 0; rigaNota_ >= 0 && i < rs.FieldCount(); ++i)
        if (rs.FieldName(i).compare(QLatin1String("note"), Qt::CaseInsensitive) == 0)
            nota = num::Text(rs.ValueAt(rigaNota_, i));
    Text1_->setText(nota);
    Text1_->setModified(false);
}

void frmPersonalizzaErrori::scriviNota()
{
    if (rigaNota_ < 0 || !Text1_->isModified())
        return;
    store::Recordset& rs = Data1_->Recordset();
    rs.SetAbsolutePosition(rigaNota_);
    rs.Edit();
    rs.SetField(QStringLiteral("note"), Text1_->text());
    rs.Update();
    Text1_->setModified(false);
}

bool frmPersonalizzaErrori::eventFilter(QObject* watched, QEvent* event)
{
    // The grid deletes the selected row with the Delete key.
    if (watched == DBGrid1_ && event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        const int riga = DBGrid1_->currentIndex().row();
        if (riga >= 0 && !model_->IsAddNewRow(riga))
            model_->RemoveRow(riga);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmPersonalizzaErrori::cmd_Ripristino_Click()
{
    // No question asked: the delivered catalogue replaces the user's.
    (void)dbSet.OpenRecordset(QStringLiteral("SELECT * FROM ErroriDefault"));
    dbSet.Execute(QStringLiteral("DELETE * FROM Errori"));
    dbSet.Execute(QStringLiteral("INSERT INTO Errori SELECT * FROM ErroriDefault"));
    Data1_->Refresh();
}

void frmPersonalizzaErrori::done(int result)
{
    scriviNota();
    QDialog::done(result);
    platform::Forms::Unload(objectName());
}
