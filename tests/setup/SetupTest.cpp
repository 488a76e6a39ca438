#include <QCoreApplication>
#include <QThread>

#include "SetupFixture.h"
#include "platform/fake/TextField.h"
#include "setup/RestartHint.h"
#include "setup/TryIt.h"

namespace {

using testsupport::waitUntil;

TEST_F(SetupFixture, VerificationNeedsStatusZeroAnOkAndNoLogIn) {
    struct Case {
        QByteArray body;
        bool verified;
    } cases[] = {
        {"printf 'OK\\n'", true},
        {"printf 'OK\\n'; exit 1", false},
        {"printf 'OK, but please log in first\\n'", false},
        {"printf 'Not logged in \\302\\267 Please run /login\\n'; exit 1", false},
    };
    for (const Case& c : cases) {
        useClaude("cat > \"$HOME/stdin\"; pwd > \"$HOME/cwd\"\n" + c.body + "\n");
        EXPECT_EQ(setup::Setup::verify(home.path() + "/bin/claude"), c.verified) << c.body.data();
    }
    EXPECT_EQ(home.read("stdin"), "Reply with the word OK.");
    EXPECT_EQ(home.read("cwd").trimmed(), glimmo::supportDir().toUtf8());
}

TEST_F(SetupFixture, SignedInClaudeTicksOnTheFirstRefresh) {
    useClaude("cat >/dev/null; echo OK");
    auto s = make();
    EXPECT_TRUE(s->hasClaude());
    EXPECT_FALSE(s->claudeOK());
    s->refresh();
    EXPECT_TRUE(s->checking());
    ASSERT_TRUE(waitUntil([&] { return s->claudeOK(); }));
    EXPECT_FALSE(s->checking());
    EXPECT_EQ(defaults.boolValue("claudeVerified"), true);
    EXPECT_EQ(progress, 1);
    EXPECT_EQ(log().count("setup: claude answers"), 1);

    // The next opening starts ticked and asks nothing.
    auto again = make();
    EXPECT_TRUE(again->claudeOK());
    again->refresh();
    EXPECT_FALSE(again->checking());
}

TEST_F(SetupFixture, SignedOutClaudeIsAskedAgainEverySixSeconds) {
    useClaude(
        "cat >/dev/null; echo 'Not logged in · Please run /login'; echo runs >> \"$HOME/runs\"; "
        "exit 1");
    auto s = make();
    s->refresh();
    ASSERT_TRUE(waitUntil([&] { return !s->checking(); }));
    EXPECT_FALSE(s->claudeOK());
    EXPECT_FALSE(defaults.boolValue("claudeVerified"));
    s->refresh();
    clock.advance(5.9);
    s->refresh();
    EXPECT_FALSE(s->checking());
    clock.advance(0.2);
    s->refresh();
    EXPECT_TRUE(s->checking());
    ASSERT_TRUE(waitUntil([&] { return !s->checking(); }));
    EXPECT_EQ(home.read("runs"), "runs\nruns\n");
    EXPECT_FALSE(log().contains("claude answers"));
}

TEST_F(SetupFixture, VerificationOutlivesTheWindow) {
    useClaude("cat >/dev/null; sleep 0.3; echo OK");
    auto s = make();
    s->check();
    std::weak_ptr<setup::Setup> weak = s;
    s.reset();
    EXPECT_FALSE(weak.expired());
    ASSERT_TRUE(waitUntil([&] { return defaults.boolValue("claudeVerified") == true; }));
}

TEST_F(SetupFixture, InstallFailureShowsOnlyToAWaitingUser) {
    const QString installer =
        "echo \"$PATH\" > \"$HOME/install-path\"; echo no network >&2; exit 6";
    auto s = make(installer);
    s->startInstall();
    EXPECT_TRUE(s->installing());
    ASSERT_TRUE(waitUntil([&] { return !s->installing(); }));
    EXPECT_FALSE(s->installFailed());
    EXPECT_FALSE(s->hasClaude());
    EXPECT_EQ(home.read("install-path"), "/usr/bin:/bin:/usr/sbin:/sbin\n");
    EXPECT_EQ(home.read(".local/share/Glimmo/install-claude.log"), "no network\n");

    s->connect();
    EXPECT_TRUE(s->wantsSignIn());
    ASSERT_TRUE(waitUntil([&] { return !s->installing(); }));
    EXPECT_TRUE(s->installFailed());
    EXPECT_TRUE(s->wantsSignIn());
    EXPECT_EQ(log().count("setup: install failed"), 2);
}

TEST_F(SetupFixture, ConnectDuringAnInstallWaitsForItThenSignsIn) {
    const QString claude = script("installer-payload/claude",
                                  "[ \"$1\" = auth ] && exec sleep 30\ncat >/dev/null; echo OK\n");
    const QString installer =
        "echo run >> \"$HOME/install-runs\"; sleep 0.5; mkdir -p "
        "\"$HOME/.local/bin\"; cp '" +
        claude + "' \"$HOME/.local/bin/claude\"";
    auto s = make(installer);
    s->refresh();
    s->startInstall();  // as the window does when claude is missing
    s->connect();
    s->connect();
    EXPECT_TRUE(s->wantsSignIn());
    ASSERT_TRUE(waitUntil([&] { return !s->installing(); }));
    EXPECT_EQ(home.read("install-runs"), "run\n");
    EXPECT_TRUE(s->hasClaude());
    EXPECT_FALSE(s->wantsSignIn());
    EXPECT_FALSE(s->installFailed());
    EXPECT_TRUE(s->signingIn());
    EXPECT_TRUE(log().contains("setup: install done"));
    EXPECT_TRUE(log().contains("setup: sign-in started"));
    s->cancelSignIn();
    ASSERT_TRUE(waitUntil([&] { return !s->signingIn(); }));
}

TEST_F(SetupFixture, SaveStoresTrimmedProfileAndOpensStepTwo) {
    ax.setTrusted(false);
    auto s = make();
    EXPECT_FALSE(s->aboutDone());
    EXPECT_FALSE(s->name().isEmpty());  // the account's name
    s->setName(" \t\n");
    s->save();
    EXPECT_EQ(defaults.string("name"), "");
    EXPECT_FALSE(s->aboutDone());

    s->setName("  Alex \n");
    s->setRole(" Head of Sales");
    s->save();
    EXPECT_EQ(defaults.string("name"), "Alex");
    EXPECT_EQ(defaults.string("role"), "Head of Sales");
    EXPECT_EQ(s->name(), "  Alex \n");
    EXPECT_TRUE(s->aboutDone());
    EXPECT_EQ(saved, 2);
    EXPECT_EQ(ax.trustRequests(), 0);
    ASSERT_TRUE(waitUntil([&] { return s->accessOpened(); }));
    EXPECT_EQ(ax.trustRequests(), 1);
    EXPECT_EQ(workspace.accessibilitySettingsOpened(), 1);

    // Trust arrives: step 2 ticks once, and is never taken back.
    ax.setTrusted(true);
    s->refresh();
    s->refresh();
    EXPECT_TRUE(s->access());
    EXPECT_EQ(progress, 1);
    ax.setTrusted(false);
    s->refresh();
    EXPECT_TRUE(s->access());

    // Saved again with trust granted: nothing more opens.
    ax.setTrusted(true);
    auto granted = make();
    granted->setName("Alex");
    granted->save();
    QThread::msleep(500);
    QCoreApplication::processEvents();
    EXPECT_EQ(workspace.accessibilitySettingsOpened(), 1);
}

TEST_F(SetupFixture, StepTwoNamesTheApplicationsToStartAgain) {
    auto s = make();
    s->refresh();
    EXPECT_EQ(setup::restartHint(s->restartApps()),
              "Chrome, Chromium and Electron apps can be read only when started with "
              "--force-renderer-accessibility. Restart the ones already open with it.");
    ax.setRestartNeeded({"Slack"});
    s->refresh();
    EXPECT_EQ(setup::restartHint(s->restartApps()),
              "Glimmo can't read Slack yet: restart it with --force-renderer-accessibility.");
    ax.setRestartNeeded({"Slack", "Discord", "Google Chrome"});
    s->refresh();
    EXPECT_EQ(setup::restartHint(s->restartApps()),
              "Glimmo can't read Slack, Discord or Google Chrome yet: restart them with "
              "--force-renderer-accessibility.");
    // Slack's launcher adds the flag now: it needs only a new start, Discord still the flag.
    workspace.setFlaggedApps({{"com.tinyspeck.slackmacgap", "Slack"}, {"com.linear", "Linear"}});
    workspace.prepareLaunchers([](const QString& app) { return app != "com.linear"; });
    ax.setRestartNeeded({"Slack", "Discord"});
    s->refresh();
    EXPECT_EQ(setup::restartHint(s->restartApps(), s->preparedApps()),
              "Slack now starts readable from its launcher. Glimmo can't read Slack yet: quit it "
              "and open it again. Glimmo can't read Discord yet: restart it with "
              "--force-renderer-accessibility.");
    // Started again, so readable: nothing is named any more.
    ax.setRestartNeeded({});
    s->refresh();
    EXPECT_TRUE(s->restartApps().isEmpty());
    EXPECT_EQ(setup::restartHint(s->restartApps(), s->preparedApps()),
              "Slack now starts readable from its launcher.");
}

TEST_F(SetupFixture, TryItWritesTheSampleAndPlacesTheCaretInTheEditor) {
    workspace.setTextEditor("org.example.Editor");
    fake::App& editor = workspace.add(77, "org.example.Editor", "Editor");
    auto field = editor.addWindow()->add(fake::TextField::create(setup::trySample(), "AXTextArea"));
    editor.focus(field);
    bool done = false;
    setup::tryIt(ax, workspace, [&] { done = true; });
    EXPECT_EQ(QFile(setup::tryFile()).size(), 133);
    ASSERT_EQ(workspace.openedFiles().size(), 1u);
    EXPECT_EQ(workspace.openedFiles()[0].first, setup::tryFile());
    ASSERT_TRUE(waitUntil([&] { return done; }));
    EXPECT_EQ(field->selection(), (platform::Range{133, 0}));

    // An editor that never shows up: the file is there and nothing else happens.
    workspace.setOpenSucceeds(false);
    done = false;
    setup::tryIt(ax, workspace, [&] { done = true; });
    EXPECT_TRUE(done);
}

}  // namespace
