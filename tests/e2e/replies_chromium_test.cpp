// Reply drafting in Chromium, on pages served from this process with their reply box focused: a
// Gmail thread under the Gmail host (Chromium maps the host to this machine, so nothing leaves
// it), and a Slack channel in an application window whose window class is Slack's, as Slack for
// Linux is. The drafts come from the messages on the page, and Tab inserts the first.
#include <gtest/gtest.h>

#include <QDir>

#include "Chromium.h"
#include "EngineOnDesktop.h"

using testsupport::waitUntil;

namespace {

// Text as Chromium exposes a page: on paragraphs and containers, around links and spans.
const QByteArray kThread = R"(<!doctype html><html><head><meta charset="utf-8">
<title>Launch review - ana@example.com - Gmail</title></head><body>
<div role="navigation"><a href="#inbox">Inbox</a> <a href="#sent">Sent</a></div>
<div role="main"><h2>Launch review on Thursday</h2>
<div><div><span>Ana Ruiz</span> <span>Mon 9:12</span></div>
<div><p>Hi both,</p><p>Can we move the launch review to Thursday? The <a href="#d">deck</a>
is not ready yet.</p></div></div>
<div><div><span>Ben Okafor</span> <span>Mon 9:40</span></div>
<div>Thursday works for me, the numbers are <b>almost</b> done.</div></div>
<div><div><span>Ana Ruiz</span> <span>Mon 10:02</span></div>
<div><p>Great. Could you send the deck tonight so I can read it first?</p></div></div>
<div id="reply" role="textbox" contenteditable="true" aria-multiline="true"
 aria-label="Message Body" style="min-height:6em;border:1px solid #ccc"></div></div>
<p>Ana's earlier notes, below the reply box, are not part of what is answered.</p>
<script>document.getElementById("reply").focus();</script></body></html>)";

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
    QStringLiteral("Sure, I'll send the deck by 9 tonight."),
    QStringLiteral("I'll send it first thing tomorrow."),
    QStringLiteral("Yes, sending it within the hour."),
};

struct RepliesInChromium : EngineRunsOnDesktop {
    // Whether Glimmo came to know the page (known) and then showed all three drafts.
    bool drafted(const std::function<bool()>& known) {
        return waitUntil(known, 40000) &&
               waitUntil([&] { return shown.options.size() == 3 && !shown.more; }, 30000);
    }
};

}  // namespace

TEST_F(RepliesInChromium, Gmail) {
    ASSERT_TRUE(desktop.hasDisplay());
    const QString program = desktop::chromiumProgram();
    if (program.isEmpty()) return desktop::missingChromium();
    const QString gmail = QStringLiteral("mail.google.com");
    const QString certs = home.path() + QStringLiteral("/certs");
    QDir().mkpath(certs);
    ASSERT_TRUE(desktop::makeCertificate(certs, gmail)) << "openssl could not make a certificate";
    answerWithDrafts(kDrafts);
    engine.start();

    // The browser only speaks HTTPS to this host; the test's own certificate is accepted.
    desktop::PageServer server(kThread, certs + "/cert.pem", certs + "/key.pem");
    desktop::Chromium chromium(
        program, home.path() + QStringLiteral("/chromium"),
        server.url(gmail, QStringLiteral("/mail/u/0/#inbox/launch")),
        {"--host-resolver-rules=MAP " + gmail + " 127.0.0.1, MAP * ~NOTFOUND",
         "--ignore-certificate-errors"});
    ASSERT_TRUE(chromium.started());

    ASSERT_TRUE(drafted([&] { return engine.frontHost == gmail; })) << seen();
    EXPECT_EQ(shown.options, kDrafts);
    EXPECT_EQ(shown.selected, 0);

    // The thread as a reader sees it: every message in order, links and bold words in their
    // sentences (spacing aside), the newest message last, nothing from below the reply box.
    const QString body = request();
    EXPECT_TRUE(body.contains(QStringLiteral(" (Gmail)"))) << body.toStdString();
    for (const char* text :
         {"Launch review on Thursday", "Can we move the launch review to Thursday? The deck",
          "the numbers are almost done."})
        EXPECT_TRUE(body.simplified().contains(QString::fromUtf8(text))) << text << "\n"
                                                                         << body.toStdString();
    EXPECT_TRUE(body.contains(
        QStringLiteral("Could you send the deck tonight so I can read it first?\n</conversation>")))
        << body.toStdString();
    EXPECT_LT(body.indexOf(QStringLiteral("Ana Ruiz")), body.indexOf(QStringLiteral("Ben Okafor")));
    EXPECT_FALSE(body.contains(QStringLiteral("earlier notes"))) << body.toStdString();

    desktop::xdotool({"key", "Tab"});
    EXPECT_TRUE(focusedHolds(chromium.pid(), kDrafts[0]));
    EXPECT_TRUE(waitUntil([&] { return !engine.bubble->visible(); }, 3000));
}

TEST_F(RepliesInChromium, SlackApp) {
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

    // Known as Slack by its window class alone.
    ASSERT_TRUE(drafted([&] {
        return engine.frontApp && engine.frontApp->bundleId == "com.tinyspeck.slackmacgap";
    })) << seen();
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
