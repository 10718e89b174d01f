#pragma once
// The child window in which the trader types, changes and deletes trades.
#include "store/Recordset.h"

#include <QWidget>

class QComboBox;
class QDateEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace platform {
class DataGrid;
class DataSource;
} // namespace platform

class frmEseguiti final : public QWidget {
    Q_OBJECT
public:
    static frmEseguiti* Instance();
    frmEseguiti();

    Q_INVOKABLE void Main();
    void Colore();

    // Part of the window that tests and the commit read.
    platform::DataSource* DatEseguiti() const { return dat_Eseguiti_; }
    platform::DataGrid* Grid() const { return dbg_Eseguiti_; }
    double PosizioneRiga() const { return dPosizioneRiga_; }

private slots:
    void cmd_Ok_Click();
    void Option1_Click();
    void cmb_Tipo_Click();
    void dbg_Eseguiti_RowColChange();
    void cmb_Codice_Click();
    void cmb_Titolo_Click();
    void dbc_Errore_Click();
    void txtPrezzo_Change();
    void txtQta_Change();

private:
    void crea();
    bool modoNuovo() const;
    bool modoModifica() const;
    bool modoElimina() const;
    void logicaModo();
    void logicaTipo();
    void logicaErrore();
    void ControlloConferma();
    void AbilitaCampi(bool on);
    void mostraTesti(bool testi);
    void riempiErroreEOttimale();
    // The fields both Modifica and Elimina take from the selected row.
    void riempiDallaRiga();
    void aggiornaImporto(bool daPrezzo);
    void sincronizzaQuantita();
    void riempiPosizioni(bool rigaPrima);
    void impostaData(const QString& text);
    QString codice() const;
    QString titolo() const;
    void eseguiModifica();
    void eseguiNuovo();
    void eseguiEliminazione();
    void annulla(const QString& head);

    QRadioButton* Option1_[4] = {};
    QDateEdit* dtp_Data_ = nullptr;
    QComboBox* cmb_Tipo_ = nullptr;
    QComboBox* dbc_System_ = nullptr;
    QLineEdit* txt_Codice_ = nullptr;
    QComboBox* cmb_Codice_ = nullptr;
    QLineEdit* txt_Titolo_ = nullptr;
    QComboBox* cmb_Titolo_ = nullptr;
    QLineEdit* txtQta_ = nullptr;
    QLineEdit* txtPrezzo_ = nullptr;
    QLabel* lab_Importo_ = nullptr;
    QComboBox* dbc_Errore_ = nullptr;
    QLineEdit* txtPzoOttimale_ = nullptr;
    QLabel* lab_PzoOttimale_ = nullptr;
    QLabel* lab_RowSelect_ = nullptr;
    QLabel* lab_TotaleEseguiti_ = nullptr;
    QPushButton* cmd_Ok_ = nullptr;
    platform::DataSource* dat_Eseguiti_ = nullptr;
    platform::DataSource* dat_System_ = nullptr;
    platform::DataSource* dat_Errore_ = nullptr;
    platform::DataGrid* dbg_Eseguiti_ = nullptr;

    store::Recordset rsEseguiti_;
    store::Recordset rsEseguitiTemp_;
    store::Recordset rsPortafoglio_;
    store::Recordset rsErrori_;
    double dPosizioneRiga_ = 0;
    bool inLogica_ = false;
    bool copiaRidotta_ = false; // the grid's Delete has taken rows out of EseguitiTemp
};
