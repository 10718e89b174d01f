#pragma once
// Averages and two ratios of the closed operations, with two dials. Computed once
// when the window loads: the frame does not refresh it.
#include "instruments/mcLCD.h"

#include <QWidget>

class QFrame;
class QLabel;

namespace platform {
class PictureSurface;
}

class frmMedie final : public QWidget {
    Q_OBJECT
public:
    static frmMedie* Instance();
    frmMedie();
    void Colore();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void CalcolaMedie();
    QLabel* lab(const char* name) const;
    // The number a label shows, as the next step reads it back.
    double numero(const char* name) const;

    QFrame* FrameMedie_ = nullptr;
    platform::PictureSurface* Picture_WL_ = nullptr;
    platform::PictureSurface* Picture_FC_ = nullptr;
    Strum strumWL_;
    Strum strumFC_;
};
