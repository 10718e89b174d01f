#include "instruments/Calcolatore.h"

#include "app/Module1.h"
#include "platform/Forms.h"
#include "platform/Numbers.h"
#include "platform/PictureSurface.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>

using Module1::dbSet;

namespace {

bool numerico(const QString& text) { return num::Parse(text).has_value(); }

// A control's text as a number; a text that is no number is a type mismatch.
double numero(const QString& text)
{
    const std::optional<double> v = num::Parse(text);
    if (!v)
        throw platform::Failure("Tipo non corrispondente: \"" + text.toStdString() + "\"");
    return *v;
}

// On screen the displays are drawn at twice their pixel size.
constexpr int kZoom = 2;

} // namespace

Calcolatore* Calcolatore::Instance() { return platform::Form<Calcolatore>(); }

Calcolatore::Calcolatore()
{
    setObjectName(QStringLiteral("Calcolatore"));
    setWindowTitle(QStringLiteral("Calcolatore finanziario"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/1.svg")));
    crea();
    CaricaCalcolatore();
}

platform::PictureSurface* Calcolatore::display(const QString& name)
{
    auto* s = new platform::PictureSurface(kLarghezzaDisplay, kAltezzaDisplay, kZoom, this);
    s->setObjectName(name);
    return s;
}

void Calcolatore::crea()
{
    auto campo = [this](const QString& name) {
        auto* e = new QLineEdit(this);
        e->setObjectName(name);
        e->setAlignment(Qt::AlignRight);
        e->setMaximumWidth(130);
        return e;
    };
    auto importo = [this](const QString& name) {
        auto* l = new QLabel(this);
        l->setObjectName(name);
        l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        l->setMinimumWidth(130);
        return l;
    };
    txtAcqPzo_ = campo(QStringLiteral("txtAcqPzo"));
    txtVndPzo_ = campo(QStringLiteral("txtVndPzo"));
    txtQta_ = campo(QStringLiteral("txtQta"));
    lab_AcqImp_ = importo(QStringLiteral("lab_AcqImp"));
    lab_VndImp_ = importo(QStringLiteral("lab_VndImp"));
    DBCombo_ = new QComboBox(this);
    DBCombo_->setObjectName(QStringLiteral("DBCombo"));
    DBCombo_->setEditable(true);
    DBCombo_->setMinimumWidth(130);

    auto* acquisto = new QGroupBox(QStringLiteral("Acquisto"), this);
    auto* a = new QGridLayout(acquisto);
    a->addWidget(new QLabel(QStringLiteral("Prezzo acquisto"), this), 0, 0);
    a->addWidget(txtAcqPzo_, 0, 1);
    a->addWidget(new QLabel(QStringLiteral("Quantita'"), this), 1, 0);
    a->addWidget(txtQta_, 1, 1);
    a->addWidget(new QLabel(QStringLiteral("Importo "), this), 2, 0);
    a->addWidget(lab_AcqImp_, 2, 1);
    a->addWidget(new QLabel(QStringLiteral("Sistema"), this), 3, 0);
    a->addWidget(DBCombo_, 3, 1);
    auto* vendita = new QGroupBox(QStringLiteral("Vendita"), this);
    auto* v = new QGridLayout(vendita);
    v->addWidget(new QLabel(QStringLiteral("Prezzo vedita"), this), 0, 0);
    v->addWidget(txtVndPzo_, 0, 1);
    v->addWidget(new QLabel(QStringLiteral("Importo"), this), 1, 0);
    v->addWidget(lab_VndImp_, 1, 1);
    v->setRowStretch(2, 1);

    pic_PdP_ = display(QStringLiteral("pic_PdP"));
    pic_SLMM_ = display(QStringLiteral("pic_SLMM"));
    pic_SLP_ = display(QStringLiteral("pic_SLP"));
    pic_Commissioni_ = display(QStringLiteral("pic_Commissioni"));
    pic_GP_ = display(QStringLiteral("pic_GP"));
    pic_PercentualeGP_ = display(QStringLiteral("pic_PercentualeGP"));

    auto* risultati = new QGroupBox(QStringLiteral("Risultati"), this);
    auto* r = new QGridLayout(risultati);
    auto voce = [this, r](int row, int col, const QString& caption, QWidget* pic) {
        auto* l = new QLabel(caption, this);
        r->addWidget(l, row * 2, col);
        r->addWidget(pic, row * 2 + 1, col);
    };
    voce(0, 0, QStringLiteral("Punto di pareggio"), pic_PdP_);
    voce(0, 1, QStringLiteral("Commissioni"), pic_Commissioni_);
    voce(1, 0, QStringLiteral("Money managment"), pic_SLMM_);
    voce(1, 1, QStringLiteral("Guadagno"), pic_GP_);
    voce(2, 0, QStringLiteral("Percentual "), pic_SLP_);
    voce(2, 1, QStringLiteral("% Guadagno"), pic_PercentualeGP_);
    r->setHorizontalSpacing(18);

    cmd_OK_ = new QPushButton(QStringLiteral("Esci"), this);
    cmd_OK_->setObjectName(QStringLiteral("cmd_OK"));
    connect(cmd_OK_, &QPushButton::clicked, this, [this]() {
        platform::Forms::Unload(objectName());
    });

    auto* sinistra = new QVBoxLayout;
    sinistra->addWidget(acquisto);
    sinistra->addWidget(vendita);
    auto* sopra = new QHBoxLayout;
    sopra->addLayout(sinistra);
    sopra->addWidget(risultati, 1);
    auto* sotto = new QHBoxLayout;
    sotto->addStretch();
    sotto->addWidget(cmd_OK_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(sopra);
    layout->addLayout(sotto);
    resize(sizeHint());

    Module1::FiltroNumeri(txtAcqPzo_, 5, 2);
    Module1::FiltroNumeri(txtVndPzo_, 5, 2);
    Module1::FiltroNumeri(txtQta_, 8, 0);
    connect(txtAcqPzo_, &QLineEdit::textChanged, this, &Calcolatore::CalcolaAcquisto);
    connect(txtQta_, &QLineEdit::textChanged, this, &Calcolatore::CalcolaAcquisto);
    connect(txtVndPzo_, &QLineEdit::textChanged, this, &Calcolatore::CalcolaVendita);
    // A change of system recomputes the sale only: the break-even keeps its old value.
    connect(DBCombo_, &QComboBox::editTextChanged, this, &Calcolatore::CalcolaVendita);
}

void Calcolatore::CaricaCalcolatore()
{
    store::Recordset data1 = dbSet.OpenRecordset(QStringLiteral("SELECT * FROM System"));
    {
        const QSignalBlocker block(DBCombo_);
        store::Recordset lista = data1;
        while (!lista.Eof()) {
            DBCombo_->addItem(lista.Text(QStringLiteral("Cod")));
            lista.MoveNext();
        }
        DBCombo_->setEditText(data1.Text(QStringLiteral("Cod")));
    }
    lcdPdP_.NewLCD(pic_PdP_);
    lcdSLMM_.NewLCD(pic_SLMM_);
    lcdSLP_.NewLCD(pic_SLP_);
    lcdCommissioni_.NewLCD(pic_Commissioni_);
    lcdGP_.NewLCD(pic_GP_);
    lcdPercentualeGP_.NewLCD(pic_PercentualeGP_);
    for (mcLCD* l : {&lcdPdP_, &lcdSLMM_, &lcdSLP_, &lcdCommissioni_, &lcdGP_, &lcdPercentualeGP_})
        l->Caption(QString());
}

void Calcolatore::CalcolaAcquisto()
{
    rsSystem_ = dbSet.OpenRecordset("SELECT * FROM System WHERE Cod ='" + DBCombo_->currentText() + "'");
    const store::Recordset settaggi = dbSet.OpenRecordset(QStringLiteral("SELECT *  FROM Settaggi"));
    const QString acq = txtAcqPzo_->text();
    const QString qta = txtQta_->text();
    if (!acq.isEmpty() && !qta.isEmpty() && acq != QLatin1String("0") && qta != QLatin1String("0") && numerico(acq)) {
        const double A = numero(acq);
        const double Q = numero(qta);
        lab_AcqImp_->setText(num::Text(A * Q));
        const double I = numero(lab_AcqImp_->text());
        lcdSLP_.Caption(num::Text(num::Round(A - (settaggi.Number(QStringLiteral("SLP")) * A) / 100, 4)));
        lcdSLMM_.Caption(num::Text(num::Round(std::fabs(num::Divide(I - settaggi.Number(QStringLiteral("SLMM")), Q)), 4)));
        // Buy and sell commission spread over each share, with no minimum.
        const double C = num::Divide((I * rsSystem_.Number(QStringLiteral("Commissioni"))) / 1000 * 2, Q);
        lcdPdP_.Caption(num::Text(A + C));
    } else if (numerico(acq)) {
        lab_AcqImp_->clear();
        lcdSLP_.Caption(QString());
        lcdSLMM_.Caption(QString());
        lcdPdP_.Caption(QString());
    }
    if (!txtVndPzo_->text().isEmpty())
        CalcolaVendita();
}

void Calcolatore::CalcolaVendita()
{
    rsSystem_ = dbSet.OpenRecordset("SELECT * FROM System WHERE Cod ='" + DBCombo_->currentText() + "'");
    const QString imp = lab_AcqImp_->text();
    const QString vnd = txtVndPzo_->text();
    const QString qta = txtQta_->text();
    if (!imp.isEmpty() && imp != QLatin1String("0") && !vnd.isEmpty() && !qta.isEmpty() && vnd != QLatin1String("0")
        && qta != QLatin1String("0") && numerico(vnd)) {
        const double V = numero(vnd);
        const double Q = numero(qta);
        lab_VndImp_->setText(num::Text(V * Q));
        const double IA = numero(lab_AcqImp_->text());
        const double IV = numero(lab_VndImp_->text());
        const double rate = rsSystem_.Number(QStringLiteral("Commissioni"));
        const double minimo = rsSystem_.Number(QStringLiteral("CommissioniMin"));
        double CA = (IA * rate) / 1000;
        if (CA < minimo)
            CA = minimo;
        double CV = (IV * rate) / 1000;
        if (CV < minimo)
            CV = minimo;
        const double T = CA + CV;
        lcdCommissioni_.Caption(num::Text(T));
        const double G = num::Round((IV - IA) - T, 2);
        lcdGP_.Caption(num::Text(G));
        lcdPercentualeGP_.Caption(num::Text(num::Floor(num::Divide(G * 100, IA))));
    } else if (numerico(vnd)) {
        lab_VndImp_->clear();
        lcdCommissioni_.Caption(QString());
        lcdGP_.Caption(QString());
        lcdPercentualeGP_.Caption(QString());
    }
}
