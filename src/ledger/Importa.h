#pragma once
// Brings trades into the portfolio: a format, a folder, the files ticked in it, a
// preview of what they hold, and the import row by row. Real Tick III day files are
// read again at OK; our own workbook and the guided import's files bring in what the
// preview holds, and the guided import's account movements with it.
#include "ledger/Staging.h"

#include <QDialog>
#include <QHash>

#include <cstdint>
#include <functional>
#include <optional>

class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTableView;

namespace ledger {
class ImportaEseguiti;
}

namespace platform {
class CheckList;
class DataSource;
class DirList;
class DriveList;
class EditableRecordsetModel;
class FileList;
} // namespace platform

class Importa final : public QDialog {
    Q_OBJECT
public:
    static Importa* Instance();
    Importa();

    void done(int result) override;

    // The guided mapping of one file: what it stages, or nothing when the user
    // cancels or the file can't be read (the mapping window has said why).
    using Guidata = std::function<std::optional<ledger::Staging>(const QString& path, QWidget* parent)>;
    void SetImportazioneGuidata(Guidata guidata) { guidata_ = std::move(guidata); }

private slots:
    void Combo1_Click(int index);
    void Drive1_Change();
    void Dir1_Change();
    void List1_Click();
    void cmd_Annulla_Click();
    void cmd_Ok_Click();

private:
    void crea();
    void RiempiListaFile();
    void LeggiRealTick(const QString& path);
    void ProbaFoglio(const QString& path);
    QList<ledger::EseguitoImportato> LeggiFoglioEseguiti(const QString& path);
    // The guided mapping of the files ticked since the last click; unticks a file it cancels.
    void guidaNuoveSpunte();
    // The import with the progress bar and the question of a refused row.
    ledger::ImportaEseguiti importatore(std::int16_t& contatore, const std::function<bool(const QString&)>& domanda);
    // OK of the formats that bring in what the preview holds.
    void importaAnteprima();
    // OK with nothing staged: says so, the window stays.
    void nienteDaImportare();
    void AvanzaBarra(std::int16_t& contatore);
    void dipingiBarra();
    // The full path of a ticked item, as both the preview and the import build it.
    QString percorso(int item) const;
    void anteprima();
    // Empties the staging table and leaves EseguitiTemp as the trade window expects it.
    void chiudiSenzaImportare();

    QComboBox* Combo1_ = nullptr;
    platform::DriveList* Drive1_ = nullptr;
    platform::DirList* Dir1_ = nullptr;
    platform::FileList* File1_ = nullptr;
    platform::CheckList* List1_ = nullptr;
    QLabel* lab_FileSelezionati_ = nullptr;
    QLabel* lab_NumeroEseguiti_ = nullptr;
    platform::DataSource* Data1_ = nullptr;
    platform::EditableRecordsetModel* modello_ = nullptr;
    QTableView* DBGrid1_ = nullptr;
    QProgressBar* ProgressBar1_ = nullptr;
    QPushButton* cmd_Ok_ = nullptr;
    QPushButton* cmd_Annulla_ = nullptr;
    bool importando_ = false;
    bool chiusa_ = false;
    Guidata guidata_;
    // What the guided mapping made of each ticked file, by path.
    QHash<QString, ledger::Staging> guidate_;
    bool guidando_ = false;
    int formatoPrecedente_ = -1;
    int percentoDipinto_ = -1;
};
