#pragma once
// The splash window of the start, which is also the login when a password is set.
#include "store/Recordset.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

class Presentazione final : public QDialog {
    Q_OBJECT
public:
    static Presentazione* Instance();
    Presentazione();

    // No way out but the right password or its own timer: Esc and closing do nothing.
    void reject() override {}

protected:
    void closeEvent(QCloseEvent* event) override;

private slots:
    void Command1_Click();
    void Timer1_Timer();

private:
    QWidget* Picture1_ = nullptr;
    QLabel* Image1_ = nullptr;
    QLabel* lab_Pwd_ = nullptr;
    QLineEdit* txt_Pwd_ = nullptr;
    QPushButton* Command1_ = nullptr;
    QLabel* Label1_ = nullptr;
    QTimer* Timer1_ = nullptr;
    store::Recordset rsPwd_;
    QString password_; // unscrambled at load
};
