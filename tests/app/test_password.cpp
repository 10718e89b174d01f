// The password through its two windows, typed as a user types it.
#include "app/Codifica.h"
#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/Forms.h"
#include "support/Fixture.h"
#include "support/Gui.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

class PasswordTest : public ProgramTest {
protected:
    void pwd(std::function<void(QWidget*)> work) { RunModal(frame->Menu("mnu_Password"), "Pwd", std::move(work)); }
    // Starts with the splash answered by `splash`, as the user meets it.
    void startAnswering(std::function<void(QWidget*)> splash)
    {
        WhenModal(std::move(splash), [](QWidget* w) { return w->objectName() == "Presentazione"; });
        Module1::Main(dir.path());
        frame = MDIForm1::Instance();
        frame->Form_Activate();
    }
    QString stored() { return Rows(Module1::dbSet, "SELECT Pwd FROM Settaggi").value(0); }
    // The plain text of the stored password, proved by scrambling it again with the seed it carries.
    void expectStored(const QString& plain)
    {
        const QString coded = stored();
        const int seedDigits = static_cast<int>(coded.size() - 2 * plain.size());
        ASSERT_TRUE(seedDigits == 1 || seedDigits == 2) << coded.toStdString();
        const int seed = coded.left(seedDigits).toInt(nullptr, 16);
        EXPECT_EQ(CodificaConSeme(kChiavePassword, plain, seed), coded);
    }
};

QString status(QWidget* w) { return w->findChild<QStatusBar*>("StatusBar1")->currentMessage(); }
QLineEdit* box(QWidget* w, const char* name) { return w->findChild<QLineEdit*>(name); }
QLabel* label(QWidget* w, const char* name) { return w->findChild<QLabel*>(name); }
void click(QWidget* w, const char* name) { QTest::mouseClick(w->findChild<QPushButton*>(name), Qt::LeftButton); }
// Types as a keyboard does: a character beyond ASCII comes as the text of a key of its own.
void digita(QWidget* w, const QString& text)
{
    for (const QChar c : text) {
        if (c.unicode() < 0x80)
            QTest::keyClick(w, c.toLatin1());
        else
            QTest::sendKeyEvent(QTest::Click, w, Qt::Key_unknown, QString(c), Qt::NoModifier);
    }
}

// A folder whose settings hold this password, scrambled with a two-digit seed.
void withPassword(const QString& folder, const QString& plain)
{
    PrepareSettings(folder, "Tip = 0, Benvenuto = 0, Pwd = '" + CodificaConSeme(kChiavePassword, plain, 0x40) + "'");
}

} // namespace

TEST_F(PasswordTest, NewPasswordNeedsTheSameTextTwice)
{
    Avvia();
    pwd([](QWidget* w) {
        EXPECT_EQ(w->windowTitle(), "Inserimento nuova pasword");
        EXPECT_TRUE(box(w, "txt_2")->isVisible());
        EXPECT_FALSE(box(w, "txt_3")->isVisible());
        EXPECT_FALSE(label(w, "lab_3")->isVisible());
        EXPECT_EQ(box(w, "txt_1")->echoMode(), QLineEdit::Password);
        EXPECT_EQ(status(w), "inserire la password ");
        QTest::keyClicks(box(w, "txt_1"), "Borsa'24");
        QTest::keyClicks(box(w, "txt_2"), "borsa'24"); // case counts
        click(w, "Command1");
        EXPECT_EQ(status(w), "Password non corretta");
        EXPECT_TRUE(w->isVisible());
        box(w, "txt_2")->selectAll();
        QTest::keyClicks(box(w, "txt_2"), "Borsa'24");
        click(w, "Command1");
    });
    expectStored("Borsa'24"); // the apostrophe is no trouble: the stored form is hexadecimal and blanks
    EXPECT_EQ(platform::Forms::Find("Pwd"), nullptr);

    // Annulla writes nothing.
    const QString before = stored();
    pwd([](QWidget* w) {
        EXPECT_EQ(w->windowTitle(), "Modifica pasword");
        click(w, "com_Annulla");
    });
    EXPECT_EQ(stored(), before);
}

