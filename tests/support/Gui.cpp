#include "support/Gui.h"

#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/FailureReport.h"
#include "platform/Forms.h"
#include "store/Database.h"
#include "store/Delivered.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QDir>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <list>
#include <memory>

namespace testing_support {

namespace {

constexpr int kComesWithinMs = 5000;  // an expected window appears within this
constexpr int kClaimWithinMs = 1000;  // an unexpected one is closed after this
constexpr int kPollMs = 10;

// What a window shows, for a failure message a person can act on.
QString describe(QWidget* w)
{
    QString d = QString::fromLatin1(w->metaObject()->className());
    if (!w->objectName().isEmpty())
        d += " \"" + w->objectName() + '"';
    if (!w->windowTitle().isEmpty())
        d += " titled \"" + w->windowTitle() + '"';
    QStringList texts;
    if (auto* box = qobject_cast<QMessageBox*>(w))
        texts << box->text();
    for (auto* t : w->findChildren<QPlainTextEdit*>())
        texts << t->toPlainText().left(400);
    if (texts.isEmpty()) {
        for (auto* l : w->findChildren<QLabel*>())
            if (!l->text().isEmpty())
                texts << l->text().left(200);
    }
    if (!texts.isEmpty())
        d += ": " + texts.join(QStringLiteral(" | "));
    return d;
}

void closeWindow(QWidget* w)
{
    if (auto* dialog = qobject_cast<QDialog*>(w))
        dialog->done(QDialog::Rejected);
    else
        w->close();
    if (w->isVisible())
        w->hide();
}

struct Waiter {
    unsigned long long id = 0; // in the order of registering
    std::function<void(QWidget*)> answer;
    std::function<bool(QWidget*)> accepts;
    QString expected;
    QElapsedTimer since;
    QTimer* timer = nullptr;
    bool Accepts(QWidget* w) const { return !accepts || accepts(w); }
};

struct Answered {
    QPointer<QWidget> window;
    unsigned long long firstLater = 0; // waiters from this id on came during the answer
    bool answering = true;             // its answer is still running, maybe in a nested window
    bool hidden = false;               // the window went; shown again, it is a new one to answer
    QElapsedTimer since;               // since the answer returned
};

// Notes when an answered window is hidden: a dialog object may be shown again later.
class HideWatch final : public QObject {
public:
    HideWatch(QWidget* window, std::weak_ptr<Answered> answered) : QObject(window), answered_(std::move(answered))
    {
        window->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Hide) {
            if (auto a = answered_.lock())
                a->hidden = true;
            deleteLater();
        }
        return false;
    }

private:
    std::weak_ptr<Answered> answered_;
};

// The one record of who waits for which window, and the watchdog for the rest.
class ModalWatch {
public:
    static ModalWatch& Get()
    {
        static ModalWatch watch;
        return watch;
    }

    void Add(std::function<void(QWidget*)> answer, std::function<bool(QWidget*)> accepts, const QString& expected)
    {
        StartWatchdog();
        auto& w = waiters_.emplace_back();
        w.id = nextId_++;
        w.answer = std::move(answer);
        w.accepts = std::move(accepts);
        w.expected = expected;
        w.since.start();
        w.timer = new QTimer(qApp);
        w.timer->setInterval(kPollMs);
        Waiter* self = &w;
        // One timer per waiter: a timer doesn't fire again while its own answer runs,
        // and an answer may wait in a nested window for the next waiter.
        QObject::connect(w.timer, &QTimer::timeout, [this, self]() { Poll(self); });
        w.timer->start();
    }

    // Fails for each waiter still pending and closes a window left open.
    void EndOfTest()
    {
        for (const Waiter& w : waiters_)
            ADD_FAILURE() << "expected " << w.expected.toStdString() << " did not appear before the test ended";
        if (QWidget* modal = QApplication::activeModalWidget()) {
            ADD_FAILURE() << "a modal window is still open at the end of the test: " << describe(modal).toStdString();
            closeWindow(modal);
        }
        Reset();
    }

    // Starts each test: nothing pending, and the watchdog running even for a test with no waiter.
    void Reset()
    {
        StartWatchdog();
        while (!waiters_.empty())
            Remove(&waiters_.front());
        answered_.clear();
        stranger_ = nullptr;
    }

private:
    void StartWatchdog()
    {
        if (watchdog_)
            return;
        watchdog_ = new QTimer(qApp); // goes with the application, before the statics
        watchdog_->setInterval(50);
        QObject::connect(watchdog_, &QTimer::timeout, [this]() { Watch(); });
        watchdog_->start();
    }

