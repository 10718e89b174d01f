#pragma once
// What the frame shows: the clocks, the icon toolbar and its size, the start-up windows.
#include "platform/FinestraModale.h"
#include "store/Recordset.h"

class QCheckBox;

class OpzioniVista final : public platform::FinestraModale {
    Q_OBJECT
public:
    static OpzioniVista* Instance();
    OpzioniVista();

private slots:
    void chk_Menu_Click();
    void chk_Icone32_Click();
    void cmd_Applica_Click();
    void cmd_Ok_Click();

private:
    QCheckBox* casella(const char* name, const QString& caption);

    QCheckBox* chk_Tip_ = nullptr;
    QCheckBox* chk_Benvenuto_ = nullptr;
    QCheckBox* chk_Clock_ = nullptr;
    QCheckBox* chk_Menu_ = nullptr;
    QCheckBox* chk_Icone32_ = nullptr;
    QCheckBox* chk_IconeName_ = nullptr;
    store::Recordset rsSettaggi_;
};
