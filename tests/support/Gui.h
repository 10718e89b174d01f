#pragma once
// Helpers for window tests.
#include <QString>
#include <QTemporaryDir>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>

class MDIForm1;

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