    // A window being answered is not taken by a waiter that was already waiting, but an
    // answer may hand it on to a waiter it registers itself. Waiter 0 asks whether it is answered at all.
    bool TakenBefore(QWidget* w, unsigned long long waiterId = 0) const
    {
        for (const auto& a : answered_)
            if (a->window == w && !a->hidden && waiterId < a->firstLater)
                return true;
        return false;
    }

    void Remove(Waiter* w)
    {
        w->timer->stop();
        w->timer->deleteLater(); // its timeout may be the signal running now
        waiters_.remove_if([w](const Waiter& x) { return &x == w; });
    }

    void Poll(Waiter* w)
    {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal && !TakenBefore(modal, w->id) && w->Accepts(modal)) {
            auto answered = std::make_shared<Answered>();
            answered->window = modal;
            answered->firstLater = nextId_;
            answered_.push_back(answered);
            new HideWatch(modal, answered);
            const auto answer = std::move(w->answer);
            Remove(w);
            answer(modal);
            answered->answering = false;
            answered->since.start();
            return;
        }
        if (w->since.elapsed() > kComesWithinMs) {
            std::string instead;
            if (modal)
                instead = "; open instead: " + describe(modal).toStdString();
            ADD_FAILURE() << "expected " << w->expected.toStdString() << " did not appear within "
                          << kComesWithinMs / 1000 << " s" << instead;
            Remove(w);
        }
    }

    // Windows nobody claims, and answered ones that stay open, are closed so nothing hangs.
    void Watch()
    {
        answered_.remove_if([](const auto& a) { return !a->window || a->hidden || !a->window->isVisible(); });
        // The latest answer of a window that no answer is still working on.
        for (const auto& a : answered_) {
            bool busy = false;
            qint64 idle = a->since.isValid() ? a->since.elapsed() : 0;
            for (const auto& b : answered_) {
                if (b->window != a->window)
                    continue;
                busy = busy || b->answering;
                if (b->since.isValid())
                    idle = std::min(idle, b->since.elapsed());
            }
            if (!busy && idle > kComesWithinMs) {
                QPointer<QWidget> w = a->window;
                ADD_FAILURE() << "answered but still open " << kComesWithinMs / 1000
                              << " s later: " << describe(w).toStdString();
                answered_.remove_if([&w](const auto& b) { return b->window == w; });
                closeWindow(w);
                break; // the list changed; the next tick sees the rest
            }
        }
        QWidget* modal = QApplication::activeModalWidget();
        bool claimed = modal && TakenBefore(modal);
        for (const Waiter& w : waiters_)
            claimed = claimed || (modal && w.Accepts(modal));
        if (!modal || claimed) {
            stranger_ = nullptr;
            return;
        }
        if (stranger_ != modal) {
            stranger_ = modal;
            strangerSince_.start();
            return;
        }
        if (strangerSince_.elapsed() >= kClaimWithinMs) {
            ADD_FAILURE() << "unexpected modal window: " << describe(modal).toStdString();
            stranger_ = nullptr;
            closeWindow(modal);
        }
    }

    std::list<Waiter> waiters_;
    std::list<std::shared_ptr<Answered>> answered_;
    unsigned long long nextId_ = 0;
    QPointer<QWidget> stranger_;
    QElapsedTimer strangerSince_;
    QPointer<QTimer> watchdog_;
};

class ModalWatchListener final : public ::testing::EmptyTestEventListener {
    void OnTestStart(const ::testing::TestInfo&) override { ModalWatch::Get().Reset(); }
    void OnTestEnd(const ::testing::TestInfo&) override
    {
        ModalWatch::Get().EndOfTest();
        // After a failure report the application dispatches no more events: the tests
        // that follow could only fail for that, or crash, so a failing test ends the run.
        if (auto* app = qobject_cast<platform::Application*>(qApp); app && app->Failed())
            GTEST_FLAG_SET(fail_fast, true);
    }
};

