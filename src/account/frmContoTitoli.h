#pragma once
// The securities account: movements of money that are no trades, and the balance.
#include "account/Conto.h"

#include <QWidget>

#include <cstdint>

class QComboBox;
class QDateEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace platform {
class Chart;
class ChartStyleSwitch;
class DataGrid;
class DataSource;
} // namespace platform

class frmContoTitoli final : public QWidget {
    Q_OBJECT
public:
    static frmContoTitoli* Instance();
    frmContoTitoli();

    Q_INVOKABLE void Main();
    void Colore();

    platform::DataSource* DatConto() const { return dat_Conto_; }
    platform::DataGrid* Grid() const { return DBGrid1_; }
    std::int16_t PosizioneConto() const { return nPosizioneConto_; }

private slots:
    void cmd_Ok_Click();
    void Option1_Click();
    void DBGrid1_RowColChange();
    void txtImporto_Change();

private:
    void crea();
    void CalcolaSaldo();
    void logicaModo();
    // Fills the four fields from the selected row of the grid.
    void riempiDallaRiga();
    void sfondoDescrizione(const QColor& color);
    void scegliNuovo();
    bool modoNuovo() const;
    bool modoModifica() const;
    bool modoElimina() const;
    account::CampiMovimento campi() const;
    void eseguiEliminazione();
    void eseguiNuovo(store::Recordset& conto);
    void eseguiModifica();
    // Moves the grid's cursor from its first row by n rows, at most to its last.
    void vaiAllaRiga(int n);

    QGroupBox* frm_Modo_ = nullptr;
    QGroupBox* frm_Movimento_ = nullptr;
    QRadioButton* Option1_[4] = {};
    QDateEdit* dtp_Data_ = nullptr;
    QComboBox* cmb_Tipo_ = nullptr;
    QLineEdit* txtImporto_ = nullptr;
    QLineEdit* txt_Descrizione_ = nullptr;
    QPushButton* cmd_Ok_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QLabel* lab_Saldo_ = nullptr;
    QLabel* lab_NessunPortafoglio_ = nullptr;
    platform::DataSource* dat_Conto_ = nullptr;
    platform::DataGrid* DBGrid1_ = nullptr;
    platform::Chart* msc_ContoTitoli_ = nullptr;
    platform::ChartStyleSwitch* frm_Grafici_ = nullptr;
    std::int16_t nPosizioneConto_ = 0;
};
