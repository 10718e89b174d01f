#include "prefs/frmBenvenuto.h"

#include "app/Module1.h"
#include "platform/Forms.h"
#include "platform/Immagine.h"

#include <QCheckBox>
#include <QLabel>
#include <QMouseEvent>

namespace {

constexpr QSize kFinestra(640, 400);
constexpr QSize kImmagine(164, 150);
const QColor kTesto(0xee, 0xf3, 0xf8);
const QColor kBordo(0xf3, 0xc9, 0x4f);

const char* const kDisegni[3] = {":/images/benvenuto-nuovo.svg", ":/images/benvenuto-apri.svg",
                                 ":/images/benvenuto-ultimo.svg"};

void colora(QWidget* w, QPalette::ColorRole role, const QColor& c)
{
    QPalette p = w->palette();
    p.setColor(role, c);
    w->setPalette(p);
}

} // namespace

frmBenvenuto* frmBenvenuto::Instance() { return platform::Form<frmBenvenuto>(); }

frmBenvenuto::frmBenvenuto()
{
    setObjectName(QStringLiteral("frmBenvenuto"));
    setWindowTitle(QStringLiteral("Benvenuti in Quorvel"));
    setModal(true);
    setFixedSize(kFinestra);
    const qreal dpr = devicePixelRatioF();

    // Its own colours, not the scheme's: the pictures are drawn for them.
    Picture1_ = new QLabel(this);
    Picture1_->setObjectName(QStringLiteral("Picture1"));
    Picture1_->setGeometry(QRect(QPoint(0, 0), kFinestra));
    Picture1_->setPixmap(platform::ImmagineSvg(QStringLiteral(":/images/benvenuto-sfondo.svg"), kFinestra, dpr));
    Picture1_->setMouseTracking(true);
    Picture1_->installEventFilter(this);

    const int passo = kImmagine.width() + 28;
    const int sinistra = (kFinestra.width() - 3 * kImmagine.width() - 2 * 28) / 2;
    for (int i = 0; i < 3; ++i) {
        auto* img = new QLabel(Picture1_);
        img->setObjectName(QStringLiteral("Image%1").arg(i + 1));
        img->setGeometry(sinistra + i * passo, 112, kImmagine.width(), kImmagine.height());
        img->setPixmap(platform::ImmagineSvg(QString::fromLatin1(kDisegni[i]), kImmagine - QSize(8, 8), dpr));
        img->setAlignment(Qt::AlignCenter);
        img->setLineWidth(2);
        colora(img, QPalette::WindowText, kBordo);
        img->setCursor(Qt::PointingHandCursor);
        img->setMouseTracking(true);
        img->installEventFilter(this);
        Image_[i] = img;
    }

    Label2_ = new QLabel(Picture1_);
    Label2_->setObjectName(QStringLiteral("Label2"));
    Label2_->setGeometry(40, 282, kFinestra.width() - 80, 46);
    Label2_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    Label2_->setWordWrap(true);
    colora(Label2_, QPalette::WindowText, kTesto);
    QFont f = Label2_->font();
    f.setPointSizeF(f.pointSizeF() * 1.1);
    Label2_->setFont(f);

    Check1_ = new QCheckBox(QStringLiteral("Mostra questa schermata di benvenuto all'avvio"), Picture1_);
    Check1_->setObjectName(QStringLiteral("Check1"));
    Check1_->setChecked(true);
    colora(Check1_, QPalette::WindowText, kTesto);
    Check1_->adjustSize();
    Check1_->move(28, kFinestra.height() - Check1_->height() - 18);

    // Load.
    rsApriUltimo_ = Module1::dbSet.OpenRecordset(QStringLiteral("SELECT  ApriUltimo FROM Settaggi"));
}

void frmBenvenuto::evidenzia(int immagine)
{
    for (int i = 0; i < 3; ++i)
        Image_[i]->setFrameShape(i + 1 == immagine ? QFrame::Box : QFrame::NoFrame);
    switch (immagine) {
    case 1: Label2_->setText(QStringLiteral("Apre nuovo protafoglio")); break;
    case 2: Label2_->setText(QStringLiteral("Apre la finestra di dialogo: apri portafoglio")); break;
    case 3:
        Label2_->setText(QStringLiteral("Apre: ") + rsApriUltimo_.Text(QStringLiteral("ApriUltimo"))
                         + QStringLiteral(" l'ultimo portafoglio modificato"));
        break;
    default: Label2_->clear(); break;
    }
}

bool frmBenvenuto::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseMove) {
        for (int i = 0; i < 3; ++i) {
            if (watched == Image_[i]) {
                evidenzia(i + 1);
                return true; // not on to the background under it
            }
        }
        if (watched == Picture1_)
            evidenzia(0);
    } else if (event->type() == QEvent::MouseButtonRelease && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        for (int i = 0; i < 3; ++i) {
            if (watched == Image_[i]) {
                Module1::iSceltaBenvenuto = i + 1;
                ChiudiBenvenuto();
                return true;
            }
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmBenvenuto::ChiudiBenvenuto()
{
    // Only a choice stores the box; closing the window otherwise keeps the setting.
    if (!Check1_->isChecked())
        Module1::dbSet.Execute(QStringLiteral("UPDATE Settaggi SET Benvenuto = False"));
    accept();
}
