#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>

#include "DesktopHelpers.h"
#include "TempHome.h"

namespace {

using desktop::output;
using testsupport::waitUntil;

void setAccessibility(bool on) {
    output("dbus-send",
           {"--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
            "org.freedesktop.DBus.Properties.Set", "string:org.a11y.Status", "string:IsEnabled",
            on ? "variant:boolean:true" : "variant:boolean:false"});
}

bool accessibilityOn() {
    return output("dbus-send", {"--session", "--print-reply=literal", "--dest=org.a11y.Bus",
                                "/org/a11y/bus", "org.freedesktop.DBus.Properties.Get",
                                "string:org.a11y.Status", "string:IsEnabled"})
        .contains("true");
}

class Program {
public:
    Program() {
        // claude answers the verification only once the test says it is signed in.
        const QString claude =
            home_.write("bin/claude",
                        "#!/bin/sh\ncat >/dev/null\necho asked >> \"$HOME/asked\"\n"
                        "[ -f \"$HOME/signed-in\" ] && echo OK && exit 0\n"
                        "echo 'Not logged in · Please run /login'; exit 1\n");
        QFile::setPermissions(claude, QFile::permissions(claude) | QFile::ExeOwner);
        home_.write(".local/share/Glimmo/claude-path", claude.toUtf8() + '\n');

        process_.setProcessChannelMode(QProcess::MergedChannels);
        process_.setStandardOutputFile(home_.path() + "/output.txt");
        testsupport::startIn(process_, home_.path(), GLIMMO_BINARY);
    }
    ~Program() {
        process_.terminate();
        if (!process_.waitForFinished(5000)) process_.kill();
        process_.waitForFinished(1000);
    }

    void write(const QString& relative, const QByteArray& content) {
        home_.write(relative, content);
    }
    QString read(const QString& relative) const { return QString::fromUtf8(home_.read(relative)); }
    QString log() const { return read(".local/share/Glimmo/log.txt"); }
    QString settings() const { return read(".config/Glimmo/defaults.json"); }
    qint64 pid() const { return process_.processId(); }

private:
    testsupport::TempFolder home_;
    QProcess process_;
};

// The setup window of that process, looked up afresh: switching accessibility on may make Qt
// re-create it. Empty while there is none.
QString setupWindow(qint64 pid) {
    return desktop::windowOf(pid, "^Set up Glimmo$");
}

QSize windowSize(qint64 pid) {
    return desktop::windowFrame(pid, "^Set up Glimmo$").value_or(QRect()).size();
}

// A picture of the window, left in the build folder to be looked at.
QImage shot(qint64 pid, const QString& name) {
    const QString path = QStringLiteral(GLIMMO_SHOT_DIR "/setup-e2e-%1.png").arg(name);
    QFile::remove(path);
    waitUntil([] { return false; }, 300);  // the last change drawn
    output("import", {"-window", setupWindow(pid), path});
    return QImage(path);
}

TEST(SetupE2E, FreshProfileGoesThroughTheThreeSteps) {
    setAccessibility(false);
    Program glimmo;
    const qint64 pid = glimmo.pid();
    ASSERT_TRUE(waitUntil([&] { return !setupWindow(pid).isEmpty(); }, 20000))
        << glimmo.read("output.txt").toStdString();
    const QSize fresh = windowSize(pid);
    EXPECT_EQ(fresh.width(), 500);
    EXPECT_FALSE(shot(pid, "1-fresh").isNull());

    // Step 1: the name field holds the account's name; it becomes Alex.
    desktop::xdotool({"windowactivate", "--sync", setupWindow(pid)});
    desktop::xdotool({"key", "--clearmodifiers", "ctrl+a"});
    desktop::xdotool({"type", "--delay", "20", "Alex"});
    desktop::xdotool({"key", "Return"});
    ASSERT_TRUE(waitUntil([&] { return glimmo.settings().contains("\"Alex\""); }, 10000));

    // Step 2 asks for accessibility by itself and ticks once the bus is on; step 3 opens.
    ASSERT_TRUE(waitUntil([] { return accessibilityOn(); }, 10000));
    QSize signedOut;
    ASSERT_TRUE(waitUntil(
        [&] {
            signedOut = windowSize(pid);
            return signedOut.height() > 0 && signedOut.height() < fresh.height();
        },
        10000));
    EXPECT_EQ(signedOut.width(), 500);

    // Step 3: claude signed out is asked, and nothing is stored.
    ASSERT_TRUE(waitUntil([&] { return !glimmo.read("asked").isEmpty(); }, 10000));
    EXPECT_FALSE(shot(pid, "2-connect").isNull());
    EXPECT_FALSE(glimmo.settings().contains("claudeVerified"));
    EXPECT_FALSE(glimmo.log().contains("setup: claude answers"));

    // Signed in: the next check ticks step 3 without a click.
    glimmo.write("signed-in", "");
    ASSERT_TRUE(waitUntil([&] { return glimmo.log().contains("setup: claude answers"); }, 15000));
    EXPECT_TRUE(glimmo.settings().contains("\"claudeVerified\": true"));

    // The finished window is shorter: every step is closed and the header reads "You're set".
    ASSERT_TRUE(waitUntil(
        [&] {
            const QSize done = windowSize(pid);
            return done.height() > 0 && done.height() < signedOut.height();
        },
        5000));
    EXPECT_FALSE(shot(pid, "3-done").isNull());
}

}  // namespace
