#include "stats/frmMedie.h"

#include "app/Module1.h"
#include "platform/ChartStyle.h"
#include "platform/Forms.h"
#include "platform/PictureSurface.h"
#include "instruments/Quadrante.h"
#include "stats/Medie.h"
#include "store/Database.h"

#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QMdiSubWindow>
#include <QVBoxLayout>

#include <cmath>

using Module1::dbExe;
using Module1::dbSet;

namespace {
// The window's size limits in the normal state (twips).
constexpr int kLarghezzaMassima = 9900;
constexpr int kAltezzaMassima = 3400;

const QList<QPair<const char*, const char*>> kFigure = {
    {"Totale giorni  elaborati", "lab_TotGiorni"},
    {"Capitale medio  per operazione", "lab_CapitaleMedio"},
    {"Totale capitale investito", "lab_CapitaleInvestito"},
    {"Massimo guadagno ", "lab_MaxGain"},
    {"Massima perdita", "lab_MaxLose"},
    {"N°medio operazioni giornaliere", "lab_NumOperazioniGiorno"},
    {"Perdita media", "lab_PerditaMedia"},
    {"Guadagno medio", "lab_GuadagnoMedio"},
    {"Rapporto GM/PM", "Lab_GMsuPM"},
    {"Utile medio per operazione", "lab_UtileMedioOperazione"},
    {"Utile medio per giorno", "lab_UtileMedioGiorno"},
    {"% media giornaliera", "lab_PercMediaGiorno"},
};

constexpr QSize kQuadrante(112, 112);

// "Operazioni in guadagno ogni 10", 0 to 10: few winners in red, many in green.
QImage quadranteVinte()
{
    strum::Scala s;
    s.kind = strum::Kind::Center;
    s.step = 100;
    s.labelEvery = 2;
    s.label = [](int v) -> QString { return QString::number(v / 100); };
    s.bands = {{400, QColor(226, 98, 88)}, {600, QColor(236, 190, 70)}, {1000, QColor(92, 178, 98)}};
    return strum::Quadrante(s, kQuadrante);
}

// The luck factor, 0 to 100%: a result owed to one operation is luck, the higher the redder.
QImage quadranteFortuna()
{
    strum::Scala s;
    s.kind = strum::Kind::Bottom;
    s.step = 125;
    s.labelEvery = 4; // 0, 50 and 100%: more crowd the small quarter
    s.label = [](int v) -> QString { return QString::number(v / 10.0) + '%'; };
    s.bands = {{300, QColor(92, 178, 98)}, {600, QColor(236, 190, 70)}, {1000, QColor(226, 98, 88)}};
    return strum::Quadrante(s, kQuadrante);
}
} // namespace

frmMedie* frmMedie::Instance() { return platform::Form<frmMedie>(); }

frmMedie::frmMedie()
{
    setObjectName(QStringLiteral("frmMedie"));
    setWindowTitle(QStringLiteral("Medie"));
    setWindowIcon(QIcon(QStringLiteral(":/icons/10.svg")));

    FrameMedie_ = new QFrame(this);
    FrameMedie_->setObjectName(QStringLiteral("FrameMedie"));
    auto* griglia = new QGridLayout(FrameMedie_);
    griglia->setContentsMargins(8, 8, 8, 8);
    griglia->setHorizontalSpacing(6);
    griglia->setVerticalSpacing(4);
    const int righe = static_cast<int>(kFigure.size() + 1) / 2;
    for (int i = 0; i < kFigure.size(); ++i) {
        const int r = i % righe, c = (i / righe) * 3;
        griglia->addWidget(new QLabel(QString::fromUtf8(kFigure[i].first), FrameMedie_), r, c);
        auto* valore = new QLabel(QStringLiteral("0"), FrameMedie_);
        valore->setObjectName(QString::fromLatin1(kFigure[i].second));
        valore->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        valore->setMinimumWidth(52);
        griglia->addWidget(valore, r, c + 1);
    }
    griglia->setColumnMinimumWidth(2, 8);

    auto quadrante = [this, griglia, righe](int col, const QString& name, const QString& caption, const QString& labName,
                                             const QImage& picture) {
        auto* box = new QVBoxLayout;
        box->setSpacing(2);
        auto* titolo = new QLabel(caption, FrameMedie_);
        titolo->setWordWrap(true);
        titolo->setAlignment(Qt::AlignHCenter | Qt::AlignBottom);
        titolo->setFixedSize(picture.width() + 12, titolo->fontMetrics().height() * 3);
        auto* surface = new platform::PictureSurface(picture.width(), picture.height(), 1, FrameMedie_);
        surface->setObjectName(name);
        surface->SetPicture(picture);
        auto* valore = new QLabel(QStringLiteral("0"), FrameMedie_);
        valore->setObjectName(labName);
        valore->setAlignment(Qt::AlignCenter);
        box->addWidget(titolo);
        box->addWidget(surface, 0, Qt::AlignHCenter);
        box->addWidget(valore);
        griglia->addLayout(box, 0, col, righe, 1, Qt::AlignTop);
        return surface;
    };
    griglia->setColumnMinimumWidth(5, 4);
    Picture_WL_ = quadrante(6, QStringLiteral("Picture_WL"), QStringLiteral("Operazioni in guadagno ogni 10"),
                            QStringLiteral("lab_WL"), quadranteVinte());
    Picture_FC_ = quadrante(7, QStringLiteral("Picture_FC"), QStringLiteral("Rapporto tra  massimo guadagno e utile netto"),
                            QStringLiteral("lab_FattoreCulo"), quadranteFortuna());
    FrameMedie_->adjustSize();
    FrameMedie_->move(platform::Twips(1), 0);
    // Never smaller than the figures and dials it shows.
    setMinimumSize(std::min(FrameMedie_->width() + 2, platform::Twips(kLarghezzaMassima)),
                   std::min(FrameMedie_->height() + 2, platform::Twips(kAltezzaMassima)));
    resize(std::min(FrameMedie_->width() + 8, platform::Twips(kLarghezzaMassima)),
           std::min(FrameMedie_->height() + 8, platform::Twips(kAltezzaMassima)));

    // Load: colours, then the one computation.
    Colore();
    CalcolaMedie();
}

