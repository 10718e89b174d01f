#pragma once
// The open positions at load price, the liquidity left and a dial with its share.
#include "instruments/mcLCD.h"
#include "store/Recordset.h"

#include <QWidget>

class QLabel;

namespace platform {
class Chart;
class ChartStyleSwitch;
class DataGrid;
class DataSource;
class PictureSurface;
} // namespace platform

class frmPortafoglio final : public QWidget {
    Q_OBJECT
public:
    static frmPortafoglio* Instance();
    frmPortafoglio();

    Q_INVOKABLE void Main();
    void Colore();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void crea();

    platform::DataSource* dat_Portafoglio_ = nullptr;
    platform::DataGrid* DBGrid2_ = nullptr;
    platform::Chart* msc_Portafoglio_ = nullptr;
    platform::ChartStyleSwitch* frm_Grafici_ = nullptr;
    QWidget* pannello_ = nullptr;
    QLabel* lab_ValorePortafoglio_ = nullptr;
    QLabel* lab_Liquidita_ = nullptr;
    platform::PictureSurface* Picture1_ = nullptr;
    Strum strum_;
    store::Recordset rsPortafoglio_;
    store::Recordset rsSettaggi_;
};
