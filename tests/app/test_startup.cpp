// The start as a user meets it: a fresh program folder, the frame without a portfolio,
// and the password through the login and its own window, typed as a user types it.
// The mouse goes through the window system, so moving it over a picture is a real move.
#define QTEST_QPA_MOUSE_HANDLING
#include "app/Codifica.h"
#include "app/ComandiAttivi.h"
#include "platform/Registro.h"
#include "prefs/AssociaFile.h"
#include "store/Delivered.h"
#include "support/Programma.h"

#include <QApplication>
#include <QFile>
#include <QMdiArea>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTimer>

using namespace testing_support;

namespace {

// A registry of file types that only remembers what was written to it, in order:
// "key|value name|text or number|data", and "notify" when the desktop is told.
class FakeRegistry final : public platform::RegistroTipiFile {
public:
    QStringList writes;

    void ScriviRegistroTesto(const QString& key, const QString& name, const QString& text) override
    {
        writes << key + "|" + name + "|text|" + text;
    }
    void ScriviRegistroNumero(const QString& key, const QString& name, std::uint32_t number) override
    {
        writes << key + "|" + name + "|number|" + QString::number(number);
    }
    void Notifica() override { writes << "notify"; }
};

// Starts by hand: what the start does is the subject here. A first start registers
// the file type with a registry that only remembers the writes.
class StartupTest : public ProgramTest {
protected:
    void SetUp() override { platform::SostituisciRegistro(&registry); }
    void TearDown() override
    {
        ProgramTest::TearDown();
        platform::SostituisciRegistro(nullptr);
    }
    // Starts with the splash's wait cut short, or answered by `splash` as the user meets it.
    void start(std::function<void(QWidget*)> splash = {})
    {
        if (splash)
            WhenModal(std::move(splash), [](QWidget* w) { return w->objectName() == "Presentazione"; });
        else
            HurrySplash();
        Module1::Main(dir.path());
        frame = MDIForm1::Instance();
    }
    void settings(const QString& set) { PrepareSettings(dir.path(), set); }
    // A start whose welcome window gets a choice: the mouse over picture `image`, the
    // box maybe unticked, a click. Returns the line read under the pictures.
    QString startChoosing(int image, bool untick = false)
    {
        QString line;
        WhenModal([&line, image, untick](QWidget* welcome) {
            auto* picture = welcome->findChild<QLabel*>(QString("Image%1").arg(image));
            QTest::mouseMove(picture);
            line = welcome->findChild<QLabel*>("Label2")->text();
            // Off the pictures: no line.
            QTest::mouseMove(welcome->findChild<QWidget*>("Picture1"), QPoint(8, 200));
            EXPECT_TRUE(welcome->findChild<QLabel*>("Label2")->text().isEmpty());
            if (untick)
                QTest::mouseClick(welcome->findChild<QCheckBox*>("Check1"), Qt::LeftButton);
            QTest::mouseClick(picture, Qt::LeftButton);
        }, [](QWidget* w) { return w->objectName() == "frmBenvenuto"; });
        start();
        return line;
    }
    QStringList stored(const QString& columns)
    {
        store::Database db;
        db.Open(dir.filePath("DataSet.qvd"));
        return Rows(db, "SELECT " + columns + " FROM Settaggi");
    }

    FakeRegistry registry;
};

} // namespace

