#include "support/Gui.h"

#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/Forms.h"
#include "store/Database.h"
#include "store/Delivered.h"

#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
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

void RunModal(QAction* trigger, const QString& name, std::function<void(QWidget*)> work)
{
    bool seen = false;
    WhenModal([work, &seen](QWidget* w) {
        seen = true;
        work(w);
        if (w->isVisible()) {
            ADD_FAILURE() << w->objectName().toStdString() << " is still open";
            QMetaObject::invokeMethod(w, "reject", Qt::QueuedConnection);
        }
    }, [name](QWidget* w) { return w->objectName() == name; });
    trigger->trigger();
    EXPECT_TRUE(seen) << name.toStdString() << " never came";
}

void PrepareSettings(const QString& folder, const QString& assignments)
{
    store::InstallDelivered(folder);
    store::Database settings;
    settings.Open(QDir(folder).filePath(store::kSettingsFile));
    settings.Execute("UPDATE Settaggi SET " + assignments);
}

void ClickAwaySplash()
{
    WhenModal([](QWidget* splash) { QTest::mouseClick(splash->findChild<QWidget*>("Image1"), Qt::LeftButton); },
              [](QWidget* w) { return w->objectName() == "Presentazione"; });
}

MDIForm1* StartProgram(const QString& folder)
{
    PrepareSettings(folder, "Tip = 0, Benvenuto = 0");
    ClickAwaySplash();
    Module1::Main(folder);
    MDIForm1* frame = MDIForm1::Instance();
    frame->Form_Activate();
    return frame;
}

void ProgramTest::Avvia(bool nuovoPortafoglio)
{
    frame = StartProgram(dir.path());
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
