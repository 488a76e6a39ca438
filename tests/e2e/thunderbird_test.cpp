// Mail replies in a real Thunderbird, offline with a throwaway profile: a saved message is
// opened and answered with Ctrl+R, the reply starting above the quote. The message body is a
// rich-text document of paragraphs and a quote; Glimmo reads it as one text box, drafts three
// replies from the quote, Tab puts the first in, and a paragraph typed below is rewritten. A
// long thread below the reply is read to its end.
#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <iostream>
#include <memory>

#include "DesktopHelpers.h"
#include "EngineOnDesktop.h"
#include "LaunchReview.h"
#include "Standin.h"
#include "TempHome.h"
#include "engine/Glimmo.h"
#include "platform/linux/session/Desktop.h"
#include "rules/AppRules.h"

using desktop::settle;
using desktop::windowNamed;
using launchreview::kDrafts;
using launchreview::kMessage;
using testsupport::waitUntil;

namespace {

// A local-only account whose identity answers above the quote, and no first-run screens.
const QByteArray kPrefs = R"(user_pref("mail.accountmanager.accounts", "account1");
user_pref("mail.accountmanager.defaultaccount", "account1");
user_pref("mail.accountmanager.localfoldersserver", "server1");
user_pref("mail.account.account1.server", "server1");
user_pref("mail.account.account1.identities", "id1");
user_pref("mail.server.server1.type", "none");
user_pref("mail.server.server1.hostname", "Local Folders");
user_pref("mail.server.server1.name", "Local Folders");
user_pref("mail.server.server1.userName", "nobody");
user_pref("mail.identity.id1.fullName", "Ben Okafor");
user_pref("mail.identity.id1.useremail", "ben@example.com");
user_pref("mail.identity.id1.reply_on_top", 1);
user_pref("mail.identity.id1.valid", true);
user_pref("mail.provider.suppress_dialog_on_startup", true);
user_pref("mail.shell.checkDefaultClient", false);
user_pref("mail.spotlight.firstRunDone", true);
user_pref("mailnews.start_page.enabled", false);
user_pref("mail.rights.version", 1);
user_pref("datareporting.policy.dataSubmissionPolicyBypassNotification", true);
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
user_pref("app.update.disabledForTesting", true);
)";

// The same request with a long thread below it: an HTML message of that many paragraphs.
QByteArray longThread(int paragraphs) {
    QByteArray html =
        "<html><body><p>Hi Ben,</p><p>Can we move the launch review to Thursday? "
        "The deck is not ready yet.</p><blockquote>";
    for (int i = 1; i <= paragraphs; ++i)
        html += "<p>&gt; Line " + QByteArray::number(i) + " of the earlier thread.</p>";
    html += "</blockquote></body></html>\n";
    QByteArray message = kMessage;
    message.replace("Content-Type: text/plain", "Content-Type: text/html");
    return message.left(message.indexOf("\n\n") + 2) + html;
}

struct ThunderbirdOnDesktop : EngineOnDesktop {
    launchreview::MailClient thunderbird;
    std::unique_ptr<platform::Platform> desk;
    std::unique_ptr<rules::AppRules> rules;
    std::unique_ptr<engine::Glimmo> engine;

    // Thunderbird's program, with the engine started and every request answered with the
    // drafts; empty when Thunderbird is not installed.
    QString start() {
        const QString program = QStandardPaths::findExecutable(QStringLiteral("thunderbird"));
        if (program.isEmpty()) return program;
        answerWithDrafts(kDrafts);
        desk = std::make_unique<platform::Platform>(desktop.platform(defaults, clock));
        rules = std::make_unique<rules::AppRules>(defaults);
        engine = std::make_unique<engine::Glimmo>(*desk, *rules);
        engine->start();
        return program;
    }

    // Opens the message and answers it; false (with a failure said) when a window is missing.
    bool reply(const QString& program, const QByteArray& eml) {
        home.write(QStringLiteral("tb/user.js"), kPrefs);
        home.write(QStringLiteral("launch.eml"), eml);
        thunderbird.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        thunderbird.start(program, {"-offline", "-no-remote", "-profile", home.path() + "/tb",
                                    home.path() + "/launch.eml"});
        const QString message = windowNamed(QStringLiteral("Launch review - Mozilla"), 60000);
        EXPECT_FALSE(message.isEmpty()) << "the message window did not open";
        if (message.isEmpty()) return false;
        // The window shows before its message is loaded; a reply asked too early is dropped.
        QThread::msleep(1500);
        desktop::xdotool({"windowactivate", "--sync", message});
        desktop::xdotool({"key", "ctrl+r"});
        const bool open = !windowNamed(QStringLiteral("Write: Re: Launch review"), 20000).isEmpty();
        EXPECT_TRUE(open) << "the reply window did not open";
        return open;
    }
};

}  // namespace

