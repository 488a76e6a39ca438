// The move into ~/.local/opt and the update from the release volume, on bundles in a temporary
// home.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "TempHome.h"
#include "main/Paths.h"
#include "shell/Install.h"
#include "shell/Update.h"

using namespace shell;

namespace {

struct Watched {
    QStringList events;
    QStringList started;
    InstallActions actions() {
        InstallActions a;
        a.quitOthers = [this] { events << QStringLiteral("quitOthers"); };
        a.startDetached = [this](const QString& program, const QStringList& args) {
            events << QStringLiteral("start");
            started = QStringList{program} + args;
            return true;
        };
        a.alert = [this](const QString& message, const QString&) {
            events << QStringLiteral("alert ") + message;
        };
        a.quit = [this] { events << QStringLiteral("quit"); };
        return a;
    }
};

class InstallTest : public ::testing::Test {
protected:
    testsupport::TempHome home;

    // A bundle as the release image holds it; its program not yet executable.
    QString makeBundle(const QString& relative, const QByteArray& build) {
        home.write(relative + "/bin/glimmo", "#!/bin/sh\n");
        home.write(relative + "/share/applications/glimmo.desktop",
                   "[Desktop Entry]\nType=Application\nName=Glimmo\nExec=glimmo\nIcon=glimmo\n");
        home.write(relative + "/share/icons/hicolor/scalable/apps/glimmo.svg", "<svg/>");
        home.write(relative + "/share/glimmo/build", build);
        return home.path() + "/" + relative;
    }
    BundlePaths paths(const QString& executable) const {
        BundlePaths p;
        p.executable = executable;
        p.home = home.path();
        p.dataHome = home.path() + "/.local/share";
        p.volumeMounts = {home.path() + "/media/Glimmo", home.path() + "/run/media/Glimmo"};
        return p;
    }
    QString dest() const { return home.path() + "/.local/opt/Glimmo"; }
    QString log() const { return QString::fromUtf8(home.read(".local/share/Glimmo/log.txt")); }
};

TEST_F(InstallTest, StaysWhereInstalledOrWithStay) {
    const QString elsewhere = makeBundle("Downloads/Glimmo", "3\n") + "/bin/glimmo";
    for (const QString& exe : {QStringLiteral("/usr/bin/glimmo"),
                               QStringLiteral("/opt/x/bin/glimmo"), dest() + "/bin/glimmo"}) {
        Watched w;
        EXPECT_FALSE(moveToApplications({exe}, paths(exe), w.actions())) << exe.toStdString();
        EXPECT_TRUE(w.events.isEmpty());
    }
    Watched w;
    EXPECT_FALSE(moveToApplications({elsewhere, "-stay"}, paths(elsewhere), w.actions()));
    // A program in a build folder is no bundle.
    const QString built = home.write("src/build/glimmo", "");
    EXPECT_FALSE(moveToApplications({built}, paths(built), w.actions()));
    EXPECT_TRUE(w.events.isEmpty());
    EXPECT_FALSE(QFileInfo::exists(dest()));
}

TEST_F(InstallTest, MovesFromElsewhereAndRelaunchesTheCopy) {
    const QString exe = makeBundle("Downloads/Glimmo", "3\n") + "/bin/glimmo";
    home.write(".local/opt/Glimmo/old-copy", "x");
    Watched w;
    ASSERT_TRUE(moveToApplications({exe}, paths(exe), w.actions()));

    EXPECT_EQ(w.events, QStringList({"quitOthers", "start", "quit"}));
    EXPECT_EQ(w.started,
              QStringList({"/bin/sh", "-c", "sleep 1; exec \"" + dest() + "/bin/glimmo\" -setup"}));
    EXPECT_TRUE(QFileInfo(dest() + "/bin/glimmo").isExecutable());
    EXPECT_EQ(bundleVersion(dest()), 3);
    EXPECT_FALSE(QFileInfo::exists(dest() + "/old-copy"));
    EXPECT_TRUE(QFileInfo::exists(home.path() + "/.local/share/Trash/files/Glimmo/old-copy"));

    const QString entry = QString::fromUtf8(home.read(".local/share/applications/glimmo.desktop"));
    EXPECT_TRUE(entry.contains("\nExec=\"" + dest() + "/bin/glimmo\"\n")) << entry.toStdString();
    EXPECT_TRUE(
        QFileInfo::exists(home.path() + "/.local/share/icons/hicolor/scalable/apps/glimmo.svg"));
    EXPECT_EQ(QFileInfo(home.path() + "/.local/bin/glimmo").symLinkTarget(),
              dest() + "/bin/glimmo");
    EXPECT_TRUE(log().contains(" moved into Applications\n"));
}

TEST_F(InstallTest, FailedCopyAlertsAndQuits) {
    const QString exe = makeBundle("Downloads/Glimmo", "3\n") + "/bin/glimmo";
    home.write(".local/opt", "a file where the folder should be");
    Watched w;
    ASSERT_TRUE(moveToApplications({exe}, paths(exe), w.actions()));
    EXPECT_EQ(w.events, QStringList({"quitOthers", "alert Install Glimmo", "quit"}));
    EXPECT_TRUE(log().contains(" move to Applications: cannot create ")) << log().toStdString();
    EXPECT_FALSE(log().contains("moved into Applications"));
}

TEST_F(InstallTest, UpdatesOnlyFromAHigherBuild) {
    const QString exe = makeBundle(".local/opt/Glimmo", "41\n") + "/bin/glimmo";
    QDir().mkpath(glimmo::supportDir());  // the running program made it
    Watched none;
    EXPECT_FALSE(updateFromDiskImage(paths(exe), none.actions()));  // no volume mounted

    for (const QByteArray build : {"41", "40", "1.2", ""}) {
        makeBundle("run/media/Glimmo/Glimmo", build);
        Watched w;
        EXPECT_FALSE(updateFromDiskImage(paths(exe), w.actions())) << build.constData();
        EXPECT_TRUE(w.events.isEmpty());
    }
    QFile::remove(home.path() + "/run/media/Glimmo/Glimmo/share/glimmo/build");
    Watched unreadable;
    EXPECT_FALSE(updateFromDiskImage(paths(exe), unreadable.actions()));

    makeBundle("run/media/Glimmo/Glimmo", "42\n");
    Watched w;
    ASSERT_TRUE(updateFromDiskImage(paths(exe), w.actions()));
    EXPECT_EQ(w.events, QStringList({"start", "quit"}));
    EXPECT_EQ(w.started.last(), "sleep 1; exec \"" + dest() + "/bin/glimmo\" -setup");
    EXPECT_EQ(bundleVersion(dest()), 42);
    EXPECT_TRUE(log().contains(" updating 41 -> 42\n"));
}

TEST(BuildNumber, WholeDecimalWithinSixtyFourBits) {
    EXPECT_EQ(parseBuild("+42"), 42);
    EXPECT_EQ(parseBuild("-7"), -7);
    EXPECT_EQ(parseBuild("9223372036854775807"), 9223372036854775807LL);
    EXPECT_EQ(parseBuild("-9223372036854775808"), std::numeric_limits<long long>::min());
    for (const char* bad : {"", "+", "1.2", " 4", "4 ", "9223372036854775808", "0x10", "٣"})
        EXPECT_EQ(parseBuild(QString::fromUtf8(bad)), std::nullopt) << bad;
}

}  // namespace
