// The start as a user meets it: a fresh program folder, the frame without a portfolio.
#include "app/MDIForm1.h"
#include "app/Module1.h"
#include "platform/Forms.h"
#include "store/Delivered.h"
#include "support/Fixture.h"
#include "support/Gui.h"

#include <QAction>
#include <QApplication>
#include <QDateEdit>
#include <QFile>
#include <QMdiArea>
#include <QTemporaryDir>
#include <QToolBar>

#include <gtest/gtest.h>

using namespace testing_support;

namespace {

// Starts by hand: what the start does is the subject here.
using StartupTest = ProgramTest;

bool enabled(const char* name) { return MDIForm1::Instance()->Menu(QString::fromLatin1(name))->isEnabled(); }

} // namespace

TEST_F(StartupTest, FreshFolderStartsIntoTheFrameWithoutAPortfolio)
{
    Module1::Main(dir.path());
    EXPECT_TRUE(Module1::bPrimoAvvio);
    EXPECT_TRUE(QFile::exists(dir.filePath("DataSet.qvd")));
    EXPECT_TRUE(QFile::exists(dir.filePath("DataExe.qvd")));

    MDIForm1* frame = MDIForm1::Instance();
    EXPECT_TRUE(frame->isVisible());
    EXPECT_EQ(frame->objectName(), "MDIForm1");
    EXPECT_EQ(frame->findChild<QDateEdit*>("dtp_Data")->date(), QDate::currentDate());
    EXPECT_TRUE(frame->Toolbar1()->isVisibleTo(frame));
    EXPECT_TRUE(frame->Toolbar3()->isVisibleTo(frame));
    EXPECT_EQ(frame->Toolbar3()->height(), 1000 / 15);

    for (int i : {1, 2, 4, 5})
        EXPECT_TRUE(frame->Button(i)->isEnabled()) << i;
    for (int i : {6, 7, 8, 10, 11, 12, 13, 14, 15, 16, 17})
        EXPECT_FALSE(frame->Button(i)->isEnabled()) << i;
    EXPECT_TRUE(frame->Button(3)->isSeparator());
    EXPECT_TRUE(frame->Button(9)->isSeparator());
    EXPECT_EQ(frame->Button(8)->objectName(), "Op.Chiuse");
    EXPECT_EQ(frame->Button(11)->text(), "St.errori"); // delivered with large icons and captions
    EXPECT_EQ(frame->Button(12)->toolTip(), "Statistiche prestazioni per giorno settimanale");

    for (const char* off : {"mnu_Salva", "mnu_Importa", "mnu_Eseguiti", "mnu_Portafoglio", "mnu_Errori",
                            "mnu_OperazioniChiuse", "mnu_SequenzeOperazioni", "mnu_Esporta", "mnu_GP",
                            "mnu_StatistichePeriodo", "mnu_Report", "mnu_Risk", "mnu_MDD", "mnu_Medie", "mnu_ApriUltimo"})
        EXPECT_FALSE(enabled(off)) << off;
    for (const char* on : {"mnu_NuovoPortafoglio", "mnu_Apri", "mnu_Exit", "mnu_Password", "mnu_ParametriIniziali",
                           "mnu_PersonalizzaErrori", "mnu_OpzioniVista", "mnu_Menu", "mnu_Calcolatore",
                           "mnu_ContoTitoli", "mnu_Help", "mnu_Tips", "mnu_About"})
        EXPECT_TRUE(enabled(on)) << on;
    EXPECT_TRUE(frame->Menu("mnu_ApriUltimo")->isVisible()); // greyed, but in the menu

    // The area the child windows open in takes the scheme's background, now and after a change.
    const auto sfondo = [](double v) { return QColor::fromRgb(static_cast<QRgb>(v)); };
    EXPECT_EQ(frame->Area()->background().color(),
              sfondo(Module1::dbSet.OpenRecordset("SELECT ColoreSfondo FROM Colori").Number("ColoreSfondo")));
    Module1::dbSet.Execute("UPDATE Colori SET ColoreSfondo = " + QString::number(0x204060));
    frame->Colore();
    EXPECT_EQ(frame->Area()->background().color(), QColor(0x20, 0x40, 0x60));

    // The first activation runs once and opens no portfolio by itself.
    EXPECT_TRUE(Module1::bAvvioInCorso);
    frame->Form_Activate();
    EXPECT_FALSE(Module1::bAvvioInCorso);
    EXPECT_TRUE(Module1::sFilePortafoglio.isEmpty());
    EXPECT_FALSE(Module1::dbExe.IsOpen());

    // Closing ends the program: the frame goes away.
    frame->Menu("mnu_Exit")->trigger();
    EXPECT_FALSE(frame->isVisible());
}

TEST_F(StartupTest, LaterStartsKeepTheSettingsAndShowTheLastFile)
{
    Module1::Main(dir.path());
    Module1::dbSet.Execute("UPDATE Settaggi SET ApriUltimo = '/home/utente/Portafogli/mio conto.qvp', Clock = 0, Menu = 0");
    TearDown();

    Module1::Main(dir.path());
    EXPECT_FALSE(Module1::bPrimoAvvio);
    MDIForm1* frame = MDIForm1::Instance();
    QAction* ultimo = frame->Menu("mnu_ApriUltimo");
    EXPECT_TRUE(ultimo->isEnabled());
    EXPECT_EQ(ultimo->text(), "/home/utente/Portafogli/mio conto.qvp");
    EXPECT_FALSE(frame->Toolbar1()->isVisibleTo(frame));
    EXPECT_FALSE(frame->Toolbar3()->isVisibleTo(frame));
}

TEST_F(StartupTest, ToolbarMenuFollowsTheThreeIconModes)
{
    Module1::Main(dir.path());
    MDIForm1* frame = MDIForm1::Instance();
    frame->ToolbarMenu(0, 1); // small pictures never have captions
    EXPECT_EQ(frame->Toolbar1()->iconSize(), QSize(16, 16));
    EXPECT_EQ(frame->Button(4)->text(), "");
    EXPECT_EQ(frame->Button(4)->toolTip(), "Calcolatore finanziario");
    frame->ToolbarMenu(1, 0);
    EXPECT_EQ(frame->Toolbar1()->iconSize(), QSize(32, 32));
    EXPECT_EQ(frame->Button(13)->text(), "");
    frame->ToolbarMenu(1, 1);
    EXPECT_EQ(frame->Button(13)->text(), "Operazioni");
    EXPECT_EQ(frame->Button(13)->toolTip(), "Grafico operazioni");
}

TEST_F(StartupTest, DamagedSettingsFileCannotStart)
{
    QFile f(dir.filePath("DataSet.qvd"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("non un database");
    f.close();
    EXPECT_THROW(Module1::Main(dir.path()), store::DbError);
}
