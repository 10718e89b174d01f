#include "support/Gui.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

namespace testing_support {

void WhenModal(std::function<void(QWidget*)> answer)
{
    auto* timer = new QTimer(qApp);
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [timer, answer]() {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        timer->stop();
        timer->deleteLater();
        answer(modal);
    });
    timer->start();
}

void PressOnModal(const QString& buttonText, QString* seenText)
{
    WhenModal([buttonText, seenText](QWidget* modal) {
        if (seenText) {
            if (auto* box = qobject_cast<QMessageBox*>(modal))
                *seenText = box->text();
        }
        for (QAbstractButton* b : modal->findChildren<QAbstractButton*>()) {
            if (b->text().remove('&') == buttonText) {
                b->click();
                return;
            }
        }
    });
}

} // namespace testing_support
