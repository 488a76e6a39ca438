// Reply drafting in a chat application built on Chromium, as Slack for Linux is: a page laid out
// like a Slack channel, served from this process and shown by Chromium as an application window
// whose window class is Slack's, with its empty message box focused. Glimmo knows the window as
// Slack by its class alone, drafts from the messages on screen, and Tab inserts the first draft.
#include <gtest/gtest.h>

#include "Chromium.h"
#include "EngineOnDesktop.h"

using testsupport::waitUntil;

namespace {

const QByteArray kChannel = R"(<!doctype html><html><head><meta charset="utf-8">
<title>launch (Channel) - Acme - Slack</title></head><body style="display:flex;margin:0">
<nav style="width:200px"><div>Acme</div><a href="#general"># general</a>
<a href="#launch"># launch</a></nav>
<main style="flex:1"><h1># launch</h1>
<div role="list" aria-label="Messages in launch">
<div role="listitem"><b>Ana Ruiz</b> <span>9:12 AM</span>
<p>Can we move the launch review to Thursday? The <a href="#d">deck</a> is not ready.</p></div>
<div role="listitem"><b>Ben Okafor</b> <span>9:40 AM</span>
<p>Thursday works for me, the numbers are <i>almost</i> done.</p></div>
<div role="listitem"><b>Ana Ruiz</b> <span>10:02 AM</span>
<p>Great. Could you post the deck here tonight so I can read it first?</p></div></div>
<div id="box" role="textbox" contenteditable="true" aria-multiline="true"
 aria-label="Message #launch" style="min-height:3em;border:1px solid #aaa"></div></main>
<script>document.getElementById("box").focus();</script></body></html>)";

const QStringList kDrafts{
    QStringLiteral("Sure, I'll post it here by 9 tonight."),
    QStringLiteral("I'll post it first thing tomorrow."),
    QStringLiteral("Yes, posting it within the hour."),
};

struct ChatOnDesktop : EngineRunsOnDesktop {};

}  // namespace

TEST_F(ChatOnDesktop, SlackOnChromiumDraftsFromTheChannelAndTabInsertsTheFirst) {
    ASSERT_TRUE(desktop.hasDisplay());
    const QString program = desktop::chromiumProgram();
    if (program.isEmpty()) return desktop::missingChromium();
    answerWithDrafts(kDrafts);
    engine.start();

    // Slack's own windows have the class "Slack"; an application window takes it from --class.
    desktop::PageServer server(kChannel);
    desktop::Chromium slack(
        program, home.path() + QStringLiteral("/chromium"), {},
        {"--app=" + server.url(QStringLiteral("127.0.0.1"), QStringLiteral("/client/T1/C2")),
         "--class=Slack"});
    ASSERT_TRUE(slack.started());

    ASSERT_TRUE(waitUntil(
        [&] { return engine.frontApp && engine.frontApp->bundleId == "com.tinyspeck.slackmacgap"; },
        40000))
        << seen();
    ASSERT_TRUE(waitUntil([&] { return shown.options.size() == 3 && !shown.more; }, 30000))
        << seen();
    EXPECT_EQ(shown.options, kDrafts);

    // The channel as its reader sees it, the newest message last.
    const QString body = request();
    EXPECT_TRUE(body.contains(QStringLiteral("<where>Slack — Message #launch</where>")))
        << body.toStdString();
    EXPECT_TRUE(body.simplified().contains(QStringLiteral("the numbers are almost done.")))
        << body.toStdString();
    EXPECT_LT(body.indexOf(QStringLiteral("Ben Okafor")), body.lastIndexOf(QStringLiteral("Ana")));
    EXPECT_TRUE(body.contains(QStringLiteral("so I can read it first?\n</conversation>")))
        << body.toStdString();

    desktop::xdotool({"key", "Tab"});
    EXPECT_TRUE(focusedHolds(slack.pid(), kDrafts[0]));
}
