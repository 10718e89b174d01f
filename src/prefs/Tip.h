#pragma once
// One golden rule of the table Consiglio, at a random row.
#include "prefs/FinestraAvvio.h"
#include "store/Recordset.h"

class QCheckBox;
class QLineEdit;

class Tip final : public prefs::FinestraAvvio {
    Q_OBJECT
public:
    static Tip* Instance();
    Tip();

private slots:
    void Command1_Click();
    void Command2_Click();

private:
    // What the load does, and "next tip" again.
    void carica();

    QLineEdit* txt_Tip_ = nullptr;
    QCheckBox* chk_Tip_ = nullptr;
    store::Recordset rsConsiglio_;
};
