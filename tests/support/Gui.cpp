#include "support/Gui.h"

#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/Forms.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

namespace testing_support {

void WhenModal(std::function<void(QWidget*)> answer, std::function<bool(QWidget*)> accepts)
{
    auto* timer = new QTimer(qApp);
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [timer, answer, accepts]() {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || (accepts && !accepts(modal)))
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
    }, [](QWidget* w) { return qobject_cast<QMessageBox*>(w) != nullptr; });
}

} // namespace testing_support

namespace testing_support {

void AnswerFileDialog(const QString& path, QString* seenTitle)
{
    WhenModal([path, seenTitle](QWidget* modal) {
        auto* dialog = static_cast<QFileDialog*>(modal);
        if (seenTitle)
            *seenTitle = dialog->windowTitle();
        if (path.isEmpty()) {
            dialog->reject();
            return;
        }
        // selectFile() alone can leave the name field as it was.
        if (auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")))
            edit->setText(path);
        dialog->selectFile(path);
        QMetaObject::invokeMethod(dialog, "accept");
    }, [](QWidget* w) { return qobject_cast<QFileDialog*>(w) != nullptr; });
}

void FlushDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace testing_support

namespace testing_support {

void ProgramTest::Avvia(bool nuovoPortafoglio)
{
    Module1::Main(dir.path());
    frame = MDIForm1::Instance();
    frame->Form_Activate();
    if (nuovoPortafoglio)
        frame->mnu_NuovoPortafoglio_Click();
}

void ProgramTest::TearDown()
{
    platform::Forms::UnloadAll();
    FlushDeletes();
    Module1::dbExe.Close();
    Module1::dbSet.Close();
}

} // namespace testing_support
