#pragma once
// The figures fixed once: starting capital, capital-gain tax, the two stops and
// the trading systems. Closing the window, by whatever way, saves it.
#include "store/Recordset.h"

#include <QDialog>

class QLineEdit;
class QTableView;

namespace platform {
class DataSource;
class EditableRecordsetModel;
} // namespace platform

class frmParametriIniziali final : public QDialog {
    Q_OBJECT
public:
    static frmParametriIniziali* Instance();
    frmParametriIniziali();

    void done(int result) override;

private slots:
    void aggiungiSistema();
    void eliminaSistema();

private:
    void salva();
    QLineEdit* campo(const QString& name, int digits, int decimals);

    QLineEdit* txtCapitaleIniziale_ = nullptr;
    QLineEdit* txtCapitalGain_ = nullptr;
    QLineEdit* txtSLMM_ = nullptr;
    QLineEdit* txtSLP_ = nullptr;
    platform::DataSource* Data1_ = nullptr;
    platform::EditableRecordsetModel* model_ = nullptr;
    QTableView* DBGrid1_ = nullptr;
    store::Recordset settaggi_;
    bool salvato_ = false;
};
