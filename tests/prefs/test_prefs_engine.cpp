// What the preference windows compute without a window: the shared random generator,
// the clock hands, the file type and the system information tool.
#include "app/Codifica.h"
#include "instruments/ClockGeometry.h"
#include "platform/Casuale.h"
#include "platform/Programmi.h"
#include "platform/Registro.h"
#include "prefs/AssociaFile.h"
#include "prefs/Consigli.h"
#include "prefs/InfoSistema.h"
#include "support/Fixture.h"

#include <QDir>
#include <QFile>
#include <QMimeDatabase>
#include <QTemporaryDir>
#include <QtMath>

#include <gtest/gtest.h>

#include <set>

using namespace testing_support;

namespace {

// A folder on PATH holding empty executables of these names, for the length of a test.
class FakePath {
public:
    explicit FakePath(const QStringList& programs) : old_(qgetenv("PATH"))
    {
        for (const QString& p : programs) {
            QFile::setPermissions(WriteFile(dir_.filePath(p), "#!/bin/sh\n"),
                                  QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
        qputenv("PATH", dir_.path().toUtf8());
    }
    ~FakePath() { qputenv("PATH", old_); }
    QString File(const QString& name) const { return dir_.filePath(name); }

private:
    QTemporaryDir dir_;
    QByteArray old_;
};

// Records the programs started instead of starting them.
class FakeStarter {
public:
    explicit FakeStarter(bool starts = true)
    {
        platform::SostituisciAvviatore([this, starts](const QString& program, const QStringList& args) {
            started << (QStringList{program} + args).join(' ');
            return starts;
        });
    }
    ~FakeStarter() { platform::SostituisciAvviatore({}); }
    QStringList started;
};

} // namespace

TEST(SharedRandom, TwoStartsShowTheSameRulesUntilAPasswordIsScrambled)
{
    platform::Casuale primo, secondo;
    std::set<int> visti;
    for (int i = 0; i < 20; ++i) {
        const int n = prefs::ScostamentoConsiglio(primo);
        EXPECT_EQ(n, prefs::ScostamentoConsiglio(secondo));
        EXPECT_TRUE(n >= 0 && n < 120) << n;
        visti.insert(n);
    }
    EXPECT_GT(visti.size(), 10u);

    // Unscrambling leaves the shared generator where it was...
    platform::Casuale copia = platform::Generatore();
    EXPECT_EQ(Codifica("D", kChiavePassword, "5ADB"), "0");
    EXPECT_EQ(copia.Rnd(), platform::Generatore().Rnd());
    // ...scrambling seeds it from the clock, so the tips go another way.
    copia = platform::Generatore();
    Codifica("E", kChiavePassword, "segreto");
    std::vector<double> dopo, prima;
    for (int i = 0; i < 4; ++i) {
        dopo.push_back(platform::Generatore().Rnd());
        prima.push_back(copia.Rnd());
    }
    EXPECT_NE(dopo, prima);
}

TEST(ClockGeometry, HourHandAndTimeZones)
{
    const int r = 24;
    // 9:30: H = 270 - 180 + round(0 / 12 + 15) = 105, 15 degrees above the 9, halfway to the 10; y grows downward.
    const QPointF meta = orologio::Disegna(r, QTime(21, 30)).oraria.p2() - QPointF(r, r);
    EXPECT_NEAR(qRadiansToDegrees(std::atan2(-meta.y(), -meta.x())), 15.0, 1e-3);
    EXPECT_NEAR(std::hypot(meta.x(), meta.y()), 0.7 * r, 1e-3);

    // Fixed offsets on the machine's clock, wrapping round midnight.
    EXPECT_EQ(orologio::OraDelFuso(QTime(2, 0), -6), QTime(20, 0));
    EXPECT_EQ(orologio::OraDelFuso(QTime(20, 30, 15), 8), QTime(4, 30, 15));
}

TEST(FileType, FreedesktopFormInTheDataFolder)
{
    QTemporaryDir data, programma;
    const QString icona = programma.filePath("sync.svg");
    ASSERT_TRUE(QFile::copy(":/data/sync.svg", icona));
    const FakePath path({"update-mime-database", "update-desktop-database"});
    const FakeStarter starter;
    platform::RegistroFreedesktop registry(data.path());
    prefs::AssociaFile(registry, icona, "/opt/Quorvel app/quor$vel");

    const QDir d(data.path());
    const QString xml = QString::fromUtf8(FileBytes(d.filePath("mime/packages/quorvel.xml")));
    EXPECT_TRUE(xml.contains("<comment>Quorvel</comment>"));
    EXPECT_TRUE(xml.contains("<icon name=\"application-x-quorvel\"/>"));
    EXPECT_EQ(xml.count("<glob "), 1); // ".Qvp" and ".qvp" are one key

    const QStringList entry = QString::fromUtf8(FileBytes(d.filePath("applications/quorvel-file.desktop"))).split('\n');
    EXPECT_EQ(entry.first(), "[Desktop Entry]");
    // The path quoted with its "$" escaped, then the backslash doubled as every string value's is.
    for (const char* line : {"Exec=\"/opt/Quorvel app/quor\\\\$vel\" %f", "MimeType=application/x-quorvel;", "Name=Quorvel",
                             "Icon=application-x-quorvel", "NoDisplay=true"})
        EXPECT_TRUE(entry.contains(line)) << line;
    EXPECT_FALSE(QFile::exists(d.filePath("applications/quorvel.desktop"))); // the installed launcher's name
    EXPECT_EQ(FileBytes(d.filePath("icons/hicolor/scalable/mimetypes/application-x-quorvel.svg")), FileBytes(icona));
    EXPECT_EQ(starter.started, (QStringList{path.File("update-mime-database") + " " + d.filePath("mime"),
                                            path.File("update-desktop-database") + " " + d.filePath("applications")}));

    // What a desktop reads from it.
    qputenv("XDG_DATA_HOME", data.path().toUtf8());
    EXPECT_EQ(QMimeDatabase().mimeTypeForFile("conto.qvp", QMimeDatabase::MatchExtension).name(), "application/x-quorvel");
    qunsetenv("XDG_DATA_HOME");
}

TEST(SystemInformation, FirstProgramOnThePathElseNone)
{
    {
        const FakePath path({"gnome-system-monitor", "kinfocenter"});
        const FakeStarter starter;
        EXPECT_TRUE(prefs::AvviaInfoSistema());
        EXPECT_EQ(starter.started, QStringList{path.File("kinfocenter")}); // earlier in the list
    }
    const FakePath path({"gnome-system-monitor"});
    const FakeStarter fails(false);
    EXPECT_FALSE(prefs::AvviaInfoSistema()); // found, but it would not start
}
