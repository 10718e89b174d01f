// The preference windows, driven as a user drives them.
#include "platform/Casuale.h"
#include "prefs/Consigli.h"
#include "support/Programma.h"

using namespace testing_support;

namespace {

class PrefsTest : public ProgramTest {
protected:
    void SetUp() override { Avvia(); }
    void apri(const char* menu, const char* window, std::function<void(QWidget*)> work)
    {
        RunModal(frame->Menu(QString::fromLatin1(menu)), QString::fromLatin1(window), std::move(work));
    }
    QStringList settaggi(const QString& columns) { return Rows(Module1::dbSet, "SELECT " + columns + " FROM Settaggi"); }
};

template <class T> T* c(QWidget* w, const char* name) { return w->findChild<T*>(QString::fromLatin1(name)); }
// A check box is clicked on its box: its text may end well before the widget does.
void click(QWidget* w, const char* name)
{
    QWidget* target = c<QWidget>(w, name);
    const QPoint at = qobject_cast<QCheckBox*>(target) ? QPoint(8, target->height() / 2) : target->rect().center();
    QTest::mouseClick(target, Qt::LeftButton, {}, at);
}

} // namespace

TEST_F(PrefsTest, ViewOptionsDependenciesApplyOkAndCancel)
{
    apri("mnu_OpzioniVista", "OpzioniVista", [this](QWidget* w) {
        auto* menu = c<QCheckBox>(w, "chk_Menu");
        auto* grandi = c<QCheckBox>(w, "chk_Icone32");
        auto* nomi = c<QCheckBox>(w, "chk_IconeName");
        // Delivered with everything on: the start of the test turned the two start-up windows off.
        EXPECT_FALSE(c<QCheckBox>(w, "chk_Tip")->isChecked());
        EXPECT_TRUE(menu->isChecked() && grandi->isEnabled() && nomi->isEnabled());

        click(w, "chk_Menu"); // no toolbar: both icon options grey, keeping their marks
        EXPECT_FALSE(grandi->isEnabled() || nomi->isEnabled());
        EXPECT_TRUE(grandi->isChecked() && nomi->isChecked());
        click(w, "chk_Menu");
        EXPECT_TRUE(grandi->isEnabled() && nomi->isEnabled());
        click(w, "chk_IconeName"); // large icons without names
        click(w, "cmd_Applica");
        EXPECT_EQ(frame->Toolbar1()->iconSize(), QSize(32, 32));
        EXPECT_EQ(frame->Button(13)->text(), "");
        click(w, "chk_IconeName");
        click(w, "chk_Icone32"); // names only with large icons, even when ticked
        EXPECT_FALSE(nomi->isEnabled());

        // Apply acts on the frame only; cancelling keeps that for this run and stores nothing.
        click(w, "chk_Clock");
        click(w, "cmd_Applica");
        EXPECT_FALSE(frame->Toolbar3()->isVisibleTo(frame));
        EXPECT_EQ(frame->Toolbar1()->iconSize(), QSize(16, 16));
        EXPECT_EQ(frame->Button(13)->text(), "");
        click(w, "cmd_Annulla");
    });
    EXPECT_FALSE(frame->Toolbar3()->isVisibleTo(frame));
    EXPECT_EQ(settaggi("Tip, Benvenuto, Clock, Menu, Icone32, IconeName"), QStringList{"0|0|1|1|1|1"});

    // A fresh window reads the stored values again; OK applies and stores all six.
    apri("mnu_OpzioniVista", "OpzioniVista", [](QWidget* w) {
        EXPECT_TRUE(c<QCheckBox>(w, "chk_Clock")->isChecked());
        click(w, "chk_Tip");
        click(w, "chk_Menu");
        click(w, "cmd_Ok");
    });
    EXPECT_TRUE(frame->Toolbar3()->isVisibleTo(frame));
    EXPECT_FALSE(frame->Toolbar1()->isVisibleTo(frame));
    EXPECT_EQ(frame->Toolbar3()->height(), 1000 / 15);
    EXPECT_EQ(settaggi("Tip, Benvenuto, Clock, Menu, Icone32, IconeName"), QStringList{"1|0|1|0|1|1"});
    // At load each value runs its box's rule in turn: Menu off greys both, then large icons
    // on enables the names again.
    apri("mnu_OpzioniVista", "OpzioniVista", [](QWidget* w) {
        EXPECT_FALSE(c<QCheckBox>(w, "chk_Icone32")->isEnabled());
        EXPECT_TRUE(c<QCheckBox>(w, "chk_IconeName")->isEnabled());
        click(w, "cmd_Annulla");
    });
}

TEST_F(PrefsTest, TipShowsTheRuleAtTheSharedGeneratorsOffsetAndCanBeSwitchedOff)
{
    const QStringList regole = Rows(Module1::dbSet, "SELECT Consiglio FROM Consiglio");
    ASSERT_GE(regole.size(), 120);
    platform::Casuale copia = platform::Generatore(); // what the window will draw
    Module1::dbSet.Execute("UPDATE Settaggi SET Tip = 1");
    apri("mnu_Tips", "Tip", [&](QWidget* w) {
        auto* txt = c<QLineEdit>(w, "txt_Tip");
        EXPECT_EQ(txt->text(), regole[prefs::ScostamentoConsiglio(copia)]);
        click(w, "Command1"); // next tip: the next draw
        EXPECT_EQ(txt->text(), regole[prefs::ScostamentoConsiglio(copia)]);
        click(w, "chk_Tip");
        click(w, "Command2");
    });
    EXPECT_EQ(settaggi("Tip"), QStringList{"0"});
    // A checked box writes nothing: the tips stay off.
    apri("mnu_Tips", "Tip", [](QWidget* w) { click(w, "Command2"); });
    EXPECT_EQ(settaggi("Tip"), QStringList{"0"});
}

TEST_F(PrefsTest, AboutScrollsTheCreditsAndSaysWhenThereIsNoSystemInformationTool)
{
    QTemporaryDir bin;
    const QByteArray oldPath = qgetenv("PATH");
    qputenv("PATH", bin.path().toUtf8());
    QString message;
    apri("mnu_About", "FrmAbout", [&](QWidget* w) {
        auto* prima = c<QLabel>(w, "lblCredits(0)");
        ASSERT_NE(prima, nullptr);
        EXPECT_GT(c<QLabel>(w, "lblCredits(9)")->y(), prima->y()); // one below the other
        const int y = prima->y();
        EXPECT_TRUE(QTest::qWaitFor([&]() { return prima->y() < y; }, 5000)); // rising

        // No tool on PATH: the message, and the window stays.
        PressOnModal("OK", &message);
        click(w, "cmd_SystemInfo");
        EXPECT_TRUE(w->isVisible());
        click(w, "cmd_Ok");
    });
    qputenv("PATH", oldPath);
    EXPECT_EQ(message, "System Information Is Unavailable At This Time");
}
