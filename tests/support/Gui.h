#pragma once
// Helpers for window tests.
//
// Modal windows. A modal window blocks the code that opened it, so a test says
// what to do with it *before* the action that opens it:
//
//     QString text;
//     PressOnModal("OK", &text);      // answer the next message box
//     conferma();                      // the click that shows it
//     EXPECT_EQ(text, "Impossibile inserire : ...");
//
// Each waiter answers one window. None of them can hang the suite:
// - an expected window that does not come within 5 seconds fails the test
//   ("expected ... did not appear"), and so does a waiter still pending when the
//   test ends;
// - a modal window that no waiter claims within a second fails the test with its
//   title and text, and is closed, so the code that opened it goes on;
// - a window that was answered but is still open 5 seconds later (a button that
//   wasn't found, an answer that forgot to close it) fails the test and is closed.
// Nested windows work: an answer may register the waiter for the window that its
// own click opens before clicking. Answer modal windows through these helpers
// rather than a timer of your own: a window left unclaimed for a second counts
// as unexpected.
#include <QString>
#include <QTemporaryDir>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>

class MDIForm1;
class QAction;
class QComboBox;
class QTableView;

namespace testing_support {

// Runs `answer` on the next modal widget that appears (polling the event loop
// through a timer, never sleeping the thread).
// With `accepts`, only a modal widget it accepts is answered; others are left to other waiters.
void WhenModal(std::function<void(QWidget*)> answer, std::function<bool(QWidget*)> accepts = {});
// Presses the button with this text on a modal message box (a missing button fails the test).
void PressOnModal(const QString& buttonText, QString* seenText = nullptr);
// Answers the next file dialog with a path typed into its name field; an empty path cancels.
void AnswerFileDialog(const QString& path, QString* seenTitle = nullptr);
// Reads the failure report when it shows, as "<window name>: <text>", and closes it.
void ReadFailureReport(QString* report);
// Double clicks a cell of a grid, types over it and confirms with Return, as a user edits it;
// the grid's commit (a queued call) and what it brings about have run when it returns.
void ScriviCella(QTableView* grid, int row, int column, const QString& text);
// Deletes the windows unloaded with deleteLater.
void FlushDeletes();
// Triggers an action that runs the modal window `name` and lets `work` act on it; a
// window that `work` leaves open is closed with a test failure, so nothing waits on it.
void RunModal(QAction* trigger, const QString& name, std::function<void(QWidget*)> work);
// Installs the delivered files into a folder if needed and sets columns of Settaggi there.
void PrepareSettings(const QString& folder, const QString& assignments);
// Lets the splash's timer tick at once when it shows, instead of after its two seconds.
void HurrySplash();

// Chooses an item of a combo box as a user does: a click opens the list, the
// arrow keys go to the item, Return takes it. Fails the test when the list lacks it.
void ChooseInCombo(QComboBox* combo, const QString& text);

// A program started in a temporary program folder, closed again after each test.
class ProgramTest : public ::testing::Test {
protected:
    // Starts the program past its start: the tips and the welcome window switched off in the
    // settings, the splash's wait cut short, the frame activated; optionally a new portfolio.
    void Avvia(bool nuovoPortafoglio = false);
    void TearDown() override;
    QString path(const QString& name) const { return dir.filePath(name); }

    QTemporaryDir dir;
    MDIForm1* frame = nullptr;
};

// For the test entry: watches modal windows between tests and fails a test that
// leaves a waiter unanswered.
::testing::TestEventListener* NewModalWatchListener();

} // namespace testing_support