TEST_F(StartupTest, FreshFolderStartsIntoTheFrameWithoutAPortfolio)
{
    // The tips, then the welcome window, each once, come with the frame although this
    // platform never activates it; without a choice no portfolio opens.
    QStringList seen;
    WhenModal([&seen](QWidget* tip) {
        seen << tip->objectName();
        EXPECT_TRUE(Module1::bAvvioInCorso);
        QTest::mouseClick(tip->findChild<QCheckBox*>("chk_Tip"), Qt::LeftButton);
        QTest::mouseClick(tip->findChild<QPushButton*>("Command2"), Qt::LeftButton);
    }, [](QWidget* w) { return w->objectName() == "Tip"; });
    WhenModal([&seen](QWidget* welcome) {
        seen << welcome->objectName();
        QTest::mouseClick(welcome->findChild<QCheckBox*>("Check1"), Qt::LeftButton);
        QTest::keyClick(welcome, Qt::Key_Escape); // closed without a choice: the box is not stored
    }, [](QWidget* w) { return w->objectName() == "frmBenvenuto"; });
    start();
    EXPECT_EQ(seen, (QStringList{"Tip", "frmBenvenuto"}));
    EXPECT_FALSE(frame->isActiveWindow());
    EXPECT_FALSE(Module1::bAvvioInCorso);
    EXPECT_EQ(Module1::iSceltaBenvenuto, 0);
    EXPECT_TRUE(Module1::sFilePortafoglio.isEmpty() && !Module1::dbExe.IsOpen());
    EXPECT_EQ(stored("Tip, Benvenuto"), QStringList{"0|1"});
    frame->Form_Activate(); // activated later: nothing more
    EXPECT_EQ(seen.size(), 2);

    EXPECT_TRUE(Module1::bPrimoAvvio);
    EXPECT_TRUE(QFile::exists(dir.filePath("DataSet.qvd")) && QFile::exists(dir.filePath("DataExe.qvd")));
    // The file type, registered once between opening the settings and showing the frame.
    ASSERT_EQ(registry.writes.size(), 9);
    EXPECT_EQ(registry.writes[4], "\\Quorvel\\DefaultIcon||text|" + dir.filePath("sync.svg"));
    EXPECT_TRUE(QFile::exists(dir.filePath("sync.svg")));
    EXPECT_EQ(registry.writes[7], "\\Quorvel\\Shell\\Open\\command||text|" + prefs::ComandoApri(QApplication::applicationFilePath()));

    EXPECT_TRUE(frame->isVisible() && frame->Toolbar1()->isVisibleTo(frame) && frame->Toolbar3()->isVisibleTo(frame));

    // Without a portfolio only what needs none is on.
    EXPECT_EQ(ComandiAttivi(frame), "5");
    EXPECT_EQ(frame->Button(11)->text(), "St.errori"); // delivered with large icons and captions

    // The area the child windows open in takes the scheme's background, now and after a change.
    const auto sfondo = [](double v) { return QColor::fromRgb(static_cast<QRgb>(v)); };
    EXPECT_EQ(frame->Area()->background().color(),
              sfondo(Module1::dbSet.OpenRecordset("SELECT ColoreSfondo FROM Colori").Number("ColoreSfondo")));
    Module1::dbSet.Execute("UPDATE Colori SET ColoreSfondo = " + QString::number(0x204060));
    frame->Colore();
    EXPECT_EQ(frame->Area()->background().color(), QColor(0x20, 0x40, 0x60));

    // Closing ends the program: the frame goes away.
    frame->Menu("mnu_Exit")->trigger();
    EXPECT_FALSE(frame->isVisible());
}

TEST_F(StartupTest, LaterStartsKeepTheSettingsAndShowTheLastFile)
{
    settings("Tip = 0, Benvenuto = 0");
    start();
    Module1::dbSet.Execute("UPDATE Settaggi SET ApriUltimo = '/home/utente/Portafogli/mio conto.qvp', Clock = 0, Menu = 0");
    ProgramTest::TearDown();
    registry.writes.clear();

    // A pure splash: a click on its picture doesn't close it, its timer does.
    bool clickKeptIt = false, tickClosedIt = false;
    start([&](QWidget* splash) {
        EXPECT_FALSE(splash->findChild<QWidget*>("Picture1")->isVisible());
        QTest::mouseClick(splash->findChild<QWidget*>("Image1"), Qt::LeftButton);
        clickKeptIt = splash->isVisible();
        auto* timer = splash->findChild<QTimer*>("Timer1");
        QSignalSpy tick(timer, &QTimer::timeout);
        timer->start(0);
        ASSERT_TRUE(tick.wait(5000));
        tickClosedIt = !splash->isVisible();
    });
    EXPECT_TRUE(clickKeptIt);
    EXPECT_TRUE(tickClosedIt);
    EXPECT_FALSE(Module1::bPrimoAvvio);
    EXPECT_TRUE(registry.writes.isEmpty()); // only the first start registers the file type
    MDIForm1* frame = MDIForm1::Instance();
    QAction* ultimo = frame->Menu("mnu_ApriUltimo");
    EXPECT_TRUE(ultimo->isEnabled());
    EXPECT_EQ(ultimo->text(), "/home/utente/Portafogli/mio conto.qvp");
    EXPECT_FALSE(frame->Toolbar1()->isVisibleTo(frame) || frame->Toolbar3()->isVisibleTo(frame));
}

TEST_F(StartupTest, DamagedSettingsFileCannotStart)
{
    WriteFile(dir.filePath("DataSet.qvd"), "non un database");
    EXPECT_THROW(Module1::Main(dir.path()), store::DbError);
}

TEST_F(StartupTest, WelcomeChoicesOpenNewOpenAndOpenLast)
{
    // New: a portfolio opens, and the unticked box is stored.
    settings("Tip = 0");
    EXPECT_EQ(startChoosing(1, true), "Apre nuovo protafoglio");
    EXPECT_EQ(Module1::iSceltaBenvenuto, 1);
    EXPECT_EQ(Module1::sFilePortafoglio + "|" + frame->windowTitle(), dir.filePath("DataExe.qvd") + "|Quorvel - Quorvel1");
    EXPECT_NE(platform::Forms::Find("frmEseguiti"), nullptr);
    EXPECT_EQ(stored("Tip, Benvenuto"), QStringList{"0|0"});
    ProgramTest::TearDown();

    // Open: the dialog comes; cancelled, the frame stays without a portfolio.
    settings("Tip = 0, Benvenuto = 1");
    QString title;
    AnswerFileDialog("", &title);
    EXPECT_EQ(startChoosing(2), "Apre la finestra di dialogo: apri portafoglio");
    EXPECT_EQ(title, "Apri DataSet");
    EXPECT_TRUE(Module1::sFilePortafoglio.isEmpty());
    ProgramTest::TearDown();

    // Open last: the stored path, with the full path in the caption.
    const QString conto = dir.filePath("conto.qvp");
    store::Database::CopyFile(dir.filePath("DataExe.qvd"), conto);
    settings("ApriUltimo = '" + conto + "'");
    EXPECT_EQ(startChoosing(3), "Apre: " + conto + " l'ultimo portafoglio modificato");
    EXPECT_EQ(Module1::sFilePortafoglio + "|" + frame->windowTitle(), conto + "|Quorvel - " + conto);
    EXPECT_EQ(stored("Benvenuto"), QStringList{"1"}); // the box was left ticked
}

