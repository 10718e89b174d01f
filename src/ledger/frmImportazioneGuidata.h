#pragma once
// The guided import of a broker's file: the user says once what each column means,
// sees live what will come in, and may keep the mapping under a name.
#include "ledger/FileBroker.h"
#include "ledger/Mappatura.h"

#include <QDialog>

#include <array>
#include <memory>
#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QStandardItemModel;
class QTableView;

class frmImportazioneGuidata final : public QDialog {
    Q_OBJECT
public:
    // The window for a file, or nullptr after a message when the file can't be read.
    static std::unique_ptr<frmImportazioneGuidata> Apri(const QString& path, QWidget* parent = nullptr);
    // The window shown modally for a file: what OK staged, nothing when the user cancels
    // or the file can't be read (the message has said why).
    static std::optional<ledger::Staging> Esegui(const QString& path, QWidget* parent = nullptr);
    // Throws platform::Failure with the user's message when the file can't be read.
    explicit frmImportazioneGuidata(const QString& path, QWidget* parent = nullptr);

    // What OK staged: the trades and movements in the order they go in; empty otherwise.
    const ledger::Staging& Risultato() const { return risultato_; }

private slots:
    void spn_Intestazione_Change();
    void cmb_Separatore_Click();
    void cmb_Modello_Click();
    void cmd_SalvaModello_Click();
    void cmd_Ok_Click();

private:
    void crea();
    // The model that fits the file, or "Personalizzato" with the header guessed.
    void riconosci();
    void usaModello(const ledger::Mappatura& m);
    // Controls from the mapping, without their change events.
    void mostra();
    void riempiModelli();
    void riempiFile();
    void riempiColonne();
    // The words and formats from the controls, formats guessed again when `formati`.
    void leggiControlli(bool formati);
    void anteprima();
    QString system() const;

    ledger::FileBroker file_;
    ledger::Mappatura mappa_;
    QList<ledger::Mappatura> salvati_;
    ledger::Staging risultato_;
    bool mostrando_ = false;

    QStandardItemModel* righeFile_ = nullptr;
    QStandardItemModel* righeAnteprima_ = nullptr;
    QTableView* tbl_File_ = nullptr;
    QSpinBox* spn_Intestazione_ = nullptr;
    QComboBox* cmb_Separatore_ = nullptr;
    QComboBox* cmb_Decimale_ = nullptr;
    QComboBox* cmb_FormatoData_ = nullptr;
    QComboBox* cmb_Modello_ = nullptr;
    std::array<QComboBox*, ledger::kCampi> colonne_{};
    std::array<QLineEdit*, ledger::kParole> parole_{};
    QComboBox* dbc_System_ = nullptr;
    QTableView* tbl_Anteprima_ = nullptr;
    QLabel* lab_Eseguiti_ = nullptr;
    QLabel* lab_Movimenti_ = nullptr;
    QLabel* lab_Scartate_ = nullptr;
    QLineEdit* txt_NomeModello_ = nullptr;
    QPushButton* cmd_SalvaModello_ = nullptr;
    QPushButton* cmd_Ok_ = nullptr;
    QPushButton* cmd_Annulla_ = nullptr;
};
