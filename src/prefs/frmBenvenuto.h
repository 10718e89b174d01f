#pragma once
// The welcome window: three pictures for the three ways to a portfolio.
#include "prefs/FinestraAvvio.h"
#include "store/Recordset.h"

class QCheckBox;
class QLabel;

class frmBenvenuto final : public prefs::FinestraAvvio {
    Q_OBJECT
public:
    static frmBenvenuto* Instance();
    frmBenvenuto();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The picture under the mouse (0 for none) gets the border and its line.
    void evidenzia(int immagine);
    void ChiudiBenvenuto();

    QLabel* Picture1_ = nullptr;
    QLabel* Image_[3] = {};
    QLabel* Label2_ = nullptr;
    QCheckBox* Check1_ = nullptr;
    store::Recordset rsApriUltimo_;
};