void whenModal(std::function<void(QWidget*)> answer, std::function<bool(QWidget*)> accepts, const QString& expected)
{
    ModalWatch::Get().Add(std::move(answer), std::move(accepts), expected);
}

} // namespace

::testing::TestEventListener* NewModalWatchListener() { return new ModalWatchListener; }

void WhenModal(std::function<void(QWidget*)> answer, std::function<bool(QWidget*)> accepts)
{
    whenModal(std::move(answer), std::move(accepts), QStringLiteral("a modal window"));
}

void PressOnModal(const QString& buttonText, QString* seenText)
{
    whenModal([buttonText, seenText](QWidget* modal) {
        if (seenText) {
            if (auto* box = qobject_cast<QMessageBox*>(modal))
                *seenText = box->text();
        }
        QStringList seen;
        for (QAbstractButton* b : modal->findChildren<QAbstractButton*>()) {
            const QString text = b->text().remove('&');
            if (text == buttonText) {
                QTest::mouseClick(b, Qt::LeftButton);
                return;
            }
            seen << '"' + text + '"';
        }
        ADD_FAILURE() << "no button \"" << buttonText.toStdString() << "\" (buttons: " << seen.join(", ").toStdString()
                      << ") on " << describe(modal).toStdString();
        closeWindow(modal);
    }, [](QWidget* w) { return qobject_cast<QMessageBox*>(w) != nullptr; },
        "a message box to press \"" + buttonText + "\" on");
}

void AnswerFileDialog(const QString& path, QString* seenTitle)
{
    whenModal([path, seenTitle](QWidget* modal) {
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
    }, [](QWidget* w) { return qobject_cast<QFileDialog*>(w) != nullptr; },
        path.isEmpty() ? QStringLiteral("a file dialog to cancel") : "a file dialog to answer with " + path);
}

void ReadFailureReport(QString* report)
{
    WhenModal([report](QWidget* modal) {
        if (auto* t = modal->findChild<QPlainTextEdit*>(QStringLiteral("txt_Errore")))
            *report = modal->objectName() + ": " + t->toPlainText();
        QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
    });
}

void ScriviCella(QTableView* grid, int row, int column, const QString& text)
{
    FlushDeletes(); // an earlier editor
    const QPoint at = grid->visualRect(grid->model()->index(row, column)).center();
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, at);
    QLineEdit* editor = nullptr;
    for (QLineEdit* e : grid->viewport()->findChildren<QLineEdit*>())
        if (e->isVisible())
            editor = e;
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    // The commit comes from a queued call, and a new row reloads after that.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    FlushDeletes();
}

void FlushDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void ChooseInCombo(QComboBox* combo, const QString& text)
{
    const int row = combo->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (row < 0) {
        QStringList items;
        for (int i = 0; i < combo->count(); ++i)
            items << '"' + combo->itemText(i) + '"';
        ADD_FAILURE() << combo->objectName().toStdString() << " has no item \"" << text.toStdString()
                      << "\" (items: " << items.join(", ").toStdString() << ")";
        return;
    }
    // An editable box opens its list from the arrow at its right end.
    QTest::mouseClick(combo, Qt::LeftButton, {}, QPoint(combo->width() - 6, combo->height() / 2));
    QAbstractItemView* list = combo->view();
    if (!list->isVisible()) {
        ADD_FAILURE() << "the list of " << combo->objectName().toStdString() << " did not open";
        return;
    }
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < row; ++i)
        QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
}

void RunModal(QAction* trigger, const QString& name, std::function<void(QWidget*)> work)
{
    bool seen = false;
    WhenModal([work, &seen](QWidget* window) {
        seen = true;
        // A window that deletes itself on closing may be gone when the work returns.
        QPointer<QWidget> w = window;
        work(window);
        if (w && w->isVisible()) {
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

void HurrySplash()
{
    WhenModal([](QWidget* splash) { splash->findChild<QTimer*>("Timer1")->start(0); },
              [](QWidget* w) { return w->objectName() == "Presentazione"; });
}

void ProgramTest::Avvia(bool nuovoPortafoglio)
{
    PrepareSettings(dir.path(), "Tip = 0, Benvenuto = 0");
    HurrySplash();
    Module1::Main(dir.path());
    frame = MDIForm1::Instance();
    // Activated as a desktop activates a new window, so typing moves the focus as it does for a user.
    frame->activateWindow();
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
