#pragma once
// The two curves of the closed operations, one point per operation.
#include <QWidget>

class QFrame;
class QLabel;
class QLineEdit;

namespace platform {
class Chart;
class ChartStyleSwitch;
} // namespace platform

// What both curve windows share: the chart over the window's width, the
// six-way style switch under it, and the band of captions below.
class CurvaOperazioni : public QWidget {
    Q_OBJECT
protected:
    CurvaOperazioni(const QString& name, const QString& caption, const QString& chartName);
    // Lays out the band under the switch; called by the resize.
    virtual void disponiLegenda(const QRect& switchGeometry) = 0;
    void resizeEvent(QResizeEvent* event) override;
    // The resize rule of the chart and the switch, then the band under them.
    void ridisponi();
    // The caption line at the window's foot.
    QLineEdit* testo(const QString& name, const QString& text);

    platform::Chart* chart_ = nullptr;
    platform::ChartStyleSwitch* frm_Grafici_ = nullptr;
};

class frmCapitale final : public CurvaOperazioni {
    Q_OBJECT
public:
    static frmCapitale* Instance();
    frmCapitale();
    Q_INVOKABLE void Main();
    void Colore();

private:
    void disponiLegenda(const QRect& switchGeometry) override;
    QLineEdit* Text1_ = nullptr;
};

class frmGrOperazioni final : public CurvaOperazioni {
    Q_OBJECT
public:
    static frmGrOperazioni* Instance();
    frmGrOperazioni();
    Q_INVOKABLE void Main();
    void Colore();

private:
    void disponiLegenda(const QRect& switchGeometry) override;
    QLineEdit* Text1_ = nullptr;
    QLineEdit* Text2_ = nullptr;
    QFrame* Picture1_ = nullptr;
    QFrame* Picture2_ = nullptr;
    QLabel* lab_Didascalia_ = nullptr;
};
