#include "platform/KeyFilter.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>

namespace platform {

namespace {

class KeyRoutineFilter final : public QObject {
public:
    KeyRoutineFilter(QLineEdit* box, KeyRoutine routine) : QObject(box), box_(box), routine_(std::move(routine)) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched != box_ || event->type() != QEvent::KeyPress)
            return false;
        auto* key = static_cast<QKeyEvent*>(event);
        int code = 0;
        if (key->key() == Qt::Key_Backspace)
            code = 8;
        else if (!key->text().isEmpty() && key->text().at(0).unicode() >= 32 && key->text().at(0).unicode() != 127)
            code = key->text().at(0).unicode();
        else
            return false; // navigation, deletion and shortcuts such as paste are not key presses of text
        return routine_(box_, code) == 0;
    }

private:
    QLineEdit* box_;
    KeyRoutine routine_;
};

} // namespace

void AttachKeyRoutine(QLineEdit* box, KeyRoutine routine)
{
    box->installEventFilter(new KeyRoutineFilter(box, std::move(routine)));
}

} // namespace platform
