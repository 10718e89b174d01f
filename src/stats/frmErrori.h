#pragma once
// The error tags of the trades: counted, costed against the optimal price and
// ordered by frequency and by cost. Each refresh rebuilds the counters of Errori.
#include "store/Recordset.h"

#include <QWidget>

class QLabel;

namespace platform {
class Chart;
class ChartStyleSwitch;
class DataGrid;
class DataSource;
} // namespace platform

class frmErrori final : public QWidget {
    Q_OBJECT
public:
    static frmErrori* Instance();
    frmErrori();
    Q_INVOKABLE void Main();
    void Colore();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QLabel* lab(const char* name) const;

    QWidget* sinistra_ = nullptr;
    QLabel* Label1_ = nullptr;
    platform::DataSource* dat_Errori_ = nullptr;
    platform::DataGrid* DBGrid1_ = nullptr;
    platform::Chart* msc_Errori_ = nullptr;
    platform::ChartStyleSwitch* frm_Grafici_ = nullptr;
    // Kept for the window's life, as the counting leaves them.
    store::Recordset eseguiti_;
    store::Recordset catalogo_;
};
