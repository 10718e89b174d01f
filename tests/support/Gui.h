#pragma once
// Helpers for window tests.
#include <QString>
#include <QTemporaryDir>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>

class MDIForm1;
class QAction;

namespace testing_support {

// Runs `answer` on the next modal widget that appears (polling the event loop
// through a timer, never sleeping the thread).
// With `accepts`, only a modal widget it accepts is answered; others are left to other waiters.
void WhenModal(std::function<void(QWidget*)> answer, std::function<bool(QWidget*)> accepts = {});
// Presses the button with this text on a modal box.
void PressOnModal(const QString& buttonText, QString* seenText = nullptr);
// Answers the next file dialog with a path typed into its name field; an empty path cancels.
void AnswerFileDialog(const QString& path, QString* seenTitle = nullptr);
// Deletes the windows unloaded with deleteLater.
void FlushDeletes();
// Triggers an action that runs the modal window `name` and lets `work` act on it; a
// window that `work` leaves open is closed with a test failure, so nothing waits on it.
void RunModal(QAction* trigger, const QString& name, std::function<void(QWidget*)> work);
// Installs the delivered files into a folder if needed and sets columns of Settaggi there.
void PrepareSettings(const QString& folder, const QString& assignments);
// Clicks the splash away when it shows, as a user can (its picture does what OK does).
void ClickAwaySplash();
// Starts the program in a folder past its start: the tips and the welcome window
// switched off in the settings, the splash clicked away, the first activation run.
MDIForm1* StartProgram(const QString& folder);

// A program started in a temporary program folder, closed again after each test.
class ProgramTest : public ::testing::Test {
protected:
    // Runs the start and the frame's first activation; optionally a new portfolio.
    void Avvia(bool nuovoPortafoglio = false);
    void TearDown() override;
    QString path(const QString& name) const { return dir.filePath(name); }

    QTemporaryDir dir;
    MDIForm1* frame = nullptr;
};

} // namespace testing_support
