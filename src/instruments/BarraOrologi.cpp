#include "instruments/BarraOrologi.h"

#include "instruments/ClockGeometry.h"
#include "instruments/clClock.h"
#include "platform/PictureSurface.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolBar>

namespace {

struct Fuso {
    const char* surface;
    const char* caption;
    const char* label;
    int ore; // hours added to the machine's clock, no daylight saving
    const char* tip;
};

constexpr Fuso kFusi[BarraOrologi::kOrologi] = {
    {"picClock", "Milano", "Text5", 0, "https://www.borsaitaliana.it"},
    {"picClock2", "New York", "Text4", -6, "https://www.nyse.com"},
    {"picClock3", "Tokyo", "Text3", 8, ""},
    {"picClock4", "Londra", "Text2", -1, ""},
    {"picClock5", "HongKong", "Text1", 7, ""},
};

// An odd width: a radius of half of it, rounded to even, reaches the last pixel.
constexpr int kLato = 49;

} // namespace

BarraOrologi::BarraOrologi(QToolBar* bar) : QObject(bar)
{
    setObjectName(QStringLiteral("BarraOrologi"));
    QFont nomi = bar->font();
    nomi.setBold(true);
    for (int i = 0; i < kOrologi; ++i) {
        const Fuso& f = kFusi[i];
        auto* cella = new QWidget(bar);
        auto* riga = new QHBoxLayout(cella);
        riga->setContentsMargins(i == 0 ? 8 : 18, 0, 4, 0);
        riga->setSpacing(6);
        auto* pic = new platform::PictureSurface(kLato, kLato, 1, cella);
        pic->setObjectName(QString::fromLatin1(f.surface));
        pic->SetAntialiasing(true);
        pic->SetBackColor(Qt::transparent); // the dial stands on the bar itself
        pic->Cls();
        if (f.tip[0])
            pic->setToolTip(QString::fromLatin1(f.tip));
        auto* nome = new QLabel(QString::fromLatin1(f.caption), cella);
        nome->setObjectName(QString::fromLatin1(f.label));
        nome->setFont(nomi);
        riga->addWidget(pic);
        riga->addWidget(nome);
        bar->addWidget(cella);
        orologi_[i] = pic;
    }
}

void BarraOrologi::Aggiorna(clClock& orologio)
{
    for (int i = 0; i < kOrologi; ++i) {
        orologio.SetClockTime(orologio::OraDelFuso(QTime::currentTime(), kFusi[i].ore));
        orologio.PaintHands(orologi_[i]);
    }
}
