#pragma once
// An analog dial without a second hand; one object paints any number of surfaces in turn.
#include <QTime>

#include <cstdint>

namespace platform {
class PictureSurface;
}

class clClock {
public:
    // In spite of its name the dial's radius in pixels, and the centre's x and y.
    std::int16_t diameter = 0;

    // Paints the clock for the time set on the surface, in its fore colour; nothing
    // when that time, to the second, was the last one painted.
    void PaintHands(platform::PictureSurface* surface);
    void SetClockTime(QTime ora) { OraClock_ = ora; }

private:
    QTime OraClock_;
    QTime UltimaOra_;
};
