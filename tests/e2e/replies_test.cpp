// Reply drafting on the virtual desktop: the engine on the real Linux backend, a GTK window the
// backend takes for Slack, and the claude stand-in streaming three drafts.
#include <gtest/gtest.h>

#include "EngineOnDesktop.h"
#include "GtkEditor.h"

using testsupport::waitUntil;

namespace {

const QStringList kMessages{
    QStringLiteral("Ana Ruiz: Can we move the launch review to Thursday?"),
    QStringLiteral("Ben Okafor: Thursday works for me, the deck is almost done."),
    QStringLiteral("Ana Ruiz: Great. Can you send the deck tonight so I can read it first?"),
};

const QStringList kDrafts{
    QStringLiteral("Sure, I'll send it by 9 tonight."),
    QStringLiteral("I'll send it first thing tomorrow, it still needs one chart."),
    QStringLiteral("Yes, sending it in an hour."),
};

// Streamed in pieces with pauses, so the drafting notice and the growing list can be seen.
QByteArray streamedDrafts() {
    QByteArrayList quoted;
    for (const QString& d : kDrafts) quoted << '"' + d.toUtf8() + '"';
    // clang-format off
    return "init\nsleep 0.8\n"
           "text [" + quoted[0] + "\nsleep 0.4\n"
           "text , " + quoted[1] + "\nsleep 0.4\n"
           "text , " + quoted[2] + "]\n"
           "result [" + quoted.join(", ") + "]\n";
    // clang-format on
}

struct RepliesOnDesktop : EngineRunsOnDesktop {};

}  // namespace

TEST_F(RepliesOnDesktop, DraftsForTheEmptySlackBoxAndTabInsertsTheChosenOne) {
    ASSERT_TRUE(desktop.hasDisplay());
    testsupport::setStandinScript(home, streamedDrafts());
    QStringList args;
    for (const QString& m : kMessages) args << QStringLiteral("--message") << m;
    GtkEditor slack(args, qEnvironmentVariable("GLIMMO_GTK_SLACK"));
    ASSERT_TRUE(slack.ready());
    engine.start();

    ASSERT_TRUE(waitUntil([&] { return engine.draftingReplies; }, 15000)) << seen();
    ASSERT_TRUE(engine.frontApp);
    EXPECT_EQ(engine.frontApp->bundleId, QStringLiteral("com.tinyspeck.slackmacgap"));
    EXPECT_TRUE(engine.bubble->visible());
    EXPECT_EQ(shown.text, QStringLiteral("Drafting 3 replies…"));
    EXPECT_TRUE(log().contains(QStringLiteral("debug: drafting replies")));

    // The drafts arrive one by one and the list is complete after the last.
    ASSERT_TRUE(waitUntil([&] { return shown.options.size() == 1; }, 10000));
    EXPECT_TRUE(shown.more);
    ASSERT_TRUE(waitUntil([&] { return shown.options.size() == 3 && !shown.more; }, 10000));
    EXPECT_EQ(shown.options, kDrafts);
    EXPECT_EQ(shown.selected, 0);

    // What was asked: the application's name and the box's label, the messages oldest first.
    const QString body = request();
    EXPECT_TRUE(body.contains(QStringLiteral("<where>Slack — Message #general</where>")))
        << body.toStdString();
    EXPECT_TRUE(body.contains(QStringLiteral("<conversation>\n")));
    EXPECT_TRUE(body.contains(kMessages.last() + QStringLiteral("\n</conversation>")))
        << body.toStdString();
    EXPECT_LT(body.indexOf(kMessages.first()), body.indexOf(kMessages.last()));

    // Keys go to the list, not to Slack, while it is shown.
    slack.clearKeys();
    desktop::xdotool({"key", "Down"});
    ASSERT_TRUE(waitUntil([&] { return shown.selected == 1; })) << shown.selected;
    desktop::xdotool({"key", "Tab"});

    EXPECT_TRUE(focusedHolds(slack.pid(), kDrafts[1]));
    // Until the pasted text is seen the box still looks empty, and the cached list may show
    // again for a moment; once the text is seen, nothing is shown.
    EXPECT_TRUE(waitUntil([&] { return !engine.bubble->visible(); }, 3000));
    const QStringList keys = slack.keys();
    EXPECT_FALSE(keys.contains(QStringLiteral("Down 0")) || keys.contains(QStringLiteral("Tab 0")))
        << keys.join(u',').toStdString();
}
