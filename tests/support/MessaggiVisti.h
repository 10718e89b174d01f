#pragma once
// Answers every message box shown while it lives with its OK button and keeps
// their texts in order, for code that may show a box once per row.
#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QStringList>
#include <QTimer>

namespace testing_support {

class MessaggiVisti {
public:
    MessaggiVisti()
    {
        timer_.setInterval(5);
        QObject::connect(&timer_, &QTimer::timeout, [this]() {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QAbstractButton* ok = box ? box->button(QMessageBox::Ok) : nullptr;
            if (!ok || !box->isVisible())
                return; // not a box with OK: left to other waiters
            testi << box->text();
            ok->click();
        });
        timer_.start();
    }
    MessaggiVisti(const MessaggiVisti&) = delete;
    MessaggiVisti& operator=(const MessaggiVisti&) = delete;
    // The texts seen so far, and forgets them.
    QStringList Prendi()
    {
        const QStringList t = testi;
        testi.clear();
        return t;
    }

    QStringList testi;

private:
    QTimer timer_;
};

} // namespace testing_support
