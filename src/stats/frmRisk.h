#pragma once
// The percentage result of each run, and the probability of every single percentage result.
#include "stats/FinestraSerie.h"

class QLabel;

class frmRisk final : public stats::FinestraSerie {
    Q_OBJECT
public:
    static frmRisk* Instance();
    frmRisk();
    Q_INVOKABLE void Main();
    void Colore();

private:
    QLabel* lab_TotMDD_ = nullptr;
};
