#include "platform/KeyFilter.h"

#include <QComboBox>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>

namespace platform {

namespace {

// The character code a key press gives a KeyPress handler; 0 for keys that aren't text.
int characterCode(const QKeyEvent* key)
{
    if (key->modifiers() & (Qt::ControlModifier | Qt::MetaModifier))
        return 0; // shortcuts such as paste or select all
    if (key->key() == Qt::Key_Backspace)
        return 8;
    const QString text = key->text();
    if (!text.isEmpty() && text.at(0).unicode() >= 32 && text.at(0).unicode() != 127)
        return text.at(0).unicode();
    return 0; // navigation and deletion
}

class KeyRoutineFilter final : public QObject {
public:
    // `editor` finds the text box the routine sees when a key reaches `watched`.
    KeyRoutineFilter(QObject* watched, std::function<QLineEdit*()> editor, KeyRoutine routine)
        : QObject(watched), watched_(watched), editor_(std::move(editor)), routine_(std::move(routine))
    {
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched != watched_ || event->type() != QEvent::KeyPress)
            return false;
        const int code = characterCode(static_cast<QKeyEvent*>(event));
        QLineEdit* box = editor_();
        if (code == 0 || !box)
            return false;
        return routine_(box, code) == 0;
    }

private:
    QObject* watched_;
    std::function<QLineEdit*()> editor_;
    KeyRoutine routine_;
};

void install(QObject* watched, std::function<QLineEdit*()> editor, KeyRoutine routine)
{
    watched->installEventFilter(new KeyRoutineFilter(watched, std::move(editor), std::move(routine)));
}

} // namespace

void AttachKeyRoutine(QLineEdit* box, KeyRoutine routine)
{
    if (auto* combo = qobject_cast<QComboBox*>(box->parentWidget()); combo && combo->lineEdit() == box) {
        AttachKeyRoutine(combo, std::move(routine));
        return;
    }
    install(box, [box]() { return box; }, std::move(routine));
}

void AttachKeyRoutine(QComboBox* box, KeyRoutine routine)
{
    // Keys sent to the combo box reach its editor without passing the editor's filters,
    // keys sent to the editor itself don't pass the combo box's: one filter on each.
    install(box, [box]() { return box->lineEdit(); }, routine);
    if (QLineEdit* editor = box->lineEdit())
        install(editor, [editor]() { return editor; }, std::move(routine));
}

} // namespace platform
