// A real browser on the virtual desktop: the engine reads the page's host from Chromium's
// accessibility tree, obeys a site switched off, and applies a rewrite inside a page's textarea;
// a Chromium started without its pages is named for a restart, and one started from its
// launcher entry once Glimmo has prepared the launchers is served. The page comes from a server in
// this process, reached under two host names (127.0.0.1 and localhost).
#include <gtest/gtest.h>

#include <signal.h>
#include <unistd.h>

#include <QFile>
#include <QProcess>
#include <algorithm>

#include "Chromium.h"
#include "EngineOnDesktop.h"

using desktop::Chromium;
using desktop::chromiumProgram;
using testsupport::waitUntil;

namespace {

const QByteArray kPage =
    "<!doctype html><html><head><meta charset=\"utf-8\"><title>Notes</title></head><body>"
    "<h1>Notes</h1><textarea autofocus rows=\"8\" cols=\"70\" aria-label=\"Note\"></textarea>"
    "</body></html>";

struct BrowserOnDesktop : EngineRunsOnDesktop {};

}  // namespace

TEST_F(BrowserOnDesktop, SiteSwitchesFollowThePageHostAndRewritesLandInThePage) {
    ASSERT_TRUE(desktop.hasDisplay());
    const QString program = chromiumProgram();
    if (program.isEmpty()) return desktop::missingChromium();

    rules.setSite(QStringLiteral("127.0.0.1"), false);
    engine.start();

    desktop::PageServer server(kPage);
    Chromium chromium(program, home.path() + QStringLiteral("/chromium"),
                      server.url(QStringLiteral("127.0.0.1"), QStringLiteral("/notes.html")));
    ASSERT_TRUE(chromium.started());

    // The switched-off site: the engine knows the page and stays quiet in it.
    ASSERT_TRUE(waitUntil([&] { return engine.frontHost == QStringLiteral("127.0.0.1"); }, 40000))
        << seen();
    EXPECT_EQ(engine.frontApp->bundleId, QStringLiteral("com.google.Chrome"));
    EXPECT_TRUE(
        waitUntil([&] { return log().contains(QStringLiteral("debug: off on 127.0.0.1")); }));
    const QString note = QStringLiteral("this note stays as the user wrote it");
    desktop::xdotool({"type", "--delay", "15", note});
    ASSERT_TRUE(focusedHolds(chromium.pid(), note));
    testsupport::waitUntil([] { return false; }, 2500);
    EXPECT_FALSE(engine.bubble->visible());
    EXPECT_TRUE(testsupport::standinRecord(home, QStringLiteral("stdin")).isEmpty())
        << "asked on a switched-off site";

    // The same page under another host name gets suggestions.
    desktop::xdotool({"key", "ctrl+l"});
    desktop::xdotool({"type", "--delay", "10",
                      server.url(QStringLiteral("localhost"), QStringLiteral("/notes.html"))});
    desktop::xdotool({"key", "Return"});
    ASSERT_TRUE(waitUntil([&] { return engine.frontHost == QStringLiteral("localhost"); }, 20000))
        << log().toStdString();

    desktop::xdotool({"type", "--delay", "15", "the rewrite lands inside the page"});
    const QString rewrite = QStringLiteral("The rewrite lands inside the page.");
    ASSERT_TRUE(suggests(rewrite, 15000)) << seen();
    desktop::xdotool({"key", "Tab"});
    EXPECT_TRUE(focusedHolds(chromium.pid(), rewrite));
}

TEST_F(BrowserOnDesktop, ChromiumWithoutItsPagesIsNamedForARestartUntilItQuits) {
    ASSERT_TRUE(desktop.hasDisplay());
    const QString program = chromiumProgram();
    if (program.isEmpty()) return desktop::missingChromium();
    engine.start();
    {
        desktop::PageServer server(kPage);
        Chromium chromium(program, home.path() + QStringLiteral("/chromium"),
                          server.url(QStringLiteral("127.0.0.1"), QStringLiteral("/notes.html")),
                          {}, false);
        ASSERT_TRUE(chromium.started());
        ASSERT_TRUE(waitUntil([&] { return !platform.ax.restartNeeded().empty(); }, 40000))
            << log().toStdString();
        EXPECT_EQ(platform.ax.restartNeeded(), std::vector<QString>{QStringLiteral("Chromium")});
        EXPECT_TRUE(log().contains(
            QStringLiteral("no accessibility tree from Chromium (process %1); Chromium and "
                           "Electron applications show it when started with "
                           "--force-renderer-accessibility")
                .arg(chromium.pid())))
            << log().toStdString();
    }
    EXPECT_TRUE(platform.ax.restartNeeded().empty());
}

TEST_F(BrowserOnDesktop, ChromiumStartedFromItsLauncherIsServed) {
    ASSERT_TRUE(desktop.hasDisplay());
    if (chromiumProgram().isEmpty()) return desktop::missingChromium();
    const QString launch = desktop::firstProgram({QStringLiteral("gtk-launch")});
    if (launch.isEmpty()) return desktop::missingPackage("BROWSER TEST SKIPPED", "libgtk-3-bin");
    // The installed entry, found first in a copy fit for the virtual desktop: Chromium refuses
    // to run as root (as test machines do) with its sandbox, and there is no unlocked keyring.
    QFile installed(QStringLiteral("/usr/share/applications/chromium.desktop"));
    ASSERT_TRUE(installed.open(QIODevice::ReadOnly));
    const QByteArray fit =
        ::geteuid() == 0 ? "--no-sandbox --password-store=basic" : "--password-store=basic";
    home.write("share/applications/chromium.desktop",
               installed.readAll().replace("Exec=/usr/bin/chromium",
                                           "Exec=/usr/bin/chromium --no-first-run " + fit));
    const testsupport::ScopedEnv dataDirs(
        {{"XDG_DATA_DIRS", (home.path() + QStringLiteral("/share:/usr/share")).toLocal8Bit()}});
    engine.start();
    // What the running Glimmo does at start.
    const auto prepared = platform.workspace.prepareLaunchers([](const QString&) { return true; });
    ASSERT_TRUE(std::any_of(prepared.begin(), prepared.end(), [](const QString& name) {
        return name.startsWith(QStringLiteral("Chromium"));
    }));

    desktop::PageServer server(kPage);
    ASSERT_EQ(QProcess::execute(launch, {QStringLiteral("chromium"),
                                         server.url(QStringLiteral("127.0.0.1"), "/notes.html")}),
              0);
    ASSERT_TRUE(waitUntil([&] { return engine.frontHost == QStringLiteral("127.0.0.1"); }, 60000))
        << seen();
    const qint64 pid = engine.frontApp->pid;
    desktop::xdotool({"type", "--delay", "15", "the launcher starts it readable"});
    const QString rewrite = QStringLiteral("The launcher starts it readable.");
    EXPECT_TRUE(suggests(rewrite, 15000)) << seen();
    desktop::xdotool({"key", "Tab"});
    EXPECT_TRUE(focusedHolds(pid, rewrite));
    ::kill(pid_t(pid), SIGTERM);
    waitUntil([&] { return ::kill(pid_t(pid), 0) != 0; }, 10000);
}
