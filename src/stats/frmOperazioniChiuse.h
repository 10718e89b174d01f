#pragma once
// The closed operations in a read-only grid.
#include <QWidget>

class QLabel;

namespace platform {
class DataGrid;
class DataSource;
} // namespace platform

class frmOperazioniChiuse final : public QWidget {
    Q_OBJECT
public:
    static frmOperazioniChiuse* Instance();
    frmOperazioniChiuse();

    Q_INVOKABLE void Main();
    void Colore();

    // The form's width in the normal window state, in twips.
    static constexpr int kLarghezza = 10420;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    platform::DataSource* dat_OperazioniChiuse_ = nullptr;
    platform::DataGrid* dbg_OperazioniChiuse_ = nullptr;
    QLabel* lab_Tabella_ = nullptr;
};
