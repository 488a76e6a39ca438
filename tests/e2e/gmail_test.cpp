// Reply drafting in a real browser: a page laid out like a Gmail thread, served from this process
// under the Gmail host (Chromium maps the host to this machine, so nothing leaves it), with its
// reply box focused. The drafts come from the messages on the page, and Tab inserts the first.
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

const QStringList kDrafts{
    QStringLiteral("Sure, I'll send the deck by 9 tonight."),
    QStringLiteral("I'll send it first thing tomorrow."),
    QStringLiteral("Yes, sending it within the hour."),
};

struct GmailOnDesktop : EngineRunsOnDesktop {};

}  // namespace

TEST_F(GmailOnDesktop, ThreeDraftsFromTheThreadAndTabInsertsTheFirst) {
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

    ASSERT_TRUE(waitUntil([&] { return engine.frontHost == gmail; }, 40000)) << seen();
    ASSERT_TRUE(waitUntil([&] { return shown.options.size() == 3 && !shown.more; }, 30000))
        << seen();
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
