// Requests that fail or are abandoned: what is logged, flagged, and never called back.
#include <QCoreApplication>
#include <QFile>

#include "ExchangeFixture.h"

using namespace exchangetest;
using testsupport::waitUntil;

TEST_F(ExchangeTest, NoProgramMeansTroubleAndSilence) {
    QFile::remove(glimmo::supportDir() + "/claude-path");
    const auto outcome = ask("<text>\nhello\n</text>");
    EXPECT_TRUE(exchange->claudeTrouble());
    EXPECT_FALSE(exchange->hasWarm());
    EXPECT_FALSE(exchange->requestInFlight());
    EXPECT_TRUE(outcome->partials.isEmpty());
    EXPECT_TRUE(outcome->done.isEmpty());
    EXPECT_TRUE(logLines().isEmpty());
}

TEST_F(ExchangeTest, ProgramThatCannotStartIsLogged) {
    // Executable but not a program the system can run.
    const QString path = home.write("bin/claude", "not a program\n");
    QFile::setPermissions(path, QFile::permissions(path) | QFile::ExeOwner);
    home.write(glimmo::supportDir().mid(home.path().size() + 1) + "/claude-path", path.toUtf8());
    exchange->warmUp();
    EXPECT_TRUE(exchange->claudeTrouble());
    EXPECT_FALSE(exchange->hasWarm());
    const QStringList lines = logLines();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].startsWith("cannot start claude at " + path + ": "))
        << lines[0].toStdString();
    EXPECT_GT(lines[0].size(), QString("cannot start claude at " + path + ": ").size());
}

TEST_F(ExchangeTest, FailedAnswersAreLoggedAndFlagged) {
    struct Case {
        const char* script;
        const char* why;
    } cases[] = {
        {"error Not logged in · Please run /login\nexit 1\n", "error result"},
        {"text partial\nexit 0\n", "end of output without a result"},
        {"write {\"type\":\"result\",\"result\":\"never finished\"}\n", "partial line at the end"},
        {"result  \\n\\t \n", "white space only"},
        {"line {\"type\":\"result\",\"is_error\":false}\n", "no result member"},
        {"line {\"type\":\"result\",\"result\":42}\n", "result not a string"},
        {"line {\"type\":\"result\",\"result\":\"ok\",\"is_error\":true}\n", "is_error true"},
    };
    for (const Case& c : cases) {
        exchange->setClaudeTrouble(false);
        script(c.script);
        const auto outcome = ask("<text>\nhello\n</text>");
        EXPECT_TRUE(outcome->done.isEmpty()) << c.why;
        EXPECT_TRUE(exchange->claudeTrouble()) << c.why;
        EXPECT_EQ(logLines().value(logLines().size() - 1), "claude failed after 0.0s") << c.why;
    }
    EXPECT_EQ(logLines().size(), int(std::size(cases)));
}

TEST_F(ExchangeTest, NonBooleanIsErrorIsIgnored) {
    script("line {\"type\":\"result\",\"is_error\":\"true\",\"result\":\" Fine. \"}\n");
    const auto outcome = ask("<text>\nfine\n</text>");
    EXPECT_EQ(outcome->done, QStringList{"Fine."});
    EXPECT_FALSE(exchange->claudeTrouble());
}

TEST_F(ExchangeTest, WatchdogEndsAProcessThatNeverAnswers) {
    EXPECT_EQ(claude::ExchangeProbe::watchdogMs(*exchange), 20000);
    claude::ExchangeProbe::setWatchdogMs(*exchange, 300);
    script("text thinking\nhang\n");
    exchange->warmUp();
    ASSERT_TRUE(waitUntil([&] { return runs().size() == 1; }));
    const QString pid = runs()[0];
    auto outcome = std::make_shared<Outcome>();
    exchange->ask(
        "<text>\nhello\n</text>", [&](const QString&) { clock.advance(20.04); },
        [outcome](const QString& s) { outcome->done << s; });
    ASSERT_TRUE(waitUntil([&] { return !exchange->requestInFlight(); }, 5000));
    EXPECT_TRUE(outcome->done.isEmpty());
    EXPECT_TRUE(exchange->claudeTrouble());
    EXPECT_EQ(logLines(), QStringList{"claude failed after 20.0s"});
    EXPECT_TRUE(waitUntil([&] { return !alive(pid); }));
}

