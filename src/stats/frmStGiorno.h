#pragma once
// The money result of the closed operations by day of the week, Monday to Friday.
#include <QWidget>

namespace platform {
class Chart;
class ChartStyleSwitch;
class FlexGrid;
} // namespace platform

class frmStGiorno final : public QWidget {
    Q_OBJECT
public:
    static frmStGiorno* Instance();
    frmStGiorno();
    Q_INVOKABLE void Main();
    void Colore();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* sinistra_ = nullptr;
    platform::FlexGrid* MSFlexGrid_StGiorno_ = nullptr;
    platform::Chart* msc_Giorno_ = nullptr;
    platform::ChartStyleSwitch* frm_Grafici_ = nullptr;
};
