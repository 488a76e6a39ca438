#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "TempHome.h"
#include "claude/Locate.h"
#include "claude/VersionOrder.h"
#include "main/Paths.h"

namespace {

using testsupport::TempHome;

QString makeProgram(const TempHome& home, const QString& relative, bool executable = true) {
    const QString path = home.write(relative, "#!/bin/sh\n");
    QFile::setPermissions(path, executable ? QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner
                                           : QFile::ReadOwner | QFile::WriteOwner);
    return path;
}

// The system-wide candidates outrank nvm and the desktop copies; a machine that has them
// cannot run the tests that depend on the later candidates.
bool systemClaudeInstalled() {
    for (const char* path : {"/opt/homebrew/bin/claude", "/usr/local/bin/claude"}) {
        if (QFileInfo(path).isExecutable()) return true;
    }
    return false;
}

TEST(Locate, NumericAwareOrder) {
    EXPECT_LT(claude::compareNumericAware("1.9", "1.10"), 0);
    EXPECT_GT(claude::compareNumericAware("v10", "v9"), 0);
    EXPECT_EQ(claude::compareNumericAware("v007", "v7"), 0);
    EXPECT_LT(claude::compareNumericAware("v1", "v1.0"), 0);
    EXPECT_LT(claude::compareNumericAware("", "a"), 0);
}

TEST(Locate, HomeCandidatesInOrderAndNothingCreated) {
    TempHome home;
    if (systemClaudeInstalled()) {
        EXPECT_TRUE(claude::claudePath().has_value());
        GTEST_SKIP() << "a system-wide claude is installed";
    }
    EXPECT_FALSE(claude::claudePath().has_value());
    EXPECT_EQ(QDir(home.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList());

    // A folder named claude is not a program.
    QDir().mkpath(home.path() + "/.local/bin/claude");
    EXPECT_FALSE(claude::claudePath().has_value());
    QDir(home.path() + "/.local/bin/claude").removeRecursively();

    const QString second = makeProgram(home, ".claude/local/claude");
    EXPECT_EQ(claude::claudePath(), second);
    // Probed afresh: a program installed later is found by the next call.
    const QString first = makeProgram(home, ".local/bin/claude");
    EXPECT_EQ(claude::claudePath(), first);
}

TEST(Locate, OverrideFileWinsOnlyWhenExecutable) {
    TempHome home;
    const QString elsewhere = makeProgram(home, "tools/my claude");
    const QString local = makeProgram(home, ".local/bin/claude");
    home.write(".local/share/Glimmo/claude-path", ("  " + elsewhere + "\n").toUtf8());
    EXPECT_EQ(claude::claudePath(), elsewhere);

    QFile::setPermissions(elsewhere, QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_EQ(claude::claudePath(), local);

    // No expansion of a tilde: such a file names nothing.
    home.write(".local/share/Glimmo/claude-path", "~/tools/claude\n");
    EXPECT_EQ(claude::claudePath(), local);
}

TEST(Locate, SymbolicLinksAreFollowed) {
    TempHome home;
    const QString target = makeProgram(home, "opt/claude-real");
    QDir().mkpath(home.path() + "/.local/bin");
    const QString link = home.path() + "/.local/bin/claude";
    ASSERT_TRUE(QFile::link(target, link));
    EXPECT_EQ(claude::claudePath(), link);

    QFile::setPermissions(target, QFile::ReadOwner);
    if (systemClaudeInstalled()) GTEST_SKIP() << "a system-wide claude is installed";
    EXPECT_FALSE(claude::claudePath().has_value());
}

TEST(Locate, NewestNvmVersionFirst) {
    if (systemClaudeInstalled()) GTEST_SKIP() << "a system-wide claude is installed";
    TempHome home;
    for (const char* version : {"v18.20.4", "v20.9.0", "v20.11.1"})
        makeProgram(home, QStringLiteral(".nvm/versions/node/%1/bin/claude").arg(version));
    QDir().mkpath(home.path() + "/.nvm/versions/node/v22.3.0/bin");  // node without claude
    EXPECT_EQ(claude::claudePath(), home.path() + "/.nvm/versions/node/v20.11.1/bin/claude");
}

TEST(Locate, DesktopApplicationCopiesAfterNvm) {
    if (systemClaudeInstalled()) GTEST_SKIP() << "a system-wide claude is installed";
    TempHome home;
    const QString base = "Library/Application Support/Claude/claude-code/";
    makeProgram(home, base + "1.0.9/build/claude.app/Contents/MacOS/claude");
    const QString newest =
        makeProgram(home, base + "1.0.10/build/claude.app/Contents/MacOS/claude");
    EXPECT_EQ(claude::claudePath(), newest);

    const QString nvm = makeProgram(home, ".nvm/versions/node/v20.9.0/bin/claude");
    EXPECT_EQ(claude::claudePath(), nvm);
}

TEST(Locate, ChildEnvironmentKeepsOnlyListedVariables) {
    TempHome home;
    qputenv("http_proxy", "http://proxy.invalid:3128");
    qputenv("EDITOR", "vim");
    qputenv("LANG", "de_DE.UTF-8");
    qunsetenv("WAYLAND_DISPLAY");

    const QString program = home.path() + "/.nvm/versions/node/v20.11.1/bin/claude";
    const QProcessEnvironment env = claude::claudeEnv(program);
    EXPECT_EQ(env.value("PATH"), home.path() +
                                     "/.nvm/versions/node/v20.11.1/bin:/usr/local/bin:"
                                     "/opt/homebrew/bin:/usr/bin:/bin");
    EXPECT_EQ(env.value("LANG"), "de_DE.UTF-8");
    EXPECT_FALSE(env.contains("WAYLAND_DISPLAY"));

    EXPECT_FALSE(env.contains("http_proxy"));
    EXPECT_FALSE(env.contains("EDITOR"));

    qunsetenv("http_proxy");
    qunsetenv("EDITOR");
    EXPECT_EQ(claude::claudeEnv("/claude").value("PATH"),
              "/:/usr/local/bin:/opt/homebrew/bin:/usr/bin:/bin");
}

}  // namespace
