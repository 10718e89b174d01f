// The start as a user meets it: a fresh program folder, the frame without a portfolio.
// The mouse goes through the window system, so moving it over a picture is a real move.
#define QTEST_QPA_MOUSE_HANDLING
#include "app/ComandiAttivi.h"
#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/Forms.h"
#include "platform/Registro.h"
#include "prefs/AssociaFile.h"
#include "store/Delivered.h"
#include "support/FakeRegistry.h"
#include "support/Fixture.h"
#include "support/Gui.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDateEdit>
#include <QFile>
#include <QLabel>
#include <QMdiArea>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QToolBar>

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

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
    void start()
    {
        ClickAwaySplash();
        Module1::Main(dir.path());
        frame = MDIForm1::Instance();
    }
    void settings(const QString& set) { PrepareSettings(dir.path(), set); }
    // The first activation with a choice in the welcome window: the mouse over picture
    // `image`, the box maybe unticked, a click. Returns the line read under the pictures.
    QString choose(int image, bool untick = false)
    {
        QString line;
        WhenModal([&line, image, untick](QWidget* welcome) {
            auto* picture = welcome->findChild<QLabel*>(QString("Image%1").arg(image));
            QTest::mouseMove(picture);
            line = welcome->findChild<QLabel*>("Label2")->text();
            const auto pictures = welcome->findChildren<QLabel*>(QRegularExpression("^Image"));
            for (auto* other : pictures)
                EXPECT_EQ(other->frameShape() == QFrame::Box, other == picture) << other->objectName().toStdString();
            // Off the pictures: no border, no line.
            QTest::mouseMove(welcome->findChild<QWidget*>("Picture1"), QPoint(8, 200));
            EXPECT_TRUE(welcome->findChild<QLabel*>("Label2")->text().isEmpty());
            for (auto* other : pictures)
                EXPECT_EQ(other->frameShape(), QFrame::NoFrame);
            if (untick)
                QTest::mouseClick(welcome->findChild<QCheckBox*>("Check1"), Qt::LeftButton);
            QTest::mouseClick(picture, Qt::LeftButton);
        }, [](QWidget* w) { return w->objectName() == "frmBenvenuto"; });
        frame->Form_Activate();
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
    start();
    EXPECT_TRUE(Module1::bPrimoAvvio);
    EXPECT_TRUE(QFile::exists(dir.filePath("DataSet.qvd")));
    EXPECT_TRUE(QFile::exists(dir.filePath("DataExe.qvd")));
    // The file type, registered once between opening the settings and showing the frame.
    ASSERT_EQ(registry.writes.size(), 9);
    EXPECT_EQ(registry.writes[4], "\\Quorvel\\DefaultIcon||text|" + dir.filePath("sync.svg"));
    EXPECT_TRUE(QFile::exists(dir.filePath("sync.svg")));
    EXPECT_EQ(registry.writes[7], "\\Quorvel\\Shell\\Open\\command||text|" + prefs::ComandoApri(QApplication::applicationFilePath()));

    EXPECT_TRUE(frame->isVisible());
    EXPECT_EQ(frame->findChild<QDateEdit*>("dtp_Data")->date(), QDate::currentDate());
    EXPECT_TRUE(frame->Toolbar1()->isVisibleTo(frame));
    EXPECT_TRUE(frame->Toolbar3()->isVisibleTo(frame));

    // Without a portfolio only what needs none is on.
    EXPECT_EQ(ComandiAttivi(frame), "5");
    for (const char* on : {"mnu_NuovoPortafoglio", "mnu_Apri", "mnu_PersonalizzaErrori"}) // the others are triggered in their tests
        EXPECT_TRUE(frame->Menu(on)->isEnabled()) << on;
    EXPECT_EQ(frame->Button(11)->text(), "St.errori"); // delivered with large icons and captions
    EXPECT_TRUE(frame->Menu("mnu_ApriUltimo")->isVisible()); // greyed, but in the menu

    // The area the child windows open in takes the scheme's background, now and after a change.
    const auto sfondo = [](double v) { return QColor::fromRgb(static_cast<QRgb>(v)); };
    EXPECT_EQ(frame->Area()->background().color(),
              sfondo(Module1::dbSet.OpenRecordset("SELECT ColoreSfondo FROM Colori").Number("ColoreSfondo")));
    Module1::dbSet.Execute("UPDATE Colori SET ColoreSfondo = " + QString::number(0x204060));
    frame->Colore();
    EXPECT_EQ(frame->Area()->background().color(), QColor(0x20, 0x40, 0x60));

    // The first activation shows the tips, then the welcome window, each once,
    // and without a choice opens no portfolio.
    EXPECT_TRUE(Module1::bAvvioInCorso);
    QStringList seen;
    WhenModal([&seen](QWidget* tip) {
        seen << tip->objectName();
        QTest::mouseClick(tip->findChild<QCheckBox*>("chk_Tip"), Qt::LeftButton);
        QTest::mouseClick(tip->findChild<QPushButton*>("Command2"), Qt::LeftButton);
    }, [](QWidget* w) { return w->objectName() == "Tip"; });
    WhenModal([&seen](QWidget* welcome) {
        seen << welcome->objectName();
        QTest::mouseClick(welcome->findChild<QCheckBox*>("Check1"), Qt::LeftButton);
        QTest::keyClick(welcome, Qt::Key_Escape); // closed without a choice: the box is not stored
    }, [](QWidget* w) { return w->objectName() == "frmBenvenuto"; });
    frame->Form_Activate();
    EXPECT_EQ(seen, (QStringList{"Tip", "frmBenvenuto"}));
    EXPECT_FALSE(Module1::bAvvioInCorso);
    EXPECT_EQ(Module1::iSceltaBenvenuto, 0);
    EXPECT_TRUE(Module1::sFilePortafoglio.isEmpty());
    EXPECT_FALSE(Module1::dbExe.IsOpen());
    EXPECT_EQ(stored("Tip, Benvenuto"), QStringList{"0|1"});
    frame->Form_Activate(); // activated again: nothing more
    EXPECT_EQ(seen.size(), 2);

    // Closing ends the program: the frame goes away.
    frame->Menu("mnu_Exit")->trigger();
    EXPECT_FALSE(frame->isVisible());
}