TEST_F(ThunderbirdOnDesktop, ReplyAboveTheQuoteGetsDraftsAndATypedParagraphARewrite) {
    ASSERT_TRUE(desktop.hasDisplay());
    const QString program = start();
    if (program.isEmpty()) return launchreview::missingMailClient("Thunderbird", "thunderbird");
    const overlay::Shown& shown = engine->bubble->shown();
    ASSERT_TRUE(reply(program, kMessage));

    ASSERT_TRUE(waitUntil([&] { return shown.options.size() == 3 && !shown.more; }, 30000))
        << log().toStdString();
    EXPECT_EQ(shown.options, kDrafts);
    const QString body = request();
    EXPECT_TRUE(body.contains(QStringLiteral("<quoted>\nOn ")) &&
                body.contains(QStringLiteral("Ana Ruiz wrote:\nHi Ben,\n\nCan we move the launch "
                                             "review to Thursday?")))
        << body.toStdString();
    const QString shot = QStringLiteral(GLIMMO_SHOT_DIR "/e2e-thunderbird-drafts.png");
    if (QProcess::execute("import", {"-window", "root", shot}) == 0)
        std::cout << "screenshot of the drafts: " << shot.toStdString() << std::endl;

    const platform::Element box = desktop::focusedElement(desk->ax, thunderbird.processId());
    ASSERT_TRUE(box);
    auto value = [&] { return desktop::string(desk->ax, box, "AXValue"); };
    desktop::xdotool({"key", "Tab"});
    settle();
    ASSERT_TRUE(waitUntil([&] { return value().startsWith(kDrafts[0] + u'\n'); }, 5000))
        << value().toStdString() << log().toStdString();
    EXPECT_TRUE(value().contains(QStringLiteral("Ana Ruiz wrote:"))) << "the quote stays below";

    // A second paragraph, typed below the draft, comes back rewritten in its place.
    ASSERT_TRUE(launchreview::takeRewriteOfATypedLine(home, shown, {"Return"}))
        << log().toStdString();
    EXPECT_TRUE(waitUntil(
        [&] { return value().startsWith(kDrafts[0] + u'\n' + launchreview::kRewrite + u'\n'); },
        5000))
        << value().toStdString() << log().toStdString();
}

// A reply above a quoted thread of 3,000 paragraphs: the body is read to its end, the drafts
// come, and the draft Tab puts in shows in the next read (the body is then read block by block).
TEST_F(ThunderbirdOnDesktop, ReplyAboveAThreadOfThousandsOfParagraphsIsReadToItsEnd) {
    ASSERT_TRUE(desktop.hasDisplay());
    const QString program = start();
    if (program.isEmpty()) return launchreview::missingMailClient("Thunderbird", "thunderbird");
    const overlay::Shown& shown = engine->bubble->shown();
    ASSERT_TRUE(reply(program, longThread(3000)));

    ASSERT_TRUE(waitUntil([&] { return shown.options.size() == 3 && !shown.more; }, 60000))
        << log().toStdString();
    EXPECT_TRUE(request().contains(QStringLiteral("Can we move the launch review to Thursday?")))
        << request().toStdString();
    const platform::Element box = desktop::focusedElement(desk->ax, thunderbird.processId());
    ASSERT_TRUE(box);
    auto value = [&] { return desktop::string(desk->ax, box, "AXValue"); };
    EXPECT_TRUE(value().contains(QStringLiteral("> Line 3000 of the earlier thread.")))
        << value().right(200).toStdString();
    EXPECT_FALSE(log().contains(QStringLiteral("is read only that far"))) << log().toStdString();

    desktop::xdotool({"key", "Tab"});
    settle();
    EXPECT_TRUE(waitUntil([&] { return value().startsWith(kDrafts[0] + u'\n'); }, 5000))
        << value().left(200).toStdString() << log().toStdString();
}
