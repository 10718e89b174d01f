#pragma once
// The editor of the error catalogue: codes and descriptions in a grid that
// takes changes, new rows and deletions, the note of the selected code, and the
// restore of the catalogue as delivered.
#include <QDialog>

class QLineEdit;
class QTableView;

namespace platform {
class DataSource;
class EditableRecordsetModel;
} // namespace platform

class frmPersonalizzaErrori final : public QDialog {
    Q_OBJECT
public:
    static frmPersonalizzaErrori* Instance();
    frmPersonalizzaErrori();
    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void cmd_Ripristino_Click();

private:
    // Text1 follows the note of the grid's row, and writes it back when left.
    void mostraNota();
    void scriviNota();

    platform::DataSource* Data1_ = nullptr;
    platform::EditableRecordsetModel* model_ = nullptr;
    QTableView* DBGrid1_ = nullptr;
    QLineEdit* Text1_ = nullptr;
    int rigaNota_ = -1;
};
