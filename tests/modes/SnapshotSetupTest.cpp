#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>

#include "TempHome.h"

namespace {

// The image modes with no display at all, as on a build machine.
int runWithoutDisplay(const testsupport::TempHome& home, const QStringList& args) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "DISPLAY", "WAYLAND_DISPLAY",
                             "QT_QPA_PLATFORM", "DBUS_SESSION_BUS_ADDRESS"})
        env.remove(name);
    env.insert("HOME", home.path());
    QProcess p;
    p.setProcessEnvironment(env);
    p.start(GLIMMO_EXECUTABLE, args);
    if (!p.waitForFinished(60000)) {
        p.kill();
        p.waitForFinished();
        return -1;
    }
    return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
}

TEST(SnapshotSetup, SetupImagesAreWrittenFiveHundredWide) {
    testsupport::TempHome home;
    ASSERT_EQ(runWithoutDisplay(home, {"-snapshotSetup", home.path()}), 0);
    QList<int> heights;
    for (const char* state :
         {"1-fresh", "2-access", "3-install", "4-signin", "4b-connect", "5-done"}) {
        const QImage image(home.path() + "/setup-" + state + ".png");
        ASSERT_FALSE(image.isNull()) << state;
        EXPECT_EQ(image.width(), 500) << state;
        heights << image.height();
    }
    // The open step decides the height: the form of step 1 is the tallest, the finished
    // window the shortest.
    EXPECT_GT(heights[0], heights[1]);
    EXPECT_EQ(heights[1], heights[2]);
    EXPECT_GT(heights[3], heights[4]);
    EXPECT_LT(heights[5], heights[4]);

    ASSERT_EQ(runWithoutDisplay(home, {"-snapshotUI", home.path()}), 0);
    const QImage ui(home.path() + "/ui-setup.png");
    EXPECT_EQ(ui.width(), 500);
    EXPECT_EQ(ui.height(), heights[1]);
}

}  // namespace
