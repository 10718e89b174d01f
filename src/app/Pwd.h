#pragma once
// Sets, changes and removes the installation's password.
#include "platform/FinestraModale.h"
#include "store/Recordset.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QStatusBar;

class Pwd final : public platform::FinestraModale {
    Q_OBJECT
public:
    static Pwd* Instance();
    Pwd();

private slots:
    void txt_1_Change();
    void Command1_Click();

private:
    bool nuova() const { return password_ == QLatin1String("0"); }
    void scrivi(const QString& testo);

    QLabel* lab_1_ = nullptr;
    QLabel* lab_2_ = nullptr;
    QLabel* lab_3_ = nullptr;
    QLineEdit* txt_1_ = nullptr;
    QLineEdit* txt_2_ = nullptr;
    QLineEdit* txt_3_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QPushButton* com_Annulla_ = nullptr;
    QStatusBar* StatusBar1_ = nullptr;
    store::Recordset rsPwd_;
    QString password_; // unscrambled at load; "0" is none
};
