#pragma once
// The program's notice, the scrolling credits and the system information tool.
#include "platform/FinestraModale.h"
#include "prefs/Crediti.h"

#include <memory>

class QLabel;
class QTimer;

class FrmAbout final : public platform::FinestraModale {
    Q_OBJECT
public:
    static FrmAbout* Instance();
    FrmAbout();

    void done(int result) override;

public slots:
    void Timer1_Timer();

private slots:
    void cmd_SystemInfo_Click();

private:
    QWidget* Picture1_ = nullptr;
    QList<QLabel*> lblCredits_;
    QTimer* Timer1_ = nullptr;
    std::unique_ptr<prefs::Crediti> crediti_;
};
