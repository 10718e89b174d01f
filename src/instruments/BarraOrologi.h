#pragma once
// The five world clocks of the frame's clock bar, each with its caption beside it.
#include <QObject>

class QToolBar;
namespace platform {
class PictureSurface;
}
class clClock;

class BarraOrologi final : public QObject {
    Q_OBJECT
public:
    // Each clock goes on the bar as an item of its own, so a narrow frame keeps those that fit.
    explicit BarraOrologi(QToolBar* bar);

    static constexpr int kOrologi = 5;
    // Surface i of the table, counted from 0 (picClock first).
    platform::PictureSurface* Orologio(int i) const { return orologi_[i]; }
    // One round in the order of the table: the machine's time plus each clock's
    // offset, painted by the one clock object.
    void Aggiorna(clClock& orologio);

private:
    platform::PictureSurface* orologi_[kOrologi] = {};
};
