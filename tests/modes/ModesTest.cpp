#include <gtest/gtest.h>

#include <QProcess>

#include "TempHome.h"
#include "claude/Profile.h"
#include "platform/JsonDefaults.h"
#include "rules/RulesCheck.h"

namespace {

struct Outcome {
    int status = -1;
    QByteArray out;
};

// The program with a home of its own and nothing that could reach a display.
Outcome runGlimmo(const testsupport::TempHome& home, const QStringList& args) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name :
         {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        env.remove(name);
    env.insert("HOME", home.path());
    QProcess p;
    p.setProcessEnvironment(env);
    p.start(GLIMMO_EXECUTABLE, args);
    if (!p.waitForFinished(30000)) {
        p.kill();
        p.waitForFinished();
        return {};
    }
    const int status = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    return {status, p.readAllStandardOutput()};
}

TEST(Modes, PrintPromptWithoutDisplay) {
    testsupport::TempHome home;
    platform::MemoryDefaults empty;
    const Outcome fresh = runGlimmo(home, {"-printPrompt"});
    EXPECT_EQ(fresh.status, 0);
    EXPECT_EQ(fresh.out, claude::Profile(empty).prompt().toUtf8() + '\n');

    home.write(".config/Glimmo/defaults.json",
               R"({"name": "Alex", "role": "Head of Sales", "language": "Spanish"})");
    const Outcome saved = runGlimmo(home, {"-menuIcon", home.path() + "/icon.png", "-printPrompt"});
    EXPECT_EQ(saved.status, 0);
    EXPECT_TRUE(saved.out.contains(
        "docs). Alex is Head of Sales at Norwell, an AI company for dental revenue cycle "
        "management. Their first language is Spanish; English is a second language. They write"));
    EXPECT_TRUE(saved.out.endsWith("as strings.\n"));
}

TEST(Modes, RulesTestOnAFreshStore) {
    testsupport::TempHome home;
    platform::MemoryDefaults reference;
    rules::AppRules referenceRules(reference);
    const QByteArray expected = rules::rulesCheck(referenceRules).join('\n').toUtf8() + '\n';
    EXPECT_TRUE(expected.startsWith("on  Slack\noff Terminal\n"));

    for (int round = 0; round < 2; ++round) {
        const Outcome run = runGlimmo(home, {"-rulesTest"});
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out, expected) << run.out.toStdString();
    }
    platform::JsonDefaults store(platform::JsonDefaults::standardPath());
    EXPECT_EQ(store.boolMap("appOn"), platform::BoolMap{});
    EXPECT_EQ(store.boolMap("siteOn"), platform::BoolMap{});
}

}  // namespace
