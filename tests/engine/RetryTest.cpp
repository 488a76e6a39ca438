// A claude that keeps failing is tried again at once, then less and less often.
#include "EngineFixture.h"

namespace {

const QString kTyped = QStringLiteral("we are needing the deck before tomorrow.");
const QByteArray kSignedOut = "error Not logged in · Please run /login\nexit 1\n";

class RetryTest : public EngineTest {
protected:
    int starts() { return testsupport::standinRecord(home, QStringLiteral("runs")).count('\n'); }
    // Ticks after seconds; true when that tick sent a request. A sent request is let fail.
    bool askedAfter(double seconds) {
        forgetLastRequest();
        after(seconds);
        if (!engine->claude.requestInFlight()) return false;
        EXPECT_TRUE(waitFor([&] { return !engine->claude.requestInFlight(); }));
        return !lastRequest().isEmpty();
    }
};

TEST_F(RetryTest, FailingClaudeIsRetriedAtOnceThenAfterDoublingWaits) {
    script(kSignedOut);
    desk.openField("com.apple.TextEdit", kTyped);
    tick();
    ASSERT_TRUE(askedAfter(0.31));
    EXPECT_TRUE(engine->claudeTrouble());
    EXPECT_TRUE(askedAfter(0.3)) << "the first retry is not held back";

    for (const double wait : {2.0, 4.0, 8.0, 16.0, 32.0, 60.0, 60.0}) {
        const int before = starts();
        EXPECT_FALSE(askedAfter(wait - 0.5)) << wait;
        EXPECT_EQ(starts(), before) << "no process is started while waiting " << wait;
        EXPECT_TRUE(askedAfter(0.6)) << wait;
    }

    // The user's "sign in again" clears the trouble and the wait with it.
    EXPECT_FALSE(askedAfter(1.0));
    engine->claude.setClaudeTrouble(false);
    EXPECT_TRUE(askedAfter(0.3));
}

TEST_F(RetryTest, AnAnswerEndsTheWaiting) {
    script(kSignedOut);
    auto field = desk.openField("com.apple.TextEdit", kTyped);
    tick();
    ASSERT_TRUE(askedAfter(0.31));
    ASSERT_TRUE(askedAfter(0.3));
    ASSERT_TRUE(engine->claude.retryAt());
    script({});  // signed in meanwhile
    ASSERT_TRUE(askedAfter(2.0));
    EXPECT_FALSE(engine->claudeTrouble());
    EXPECT_FALSE(engine->claude.retryAt());

    // The next failure is again retried at once.
    script(kSignedOut);
    field->setText(kTyped + " Also the notes.");
    tick();
    ASSERT_TRUE(askedAfter(1.1));
    EXPECT_TRUE(askedAfter(0.3));
}

}  // namespace
