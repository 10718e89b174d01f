#include "platform/MessageBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>

namespace platform {

Answer MsgBox(const QString& text, Buttons buttons, Icon icon, QWidget* parent)
{
    QMessageBox box(parent ? parent : QApplication::activeWindow());
    box.setObjectName(QStringLiteral("MsgBox"));
    box.setWindowTitle(QApplication::applicationName());
    box.setText(text);
    switch (icon) {
    case Icon::None: box.setIcon(QMessageBox::NoIcon); break;
    case Icon::Question: box.setIcon(QMessageBox::Question); break;
    case Icon::Information: box.setIcon(QMessageBox::Information); break;
    case Icon::Exclamation: box.setIcon(QMessageBox::Warning); break;
    case Icon::Critical: box.setIcon(QMessageBox::Critical); break;
    }
    switch (buttons) {
    case Buttons::Ok: box.setStandardButtons(QMessageBox::Ok); break;
    case Buttons::OkCancel: box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel); break;
    case Buttons::YesNo: box.setStandardButtons(QMessageBox::Yes | QMessageBox::No); break;
    case Buttons::YesNoCancel: box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel); break;
    case Buttons::YesNoAll:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::YesToAll | QMessageBox::NoToAll);
        break;
    }
    if (QAbstractButton* b = box.button(QMessageBox::Yes))
        b->setText(QStringLiteral("Sì"));
    if (QAbstractButton* b = box.button(QMessageBox::No))
        b->setText(QStringLiteral("No"));
    if (QAbstractButton* b = box.button(QMessageBox::Cancel))
        b->setText(QStringLiteral("Annulla"));
    if (QAbstractButton* b = box.button(QMessageBox::YesToAll))
        b->setText(QStringLiteral("Sì a tutti"));
    if (QAbstractButton* b = box.button(QMessageBox::NoToAll))
        b->setText(QStringLiteral("No a tutti"));
    switch (box.exec()) {
    case QMessageBox::Yes: return Answer::Yes;
    case QMessageBox::No: return Answer::No;
    case QMessageBox::Cancel: return Answer::Cancel;
    case QMessageBox::YesToAll: return Answer::YesToAll;
    case QMessageBox::NoToAll: return Answer::NoToAll;
    default: return buttons == Buttons::Ok || buttons == Buttons::OkCancel ? Answer::Ok : Answer::Cancel;
    }
}

} // namespace platform