TEST_F(StartupTest, LaterStartsKeepTheSettingsAndShowTheLastFile)
{
    start();
    Module1::dbSet.Execute("UPDATE Settaggi SET ApriUltimo = '/home/utente/Portafogli/mio conto.qvp', Clock = 0, Menu = 0");
    ProgramTest::TearDown();
    registry.writes.clear();

    start();
    EXPECT_FALSE(Module1::bPrimoAvvio);
    EXPECT_TRUE(registry.writes.isEmpty()); // only the first start registers the file type
    MDIForm1* frame = MDIForm1::Instance();
    QAction* ultimo = frame->Menu("mnu_ApriUltimo");
    EXPECT_TRUE(ultimo->isEnabled());
    EXPECT_EQ(ultimo->text(), "/home/utente/Portafogli/mio conto.qvp");
    EXPECT_FALSE(frame->Toolbar1()->isVisibleTo(frame));
    EXPECT_FALSE(frame->Toolbar3()->isVisibleTo(frame));
}

TEST_F(StartupTest, DamagedSettingsFileCannotStart)
{
    QFile f(dir.filePath("DataSet.qvd"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("non un database");
    f.close();
    EXPECT_THROW(Module1::Main(dir.path()), store::DbError);
}

TEST_F(StartupTest, WelcomeChoicesOpenNewOpenAndOpenLast)
{
    // New: a portfolio opens, and the unticked box is stored.
    settings("Tip = 0");
    start();
    EXPECT_EQ(choose(1, true), "Apre nuovo protafoglio");
    EXPECT_EQ(Module1::iSceltaBenvenuto, 1);
    EXPECT_EQ(Module1::sFilePortafoglio, dir.filePath("DataExe.qvd"));
    EXPECT_EQ(frame->windowTitle(), "Quorvel - Quorvel1");
    EXPECT_NE(platform::Forms::Find("frmEseguiti"), nullptr);
    EXPECT_EQ(stored("Tip, Benvenuto"), QStringList{"0|0"});
    ProgramTest::TearDown();

    // Open: the dialog comes; cancelled, the frame stays without a portfolio.
    settings("Tip = 0, Benvenuto = 1");
    start();
    QString title;
    AnswerFileDialog("", &title);
    EXPECT_EQ(choose(2), "Apre la finestra di dialogo: apri portafoglio");
    EXPECT_EQ(title, "Apri DataSet");
    EXPECT_TRUE(Module1::sFilePortafoglio.isEmpty());
    ProgramTest::TearDown();

    // Open last: the stored path, with the full path in the caption.
    const QString conto = dir.filePath("conto.qvp");
    store::Database::CopyFile(dir.filePath("DataExe.qvd"), conto);
    settings("ApriUltimo = '" + conto + "'");
    start();
    EXPECT_EQ(choose(3), "Apre: " + conto + " l'ultimo portafoglio modificato");
    EXPECT_EQ(Module1::sFilePortafoglio, conto);
    EXPECT_EQ(frame->windowTitle(), "Quorvel - " + conto);
    EXPECT_EQ(stored("Benvenuto"), QStringList{"1"}); // the box was left ticked
}