void frmMedie::Colore() { Module1::ApplicaColori(this); }

QLabel* frmMedie::lab(const char* name) const { return findChild<QLabel*>(QString::fromLatin1(name)); }

double frmMedie::numero(const char* name) const
{
    const std::optional<double> v = num::Parse(lab(name)->text());
    if (!v)
        throw platform::Failure("Tipo non corrispondente");
    return *v;
}

void frmMedie::CalcolaMedie()
{
    store::Recordset rs = dbExe.OpenRecordset(QStringLiteral("SELECT *  FROM OperazioniChiuse"));
    const store::Recordset settaggi = dbSet.OpenRecordset(QStringLiteral("SELECT *  FROM Settaggi"));
    const stats::FigureMedie m = stats::CalcolaFigureMedie(rs);
    const stats::Bilancio& b = m.bilancio;
    const double numOperazioni = b.numOperazioni;
    const double numGiorni = dbExe.OpenRecordset(QStringLiteral("SELECT DISTINCT data  FROM OperazioniChiuse")).RecordCount();
    const double percTotale = b.percGain - std::fabs(b.percPerdite);
    const double capitale = num::ValueOf(m.capitaleInvestito);

    lab("lab_TotGiorni")->setText(num::Text(numGiorni));
    lab("lab_CapitaleMedio")->setText(stats::TestoIntero(num::Divide(capitale, numOperazioni)));
    lab("lab_CapitaleInvestito")->setText(stats::TestoIntero(capitale));
    lab("lab_MaxGain")->setText(num::Text(m.massimoGuadagno));
    lab("lab_MaxLose")->setText(num::Text(m.massimaPerdita));
    lab("lab_NumOperazioniGiorno")->setText(num::Text(num::Round(num::Divide(numOperazioni, numGiorni), 1)));

    if (b.numPerdite == 0) {
        lab("lab_PerditaMedia")->setText(QStringLiteral("0"));
        lab("Lab_GMsuPM")->setText(QStringLiteral("0"));
    } else {
        lab("lab_PerditaMedia")->setText(num::Text(num::Round(num::Divide(b.sommaPerdite, b.numPerdite), 1)));
        // Both captions as they stand now: the average gain is only written below,
        // so the ratio never uses the figure of the same run.
        lab("Lab_GMsuPM")->setText(num::Text(num::Round(num::Divide(numero("lab_GuadagnoMedio"), numero("lab_PerditaMedia")), 1)));
    }

    if (b.sommaGain == 0)
        return;
    lab("lab_UtileMedioOperazione")->setText(stats::TestoIntero(num::Divide(b.totaleGP, numOperazioni)));
    lab("lab_UtileMedioGiorno")->setText(stats::TestoIntero(num::Divide(b.totaleGP, numGiorni)));
    lab("lab_PercMediaGiorno")->setText(stats::TestoIntero(num::Divide(percTotale, numGiorni)));
    lab("lab_GuadagnoMedio")->setText(num::Text(num::Round(num::Divide(b.sommaGain, b.numGain), 1)));
    const double massimo = num::ValueOf(m.massimoGuadagno);
    if (b.totaleGP != 0 && massimo != 0)
        lab("lab_FattoreCulo")->setText(num::Text(num::Round((100 * massimo) / b.totaleGP, 2)));
    // Clamped by reading the caption back.
    if (numero("lab_FattoreCulo") < 0)
        lab("lab_FattoreCulo")->setText(QStringLiteral("0"));
    if (numero("lab_FattoreCulo") > 1000)
        lab("lab_FattoreCulo")->setText(QStringLiteral("1000"));

    strumWL_.NewLCD(Picture_WL_);
    if (b.numGain > 0) {
        // Even operations stay out of the denominator.
        const double v = (10.0 * b.numGain) / (b.numPerdite + b.numGain);
        strumWL_.Center(num::ToInt16(100 * num::Round(v, 3)));
        lab("lab_WL")->setText(num::Text(num::Round(v, 1)));
    } else {
        strumWL_.Center(0);
        lab("lab_WL")->setText(QStringLiteral("0"));
    }
    // Beyond the scale of 1000 when the best operation made more than the whole result.
    strumFC_.NewLCD(Picture_FC_);
    strumFC_.Bottom(num::ToInt16(numero("lab_FattoreCulo") * 10));
}

void frmMedie::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    auto* sub = qobject_cast<QMdiSubWindow*>(parentWidget());
    QWidget* finestra = sub ? static_cast<QWidget*>(sub) : this;
    if (finestra->isMaximized()) {
        FrameMedie_->move((width() - FrameMedie_->width()) / 2, FrameMedie_->y());
        return;
    }
    // In the normal state the window never grows beyond its limits.
    const int W = width() * 12, H = height() * 12;
    const int w = W > kLarghezzaMassima ? platform::Twips(kLarghezzaMassima + 1) : width();
    const int h = H > kAltezzaMassima ? platform::Twips(kAltezzaMassima) : height();
    FrameMedie_->move(platform::Twips(1), FrameMedie_->y());
    if (w != width() || h != height())
        finestra->resize(finestra->size() - size() + QSize(w, h));
}
