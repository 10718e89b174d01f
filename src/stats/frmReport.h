#pragma once
// The balance sheet of the closed operations: three panels of figures and three charts.
#include <QWidget>

class QGroupBox;
class QLabel;

namespace platform {
class Chart;
class ChartStyleSwitch;
} // namespace platform

class frmReport final : public QWidget {
    Q_OBJECT
public:
    static frmReport* Instance();
    frmReport();
    Q_INVOKABLE void Main();
    void Colore();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QGroupBox* pannello(const QString& name, const QString& title, const QList<QPair<QString, QList<QString>>>& rows,
                        const QList<QColor>& swatches);
    QLabel* lab(const QString& name) const;

    QGroupBox* FrameBilancio_ = nullptr;
    QGroupBox* FrameOperazioni_ = nullptr;
    QGroupBox* FramePercentuali_ = nullptr;
    platform::Chart* msc_Bilancio_ = nullptr;
    platform::Chart* msc_Operazioni_ = nullptr;
    platform::Chart* msc_OperazioniPercentuali_ = nullptr;
    platform::ChartStyleSwitch* frm_Grafici_ = nullptr;
    int swatch_ = 0;
};
