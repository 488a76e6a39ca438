// A real browser on the virtual desktop: the engine reads the page's host from Chromium's
// accessibility tree, obeys a site switched off, and applies a rewrite inside a page's textarea;
// a Chromium started without its pages is named for a restart. The page comes from a server in
// this process, reached under two host names (127.0.0.1 and localhost).
#include <gtest/gtest.h>

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