namespace {

class PasswordTest : public StartupTest {
protected:
    void pwd(std::function<void(QWidget*)> work) { RunModal(frame->Menu("mnu_Password"), "Pwd", std::move(work)); }
    // The plain text of the stored password, proved by scrambling it again with the seed it carries.
    void expectStored(const QString& plain)
    {
        const QString coded = stored("Pwd").value(0);
        const int seedDigits = static_cast<int>(coded.size() - 2 * plain.size());
        ASSERT_TRUE(seedDigits == 1 || seedDigits == 2) << coded.toStdString();
        const int seed = coded.left(seedDigits).toInt(nullptr, 16);
        EXPECT_EQ(CodificaConSeme(kChiavePassword, plain, seed), coded);
    }
};

QString status(QWidget* w) { return w->findChild<QStatusBar*>("StatusBar1")->currentMessage(); }
QLineEdit* box(QWidget* w, const char* name) { return w->findChild<QLineEdit*>(name); }
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
    // "0" is the one text that unlocks new-password mode: the boxes show, lab_3 stays hidden.
    pwd([](QWidget* w) {
        QTest::keyClicks(box(w, "txt_1"), "0");
        EXPECT_TRUE(box(w, "txt_3")->isVisible());
        EXPECT_FALSE(w->findChild<QLabel*>("lab_3")->isVisible());
        click(w, "com_Annulla");
    });
    pwd([](QWidget* w) {
        EXPECT_EQ(w->windowTitle(), "Inserimento nuova pasword");
        EXPECT_TRUE(box(w, "txt_2")->isVisible());
        EXPECT_FALSE(box(w, "txt_3")->isVisible());
        EXPECT_EQ(box(w, "txt_1")->echoMode(), QLineEdit::Password);
        EXPECT_EQ(status(w), "inserire la password ");
        QTest::keyClicks(box(w, "txt_1"), "Borsa'24");
        QTest::keyClicks(box(w, "txt_2"), "borsa'24"); // case counts
        click(w, "Command1");
        EXPECT_EQ(status(w), "Password non corretta");
        EXPECT_TRUE(w->isVisible());
        QTest::keyClick(box(w, "txt_2"), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(box(w, "txt_2"), "Borsa'24");
        click(w, "Command1");
    });
    expectStored("Borsa'24"); // the apostrophe is no trouble: the stored form is hexadecimal and blanks
    EXPECT_EQ(platform::Forms::Find("Pwd"), nullptr);

    // Annulla writes nothing.
    const QStringList before = stored("Pwd");
    pwd([](QWidget* w) {
        EXPECT_EQ(w->windowTitle(), "Modifica pasword");
        // Only the boxes are hidden; their labels stand.
        EXPECT_FALSE(box(w, "txt_2")->isVisible() || box(w, "txt_3")->isVisible());
        EXPECT_TRUE(w->findChild<QLabel*>("lab_2")->isVisible() && w->findChild<QLabel*>("lab_3")->isVisible());
        click(w, "com_Annulla");
    });
    EXPECT_EQ(stored("Pwd"), before);
}

TEST_F(PasswordTest, ChangeUnlocksOnTheCurrentPasswordAndEmptyBoxesRemoveIt)
{
    // The euro keeps its code page byte; the "ł" the page lacks is kept, and typed, as "?".
    const QString segreto = QString::fromUtf8("Segreto€ł");
    withPassword(dir.path(), segreto);
    start([&segreto](QWidget* splash) {
        digita(splash->findChild<QLineEdit*>("txt_Pwd"), segreto);
        click(splash, "Command1");
    });

    pwd([&segreto](QWidget* w) {
        digita(box(w, "txt_1"), segreto.chopped(1));
        EXPECT_TRUE(box(w, "txt_1")->isEnabled());
        digita(box(w, "txt_1"), segreto.right(1)); // the whole password, at the keystroke
        EXPECT_FALSE(box(w, "txt_1")->isEnabled());
        EXPECT_EQ(status(w), "Inserire nuova password");
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
    start([&](QWidget* splash) {
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
        QTest::keyClick(txt, Qt::Key_A, Qt::ControlModifier);
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
    start([&login](QWidget* splash) { login = splash->findChild<QWidget*>("Picture1")->isVisible(); });
    EXPECT_TRUE(login);
    EXPECT_EQ(platform::Forms::Find("Presentazione"), nullptr);
}
