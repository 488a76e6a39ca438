// Requests that succeed: the launch, what the caller receives, and the success line in the log.
#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include "ExchangeFixture.h"
#include "claude/Profile.h"

using namespace exchangetest;
using testsupport::standinRecord;
using testsupport::waitUntil;

TEST_F(ExchangeTest, LaunchesWithTheSeventeenArgumentsTheEnvironmentAndTheSupportFolder) {
    qputenv("GLIMMO_SHOULD_NOT_LEAK", "1");
    exchange->warmUp();
    qunsetenv("GLIMMO_SHOULD_NOT_LEAK");
    ASSERT_TRUE(exchange->hasWarm());
    const auto outcome = ask(QStringLiteral("<text>\nhello there\n</text>"));
    EXPECT_EQ(standinRecord(home, "bad-args"), QByteArray());

    // The stand-in refuses (in "bad-args") any argument but the last one, the prompt.
    EXPECT_EQ(QString::fromUtf8(standinRecord(home, "args").split('\0').value(16)),
              claude::Profile(defaults).prompt());

    // Only the listed variables reach the process (claudeEnv's own test says which).
    EXPECT_FALSE(standinRecord(home, "env").split('\0').contains("GLIMMO_SHOULD_NOT_LEAK=1"));
    EXPECT_EQ(QString::fromUtf8(standinRecord(home, "cwd")), glimmo::supportDir());

    // One compact JSON line, its input then closed.
    const QByteArray input = standinRecord(home, "stdin");
    EXPECT_TRUE(input.endsWith("}\n"));
    EXPECT_EQ(input.count('\n'), 1);
    const QJsonObject record = QJsonDocument::fromJson(input).object();
    EXPECT_EQ(record.value("type").toString(), "user");
    EXPECT_EQ(record.value("message").toObject().value("role").toString(), "user");
    EXPECT_EQ(record.value("message").toObject().value("content").toString(),
              "<text>\nhello there\n</text>");
    EXPECT_EQ(outcome->done, QStringList{"Hello there."});
}

TEST_F(ExchangeTest, StreamsTrimmedTextAndLogsTheWaitingProcessAge) {
    exchange->setClaudeTrouble(true);  // a success clears an earlier failure
    exchange->warmUp();
    clock.advance(35.2);
    script(
        "text \\n  I went \nsleep 0.05\ntext to the\nsleep 0.05\ntext  store.\n"
        "result  I went to the store. \\n\n");
    auto outcome = std::make_shared<Outcome>();
    exchange->ask(
        "<text>\ni goed to the store\n</text>",
        [&, outcome](const QString& s) {
            outcome->partials << s;
            clock.advance(0.6);  // the model takes its time
        },
        [outcome](const QString& s) { outcome->done << s; });
    EXPECT_FALSE(exchange->hasWarm());
    EXPECT_TRUE(exchange->requestInFlight());
    ASSERT_TRUE(waitUntil([&] { return !exchange->requestInFlight(); }));

    EXPECT_EQ(outcome->partials, (QStringList{"I went", "I went to the", "I went to the store."}));
    EXPECT_EQ(outcome->done, QStringList{"I went to the store."});
    EXPECT_FALSE(exchange->claudeTrouble());
    EXPECT_EQ(logLines(), QStringList{"34 chars -> suggestion in 1.8s (process ready for 35.2s)"});
}

TEST_F(ExchangeTest, KindWordAgeWithoutAWaitingProcessAndCharacterCount) {
    // Nothing waited: the age is -1.0. Blanks around "=" are trimmed: no change.
    script("result  \\t=\\n \n");
    auto outcome = ask("<text>\nFine as it is.\n</text>");
    EXPECT_EQ(outcome->done, QStringList{"="});

    // A reply body is "reply options" whatever comes back, even "=".
    exchange->warmUp();
    outcome = ask("<reply>\nAre you coming?\n</reply>");
    EXPECT_EQ(outcome->done, QStringList{"="});

    // Characters as the user sees them: a flag, a family and an accented letter count one each.
    script("result Sure.\n");
    outcome = ask(QString::fromUtf8("<text>\n🇫🇷 👨‍👩‍👧 e\u0301\n</text>"));
    EXPECT_EQ(outcome->done, QStringList{"Sure."});

    EXPECT_EQ(logLines(),
              (QStringList{"29 chars -> no change in 0.0s (process ready for -1.0s)",
                           "32 chars -> reply options in 0.0s (process ready for 0.0s)",
                           "20 chars -> suggestion in 0.0s (process ready for -1.0s)"}));
}

TEST_F(ExchangeTest, OnlyTheFirstResultCountsAndNothingFollowsIt) {
    // Two results in one read, then deltas after the answer.
    script(
        "write {\"type\":\"result\",\"result\":\"first\"}\\n{\"type\":\"result\",\"result\":"
        "\"second\"}\\n\nsleep 0.1\ntext more\nresult third\n");
    auto outcome = ask("<text>\nx\n</text>");
    EXPECT_EQ(outcome->done, QStringList{"first"});
    QCoreApplication::processEvents();
    waitUntil([&] { return false; }, 300);  // the rest of the output arrives and is ignored
    EXPECT_EQ(outcome->done, QStringList{"first"});
    EXPECT_TRUE(outcome->partials.isEmpty());
    EXPECT_EQ(logLines().size(), 1);
}

TEST_F(ExchangeTest, WarmProcessIsKeptUntilItIsSixHundredSecondsOld) {
    exchange->warmUp();
    ASSERT_TRUE(waitUntil([&] { return runs().size() == 1; }));
    clock.advance(599.9);
    exchange->warmUp();
    EXPECT_FALSE(waitUntil([&] { return runs().size() > 1; }, 300));
    const QString first = runs()[0];
    clock.set(1600.0);
    exchange->warmUp();
    ASSERT_TRUE(waitUntil([&] { return runs().size() == 2; }));
    EXPECT_TRUE(waitUntil([&] { return !alive(first); }));
    EXPECT_TRUE(exchange->hasWarm());

    // A taken process is never handed out again; the next one is started at once.
    ask("<text>\nok\n</text>");
    exchange->warmUp();
    EXPECT_TRUE(waitUntil([&] { return runs().size() == 3; }));
}

TEST_F(ExchangeTest, DroppingTheWarmProcessEndsIt) {
    exchange->warmUp();
    ASSERT_TRUE(waitUntil([&] { return runs().size() == 1; }));
    exchange->dropWarm();
    EXPECT_FALSE(exchange->hasWarm());
    EXPECT_TRUE(waitUntil([&] { return !alive(runs()[0]); }));
    EXPECT_TRUE(logLines().isEmpty());
}
