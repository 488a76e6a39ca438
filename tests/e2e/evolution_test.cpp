// Mail replies in a real Evolution with a throwaway home and no account: a saved message is
// imported into the local Inbox and answered with Ctrl+R, the caret on the quote's first line.
// The message body is a WebKit page made editable, its document a row of blocks with no text of
// its own; Glimmo reads it as one text box, drafts three replies from the quote, Tab puts the
// first in, and a line typed below is rewritten.
#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <iostream>

#include "DesktopHelpers.h"
#include "EngineOnDesktop.h"
#include "LaunchReview.h"
#include "ScreenCaret.h"

using desktop::settle;
using desktop::windowNamed;
using launchreview::kDrafts;
using testsupport::waitUntil;

namespace {

// No first-run assistant, and a message stays unread when shown (the window's title then
// says it has arrived). Replies start above the quote by default. Read through the keyfile
// backend, so nothing lands in the machine's own settings.
const QByteArray kSettings = R"([org/gnome/evolution/mail]
show-startup-wizard=false
mark-seen=false
)";

// The Inbox shown at start, so the message is selected and Ctrl+R answers it.
const QByteArray kState = R"([Folder Tree]
Selected=folder://local/Inbox
)";

struct EvolutionOnDesktop : EngineRunsOnDesktop {
    launchreview::MailClient evolution;
};

}  // namespace

TEST_F(EvolutionOnDesktop, ReplyAboveTheQuoteGetsDraftsFromTheQuote) {
    ASSERT_TRUE(desktop.hasDisplay());
    const QString program = QStandardPaths::findExecutable(QStringLiteral("evolution"));
    if (program.isEmpty()) return launchreview::missingMailClient("Evolution", "evolution");
    home.write(QStringLiteral(".config/glib-2.0/settings/keyfile"), kSettings);
    home.write(QStringLiteral(".config/evolution/mail/state.ini"), kState);
    const QString saved = home.write(QStringLiteral("launch.eml"), launchreview::kMessage);
    answerWithDrafts(kDrafts);

    // Evolution's data server starts on the session bus: it must see the same home.
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("GSETTINGS_BACKEND"), QStringLiteral("keyfile"));
    env.insert(QStringLiteral("XDG_CACHE_HOME"), home.path() + QStringLiteral("/.cache"));
    QStringList activation;
    for (const char* name : {"HOME", "GSETTINGS_BACKEND", "XDG_CACHE_HOME"})
        activation << QLatin1String(name) + u'=' + env.value(QLatin1String(name));
    ASSERT_EQ(QProcess::execute("dbus-update-activation-environment", activation), 0);

    engine.start();

    evolution.setProcessEnvironment(env);
    evolution.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    evolution.start(program, {"--component=mail"});
    ASSERT_FALSE(windowNamed(QStringLiteral("Inbox"), 60000).isEmpty()) << "no mail window";
    // A saved message given to Evolution is imported, into the Inbox by default. The store
    // does not look for messages put in its folders behind its back.
    QProcess importer;
    importer.setProcessEnvironment(env);
    importer.start(program, {saved});
    importer.waitForFinished(10000);
    const QString assistant = windowNamed(QStringLiteral("Import Data"), 20000);
    ASSERT_FALSE(assistant.isEmpty()) << "no import assistant";
    desktop::xdotool({"windowactivate", "--sync", assistant});
    desktop::xdotool({"key", "Return"});  // past the preview
    QThread::msleep(500);
    desktop::xdotool({"key", "alt+n"});  // into the Inbox
    const QString inbox = windowNamed(QStringLiteral("Inbox .1 unread"), 20000);
    ASSERT_FALSE(inbox.isEmpty()) << "the message did not arrive in the Inbox";
    desktop::xdotool({"windowactivate", "--sync", inbox});
    desktop::xdotool({"key", "ctrl+r"});
    QString composer = windowNamed(QStringLiteral("Re: Launch review"), 8000);
    if (composer.isEmpty()) {
        // Evolution 3.56 selects no message on its own (nor do its keys before one is): the
        // first row of the list, under the column titles, is clicked, as a user would.
        desktop::xdotool({"mousemove", "--window", inbox, "430", "171", "click", "1"});
        QThread::msleep(1000);
        desktop::xdotool({"key", "ctrl+r"});
        composer = windowNamed(QStringLiteral("Re: Launch review"), 20000);
    }
    if (composer.isEmpty())
        desktop::screenshot().save(QStringLiteral(GLIMMO_SHOT_DIR "/e2e-evolution-no-reply.png"));
    ASSERT_FALSE(composer.isEmpty()) << "no reply window";
    // The caret starts on the attribution line; the body reports its focus once the caret moves.
    QThread::msleep(1500);
    desktop::xdotool({"windowactivate", "--sync", composer});
    desktop::xdotool({"key", "End", "Home"});

    ASSERT_TRUE(waitUntil([&] { return shown.options.size() == 3 && !shown.more; }, 30000))
        << seen();
    EXPECT_EQ(shown.options, kDrafts);
    const QString body = request();
    EXPECT_TRUE(body.contains(QStringLiteral("<quoted>\nOn ")) &&
                body.contains(QStringLiteral("Ana Ruiz wrote:\n> Hi Ben,\n> \n> Can we move the "
                                             "launch review to Thursday?")))
        << body.toStdString();
    const QString shot = QStringLiteral(GLIMMO_SHOT_DIR "/e2e-evolution-drafts.png");
    if (QProcess::execute("import", {"-window", "root", shot}) == 0)
        std::cout << "screenshot of the drafts: " << shot.toStdString() << std::endl;

    const platform::Element box = desktop::focusedElement(platform.ax, evolution.processId());
    ASSERT_TRUE(box);
    auto value = [&] { return desktop::string(platform.ax, box, "AXValue"); };
    desktop::xdotool({"key", "Tab"});
    settle();
    // The draft is set apart from the quote's first line.
    EXPECT_TRUE(waitUntil(
        [&] {
            const QString v = value();
            return v.startsWith(kDrafts[0] + u'\n') && v.contains(QStringLiteral("\nOn "));
        },
        5000))
        << value().toStdString() << log().toStdString();

    // A line typed below it comes back rewritten, in its place.
    ASSERT_TRUE(launchreview::takeRewriteOfATypedLine(home, shown, {"End", "Return"}))
        << log().toStdString();
    EXPECT_TRUE(waitUntil(
        [&] { return value().contains(u'\n' + launchreview::kRewrite + QStringLiteral("\nOn ")); },
        5000))
        << value().toStdString() << log().toStdString();
}
