#pragma once
// A window of the start (the tips, the welcome window): when it goes, however it
// goes, the start is over.
#include "app/Module1.h"
#include "platform/FinestraModale.h"

namespace prefs {

class FinestraAvvio : public platform::FinestraModale {
public:
    void done(int result) override
    {
        Module1::bAvvioInCorso = false;
        FinestraModale::done(result);
    }
};

} // namespace prefs
