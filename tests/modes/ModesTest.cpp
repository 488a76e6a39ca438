#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>

#include "TempHome.h"
#include "claude/Profile.h"
#include "platform/JsonDefaults.h"
#include "rules/RulesCheck.h"

namespace {

struct Outcome {
    int status = -1;
    QByteArray out;
    QByteArray err;
};

// The program with a home of its own and nothing that could reach a display.
Outcome runGlimmo(const testsupport::TempHome& home, const QStringList& args) {
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
        return {};
    }
    const int status = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    return {status, p.readAllStandardOutput(), p.readAllStandardError()};
}

TEST(Modes, PrintPromptWithoutDisplay) {
    testsupport::TempHome home;
    platform::MemoryDefaults empty;
    const Outcome fresh = runGlimmo(home, {"-printPrompt"});
    EXPECT_EQ(fresh.status, 0);
    EXPECT_EQ(fresh.out, claude::Profile(empty).prompt().toUtf8() + '\n');

    home.write(".config/Glimmo/defaults.json",
               R"({"name": "Alex", "role": "Head of Sales", "language": "Spanish"})");
    const Outcome saved = runGlimmo(home, {"-menuIcon", home.path() + "/icon.png", "-printPrompt"});
    EXPECT_EQ(saved.status, 0);
    EXPECT_TRUE(saved.out.contains(
        "docs). Alex is Head of Sales at Norwell, an AI company for dental revenue cycle "
        "management. Their first language is Spanish; English is a second language. They write"));
    EXPECT_TRUE(saved.out.endsWith("as strings.\n"));
}

TEST(Modes, RulesTestOnAFreshStore) {
    testsupport::TempHome home;
    platform::MemoryDefaults reference;
    rules::AppRules referenceRules(reference);
    const QByteArray expected = rules::rulesCheck(referenceRules).join('\n').toUtf8() + '\n';
    EXPECT_TRUE(expected.startsWith("on  Slack\noff Terminal\n"));

    for (int round = 0; round < 2; ++round) {
        const Outcome run = runGlimmo(home, {"-rulesTest"});
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out, expected) << run.out.toStdString();
    }
    platform::JsonDefaults store(platform::JsonDefaults::standardPath());
    EXPECT_EQ(store.boolMap("appOn"), platform::BoolMap{});
    EXPECT_EQ(store.boolMap("siteOn"), platform::BoolMap{});
}

TEST(Modes, MenuIconWithoutDisplay) {
    testsupport::TempHome home;
    const QString path = home.path() + "/icon.png";
    EXPECT_EQ(runGlimmo(home, {"-menuIcon", path}).status, 0);
    const QImage strip(path);
    ASSERT_EQ(strip.size(), QSize(40, 18));
    // Black on transparent; the badge's dot only on the right; nothing in the gap between.
    const auto ink = [&](int x0, int x1, int y0, int y1) {
        int most = 0;
        for (int x = x0; x < x1; ++x)
            for (int y = y0; y < y1; ++y) {
                const QRgb p = strip.pixel(x, y);
                if (qAlpha(p) > 0) {
                    EXPECT_LT(qRed(p) + qGreen(p) + qBlue(p), 60);
                }
                most = std::max(most, qAlpha(p));
            }
        return most;
    };
    EXPECT_GT(ink(0, 18, 0, 18), 200);
    EXPECT_EQ(ink(19, 21, 0, 18), 0);
    EXPECT_LT(ink(16, 18, 0, 2), 40);
    EXPECT_GT(ink(22 + 14, 22 + 17, 2, 5), 200);
}

TEST(Modes, OptionsAnswerWithoutDisplayAndALaunchSaysWhatIsMissing) {
    testsupport::TempHome home;
    const Outcome help = runGlimmo(home, {"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.out.contains("\n  -menuIcon FILE ")) << help.out.toStdString();
    const Outcome version = runGlimmo(home, {"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_TRUE(version.out.startsWith("Glimmo ")) << version.out.toStdString();

    const Outcome unknown = runGlimmo(home, {"--frobnicate"});
    EXPECT_EQ(unknown.status, 2);
    EXPECT_TRUE(unknown.err.startsWith("glimmo: unknown option --frobnicate\n"));
    EXPECT_TRUE(unknown.err.contains("Usage: glimmo"));

    const Outcome launch = runGlimmo(home, {});
    EXPECT_EQ(launch.status, 1);
    EXPECT_TRUE(launch.err.contains("no display")) << launch.err.toStdString();
}

TEST(Modes, WindowImagesWithoutDisplay) {
    testsupport::TempHome home;
    for (const char* mode : {"-snapshotSetup", "-snapshotUI"}) {
        const Outcome shot = runGlimmo(home, {mode, home.path()});
        ASSERT_EQ(shot.status, 0) << mode << ": " << shot.err.toStdString();
    }
    for (const char* name : {"apps", "apps-open", "ui-apps"})
        EXPECT_FALSE(QImage(home.path() + "/" + name + ".png").isNull()) << name;
    // The bubble on a transparent ground: rounded corners leave the very corner clear.
    const QImage bubble(home.path() + "/ui-bubble.png");
    EXPECT_EQ(bubble.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(bubble.pixelColor(bubble.width() / 2, 2).alpha(), 255);

    QList<int> heights;
    for (const char* state :
         {"1-fresh", "2-access", "3-install", "4-signin", "4b-connect", "5-done"}) {
        const QImage image(home.path() + "/setup-" + state + ".png");
        ASSERT_FALSE(image.isNull()) << state;
        heights << image.height();
    }
    // The open step decides the height: the form of step 1 is the tallest, the finished
    // window the shortest; step 2 also says which browsers to start again.
    EXPECT_GT(heights[0], heights[1]);
    EXPECT_GT(heights[1], heights[2]);
    EXPECT_GT(heights[3], heights[4]);
    EXPECT_LT(heights[5], heights[4]);
    const QImage ui(home.path() + "/ui-setup.png");
    EXPECT_EQ(ui.height(), heights[1]);
}

}  // namespace