TEST_F(PasswordTest, ChangeUnlocksOnTheCurrentPasswordAndEmptyBoxesRemoveIt)
{
    // The euro keeps its code page byte; the "ł" the page lacks is kept, and typed, as "?".
    const QString segreto = QString::fromUtf8("Segreto€ł");
    withPassword(dir.path(), segreto);
    startAnswering([&segreto](QWidget* splash) {
        digita(splash->findChild<QLineEdit*>("txt_Pwd"), segreto);
        click(splash, "Command1");
    });

    pwd([&segreto](QWidget* w) {
        EXPECT_FALSE(box(w, "txt_2")->isVisible());
        EXPECT_FALSE(box(w, "txt_3")->isVisible());
        digita(box(w, "txt_1"), segreto.chopped(1));
        EXPECT_TRUE(box(w, "txt_1")->isEnabled());
        digita(box(w, "txt_1"), segreto.right(1)); // the whole password, at the keystroke
        EXPECT_FALSE(box(w, "txt_1")->isEnabled());
        EXPECT_EQ(status(w), "Inserire nuova password");
        EXPECT_EQ(label(w, "lab_2")->text(), "Nuova Password");
        EXPECT_TRUE(box(w, "txt_2")->isVisible());
        EXPECT_TRUE(box(w, "txt_3")->isVisible());
        QTest::keyClicks(box(w, "txt_2"), "nuova");
        QTest::keyClicks(box(w, "txt_3"), "nuovo");
        click(w, "Command1");
        EXPECT_EQ(status(w), "Password non corretta");
        QTest::keyClick(box(w, "txt_3"), Qt::Key_Backspace);
        QTest::keyClicks(box(w, "txt_3"), "a");
        click(w, "Command1");
    });
    expectStored("nuova");

    // Both new boxes empty: the password goes, stored as "0". (Stored again with a seed
    // of two digits: one in seventeen random seeds makes a password that can't be typed.)
    Module1::dbSet.Execute("UPDATE Settaggi SET Pwd = '" + CodificaConSeme(kChiavePassword, "nuova", 0x40) + "'");
    pwd([](QWidget* w) {
        QTest::keyClicks(box(w, "txt_1"), "nuova");
        click(w, "Command1");
    });
    expectStored("0");
}

TEST_F(PasswordTest, LoginStaysForAWrongTextAndGoesAtTheNextTickForTheRightOne)
{
    withPassword(dir.path(), "Segreto");
    bool wrongKeptIt = false, rightClosedIt = false;
    startAnswering([&](QWidget* splash) {
        auto* txt = splash->findChild<QLineEdit*>("txt_Pwd");
        auto* timer = splash->findChild<QTimer*>("Timer1");
        EXPECT_TRUE(splash->findChild<QWidget*>("Picture1")->isVisible());
        QTest::keyClicks(txt, "segreto");
        click(splash, "Command1");
        QTest::mouseClick(splash->findChild<QWidget*>("Image1"), Qt::LeftButton);
        QTest::keyClick(splash, Qt::Key_Escape);
        QSignalSpy tick(timer, &QTimer::timeout);
        ASSERT_TRUE(tick.wait(5000));
        wrongKeptIt = splash->isVisible() && txt->text() == "segreto"; // no message, nothing cleared
        txt->selectAll();
        QTest::keyClicks(txt, "Segreto"); // and no OK: the timer does it
        EXPECT_TRUE(splash->isVisible());
        ASSERT_TRUE(tick.wait(5000));
        rightClosedIt = !splash->isVisible();
    });
    EXPECT_TRUE(wrongKeptIt);
    EXPECT_TRUE(rightClosedIt);
    EXPECT_TRUE(frame->isVisible());
}

TEST_F(PasswordTest, EmptyPasswordShowsTheLoginAndMatchesAtTheFirstTick)
{
    withPassword(dir.path(), "");
    bool login = false;
    // No click and no key: the first tick closes it.
    startAnswering([&login](QWidget* splash) { login = splash->findChild<QWidget*>("Picture1")->isVisible(); });
    EXPECT_TRUE(login);
    EXPECT_EQ(platform::Forms::Find("Presentazione"), nullptr);
}
