#pragma once
// How long the runs of winning and losing operations are, and how often each length comes.
#include "stats/FinestraSerie.h"

class frmMDD final : public stats::FinestraSerie {
    Q_OBJECT
public:
    static frmMDD* Instance();
    frmMDD();
    Q_INVOKABLE void Main();
    void Colore();
};
