#pragma once
// A modal window that is unloaded whenever it goes, however it was closed, so the
// next showing loads it afresh.
#include "platform/Forms.h"

#include <QDialog>

namespace platform {

class FinestraModale : public QDialog {
public:
    using QDialog::QDialog;
    void done(int result) override
    {
        QDialog::done(result);
        Forms::Unload(objectName());
    }
};

} // namespace platform