TEST_F(ExchangeTest, CancelDuringARequestDropsTheReplyAsStale) {
    script("text Half an ans\nhang\n");
    exchange->pendingText = QStringLiteral("whole field");
    const auto outcome = send("<text>\nhello\n</text>");
    ASSERT_TRUE(waitUntil([&] { return !outcome->partials.isEmpty(); }));
    const qint64 before = exchange->generation();
    const QString pid = runs().value(0);
    exchange->cancel();
    EXPECT_EQ(exchange->generation(), before + 1);
    EXPECT_FALSE(exchange->requestInFlight());
    EXPECT_FALSE(exchange->pendingText.has_value());
    ASSERT_TRUE(waitUntil([&] { return notes.contains("stale reply dropped"); }));
    EXPECT_FALSE(alive(pid));
    EXPECT_EQ(outcome->partials, QStringList{"Half an ans"});
    EXPECT_TRUE(outcome->done.isEmpty());
    EXPECT_FALSE(exchange->claudeTrouble());
    EXPECT_TRUE(logLines().isEmpty());
}

TEST_F(ExchangeTest, StaleAnswerLeavesTheNewerRequestAlone) {
    // The first request answers late, after the engine moved on and sent a second one.
    script("sleep 0.3\nresult late\n");
    const auto first = send("<text>\none\n</text>");
    exchange->cancel();
    script("hang\n");
    exchange->pendingText = QStringLiteral("second field");
    send("<text>\ntwo\n</text>");
    ASSERT_TRUE(waitUntil([&] { return notes.contains("stale reply dropped"); }));
    EXPECT_TRUE(first->done.isEmpty());
    EXPECT_TRUE(exchange->requestInFlight());
    EXPECT_EQ(exchange->pendingText, QStringLiteral("second field"));
    exchange->cancel();
}

TEST_F(ExchangeTest, BodyWithALoneSurrogateIsNotSent) {
    exchange->warmUp();
    for (const QString& broken : {QString(QChar(0xD800)), QString(QChar(0xDC00)) + QChar(0xD800)}) {
        const auto outcome = ask("<text>\nbroken " + broken + "\n</text>");
        EXPECT_FALSE(exchange->requestInFlight());
        EXPECT_TRUE(exchange->hasWarm());  // still waiting for a request it can take
        EXPECT_TRUE(outcome->done.isEmpty());
    }
    EXPECT_TRUE(testsupport::standinRecord(home, "stdin").isEmpty());
    // A proper pair goes through.
    EXPECT_EQ(ask(QString::fromUtf8("<text>\nok 😀\n</text>"))->done, QStringList{"Ok 😀."});
}

TEST_F(ExchangeTest, DestroyingTheExchangeMidRequestCallsNothingAndReapsTheChild) {
    script("text a\nsleep 0.2\nresult b\n");
    const auto outcome = send("<text>\nhello\n</text>");
    ASSERT_TRUE(waitUntil([&] { return !runs().isEmpty(); }));
    const QString pid = runs()[0];
    exchange.reset();
    EXPECT_FALSE(alive(pid));
    waitUntil([] { return false; }, 400);
    EXPECT_TRUE(outcome->done.isEmpty());
}

TEST_F(ExchangeTest, DeadProcessesAreReplacedWhileWaitingAndReportedWhileAsked) {
    // Killed while waiting: the next request gets a fresh process, not the dead one.
    exchange->warmUp();
    ASSERT_TRUE(waitUntil([&] { return runs().size() == 1; }));
    ::kill(runs()[0].toInt(), SIGKILL);
    ASSERT_TRUE(waitUntil([&] { return !alive(runs()[0]); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(ask("<text>\nstill there\n</text>")->done, QStringList{"Still there."});
    EXPECT_EQ(runs().size(), 2);

    // Killed while answering, as in a crash: a failure, and nothing else is delivered.
    script("text Part\nhang\n");
    const auto outcome = send("<text>\nhello\n</text>");
    ASSERT_TRUE(waitUntil([&] { return !outcome->partials.isEmpty(); }));
    ::kill(runs().last().toInt(), SIGKILL);
    ASSERT_TRUE(waitUntil([&] { return !exchange->requestInFlight(); }));
    EXPECT_TRUE(outcome->done.isEmpty());
    EXPECT_TRUE(exchange->claudeTrouble());
    EXPECT_EQ(logLines().last(), "claude failed after 0.0s");
}
