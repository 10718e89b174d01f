#pragma once
// The what-if window for one round trip: break-even, stops, commissions and gain on LCD displays.
#include "instruments/mcLCD.h"
#include "store/Recordset.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace platform {
class PictureSurface;
}

class Calcolatore final : public QWidget {
    Q_OBJECT
public:
    static Calcolatore* Instance();
    Calcolatore();

    // Pixel size of each display surface (2100 x 380 twips less the 3D border).
    static constexpr int kLarghezzaDisplay = 136;
    static constexpr int kAltezzaDisplay = 21;

private slots:
    void CalcolaAcquisto();
    void CalcolaVendita();

private:
    void CaricaCalcolatore();
    void crea();
    platform::PictureSurface* display(const QString& name);

    QLineEdit* txtAcqPzo_ = nullptr;
    QLineEdit* txtVndPzo_ = nullptr;
    QLineEdit* txtQta_ = nullptr;
    QComboBox* DBCombo_ = nullptr;
    QLabel* lab_AcqImp_ = nullptr;
    QLabel* lab_VndImp_ = nullptr;
    platform::PictureSurface* pic_PdP_ = nullptr;
    platform::PictureSurface* pic_SLMM_ = nullptr;
    platform::PictureSurface* pic_SLP_ = nullptr;
    platform::PictureSurface* pic_Commissioni_ = nullptr;
    platform::PictureSurface* pic_GP_ = nullptr;
    platform::PictureSurface* pic_PercentualeGP_ = nullptr;
    QPushButton* cmd_OK_ = nullptr;

    store::Recordset rsSystem_;
    mcLCD lcdPdP_, lcdSLMM_, lcdSLP_, lcdCommissioni_, lcdGP_, lcdPercentualeGP_;
};
