#include "platform/ListaTipi.h"

#include <QComboBox>
#include <QEvent>
#include <QLineEdit>

namespace platform {

namespace {

// A click on the shown text opens the list, as on a list that can't be typed in.
class ApreLista final : public QObject {
public:
    explicit ApreLista(QComboBox* combo) : QObject(combo), combo_(combo) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonPress && combo_->isEnabled()) {
            combo_->showPopup();
            return true;
        }
        return false;
    }

private:
    QComboBox* combo_;
};

} // namespace

void ListaTipi(QComboBox* combo)
{
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->lineEdit()->setReadOnly(true);
    combo->lineEdit()->installEventFilter(new ApreLista(combo));
}

void MostraTipo(QComboBox* combo, const QString& text)
{
    const int i = combo->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (i >= 0)
        combo->setCurrentIndex(i);
    combo->setEditText(text);
}

} // namespace platform
