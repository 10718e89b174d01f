#include "prefs/Tip.h"

#include "app/Module1.h"
#include "platform/Casuale.h"
#include "platform/Forms.h"
#include "platform/Immagine.h"
#include "prefs/Consigli.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

// A text box like every other, whose rule wraps over as many lines as it needs.
class TestoAcapo final : public QLineEdit {
public:
    explicit TestoAcapo(QWidget* parent) : QLineEdit(parent)
    {
        setReadOnly(true);
        setFrame(false);
        setFocusPolicy(Qt::NoFocus);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    }
    QSize sizeHint() const override { return {300, 4 * fontMetrics().lineSpacing()}; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.fillRect(rect(), palette().base());
        p.setPen(palette().text().color());
        p.drawText(rect().adjusted(6, 4, -6, -4), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, text());
    }
};

} // namespace

Tip* Tip::Instance() { return platform::Form<Tip>(); }

Tip::Tip()
{
    setObjectName(QStringLiteral("Tip"));
    setWindowTitle(QStringLiteral("Consigli"));
    setModal(true);

    auto* lampadina = new QLabel(this);
    lampadina->setObjectName(QStringLiteral("Image1"));
    lampadina->setPixmap(platform::ImmagineSvg(QStringLiteral(":/images/consiglio.svg"), QSize(64, 64), devicePixelRatioF()));
    auto* titolo = new QLabel(QStringLiteral("Regole auree dei grandi ...."), this);
    titolo->setObjectName(QStringLiteral("Label1"));
    QFont f = titolo->font();
    f.setBold(true);
    f.setPointSizeF(f.pointSizeF() * 1.25);
    titolo->setFont(f);
    txt_Tip_ = new TestoAcapo(this);
    txt_Tip_->setObjectName(QStringLiteral("txt_Tip"));
    QFont testo = txt_Tip_->font();
    testo.setPointSizeF(testo.pointSizeF() * 1.15);
    txt_Tip_->setFont(testo);
    txt_Tip_->setMinimumHeight(90);
    chk_Tip_ = new QCheckBox(QStringLiteral("Visualizza gli insegnamenti all'avvio"), this);
    chk_Tip_->setObjectName(QStringLiteral("chk_Tip"));
    chk_Tip_->setChecked(true);
    auto* Command1 = new QPushButton(QStringLiteral("next tip"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    auto* Command2 = new QPushButton(QStringLiteral("Chiudi"), this);
    Command2->setObjectName(QStringLiteral("Command2"));
    Command2->setDefault(true);

    auto* destra = new QVBoxLayout;
    destra->addWidget(titolo);
    destra->addWidget(txt_Tip_, 1);
    auto* corpo = new QHBoxLayout;
    corpo->addWidget(lampadina, 0, Qt::AlignTop);
    corpo->addSpacing(8);
    corpo->addLayout(destra, 1);
    auto* piede = new QHBoxLayout;
    piede->addWidget(chk_Tip_);
    piede->addStretch();
    piede->addWidget(Command1);
    piede->addWidget(Command2);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 16, 16, 12);
    layout->addLayout(corpo, 1);
    layout->addSpacing(6);
    layout->addLayout(piede);
    resize(520, 230);

    connect(Command1, &QPushButton::clicked, this, &Tip::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &Tip::Command2_Click);
    carica();
}

void Tip::carica()
{
    Module1::ApplicaColori(this);
    rsConsiglio_ = Module1::dbSet.OpenRecordset(QStringLiteral("SELECT *  FROM Consiglio"));
    // The offset ignores the size of the table: fewer than 120 rules fail here.
    rsConsiglio_.Move(prefs::ScostamentoConsiglio(platform::Generatore()));
    txt_Tip_->setText(rsConsiglio_.Text(QStringLiteral("Consiglio")));
}

void Tip::Command1_Click() { carica(); }

void Tip::Command2_Click()
{
    // A checked box writes nothing: only the view options switch the tips on again.
    if (!chk_Tip_->isChecked())
        Module1::dbSet.Execute(QStringLiteral("UPDATE Settaggi SET Tip = False"));
    accept();
}
