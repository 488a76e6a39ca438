#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <thread>
#include <vector>

#include "TempHome.h"
#include "main/DebugTrace.h"
#include "main/Log.h"
#include "main/Paths.h"

namespace {

const QString stamp = QStringLiteral("\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\dZ ");

QString logText(const testsupport::TempHome& home) {
    return QString::fromUtf8(home.read(".local/share/Glimmo/log.txt"));
}

TEST(Log, CreatedOnFirstUseThenAppended) {
    testsupport::TempHome home;

    // Before the support folder exists nothing is written and nothing is created.
    glimmo::log("lost");
    EXPECT_FALSE(QDir(home.path() + "/.local").exists());

    QDir().mkpath(glimmo::supportDir());
    glimmo::log("first");
    glimmo::log("two\nlines");
    glimmo::log(QString::fromUtf8("ünïcode · ok"));
    const QRegularExpression whole(
        QStringLiteral("\\A%1first\\n%1two\\nlines\\n%1ünïcode · ok\\n\\z").arg(stamp));
    EXPECT_TRUE(whole.match(logText(home)).hasMatch()) << logText(home).toStdString();
}

TEST(Log, LinesFromSeveralThreadsStayWhole) {
    testsupport::TempHome home;
    QDir().mkpath(glimmo::supportDir());
    const QString payload = QString(300, QLatin1Char('x'));
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([t, &payload] {
            for (int i = 0; i < 200; ++i) glimmo::log(QStringLiteral("t%1 %2").arg(t).arg(payload));
        });
    }
    for (auto& thread : threads) thread.join();

    const QStringList lines = logText(home).split('\n', Qt::SkipEmptyParts);
    EXPECT_EQ(lines.size(), 800);
    const QRegularExpression line(QStringLiteral("\\A%1t[0-3] x{300}\\z").arg(stamp));
    for (const QString& l : lines) ASSERT_TRUE(line.match(l).hasMatch()) << l.toStdString();
}

TEST(DebugTrace, RepeatsAndTheFlag) {
    testsupport::TempHome home;
    QDir().mkpath(glimmo::supportDir());
    const QString flag = glimmo::supportDir() + "/debug.flag";
    glimmo::DebugTrace trace;

    trace.why("a");
    trace.why("b");
    EXPECT_EQ(logText(home), "");
    EXPECT_EQ(trace.lastWhy(), "");

    home.write(".local/share/Glimmo/debug.flag", "");
    for (const char* note : {"a", "a", "b", "a"}) trace.why(note);
    QStringList lines = logText(home).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[0].endsWith("Z debug: a"));
    EXPECT_TRUE(lines[1].endsWith("Z debug: b"));
    EXPECT_TRUE(lines[2].endsWith("Z debug: a"));

    // Removing the flag stops the trace at once and keeps the last note written.
    QFile::remove(flag);
    trace.why("c");
    EXPECT_EQ(trace.lastWhy(), "a");
    // Back again: "c" was never written, so it is new.
    home.write(".local/share/Glimmo/debug.flag", "");
    trace.why("a");
    trace.why("c");
    lines = logText(home).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[3].endsWith("Z debug: c"));
}

}  // namespace
