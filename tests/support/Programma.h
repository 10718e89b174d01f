#pragma once
// What a test of the started program's windows uses: the program, the modal-window
// helpers, the user's mouse and keyboard, and the widgets the windows are made of.
#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/Forms.h"
#include "support/Fixture.h"
#include "support/Gui.h"
#include "support/Utente.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QToolBar>

#include <initializer_list>

namespace testing_support {

// The texts of a window's labels, joined by '|'.
inline QString Etichette(QWidget* w, std::initializer_list<const char*> names)
{
    QStringList out;
    for (const char* n : names)
        out << w->findChild<QLabel*>(QString::fromLatin1(n))->text();
    return out.join('|');
}

} // namespace testing_support
