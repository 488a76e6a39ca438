// The everyday cycle: type, pause, the rewrite streams in, Tab replaces the paragraph.
#include "EngineFixture.h"
#include "platform/Keys.h"

using namespace platform;

namespace {

const QString kFirst = QStringLiteral("Hello team,");
const QString kTyped = QStringLiteral("we are needing the deck before tomorrow.");
const QString kRewrite = QStringLiteral("We need the deck before tomorrow.");

ClipContents userClipboard() {
    return {ClipItem{{{"text/plain", "my own text"}, {"text/html", "<b>my own text</b>"}}},
            ClipItem{{{"image/png", QByteArray("\x89PNG\r\n\x1a\n\0\0binary", 18)}}}};
}

TEST_F(EngineTest, RewriteStreamsInAndTabReplacesOnlyThatParagraph) {
    script("init\ntext We need\nsleep 0.3\ntext  the deck\nsleep 0.3\nanswer " + kRewrite.toUtf8() +
           "\n");
    auto field = desk.openField("com.apple.TextEdit", kFirst + "\n" + kTyped);
    desk.clipboard().setItems(userClipboard());

    tick();  // a new field: typing
    after(0.2);
    EXPECT_FALSE(engine->claude.requestInFlight()) << "asked before the pause";
    after(0.11);  // 0.3 s after a full stop
    EXPECT_TRUE(engine->claude.requestInFlight());
    ASSERT_TRUE(waitFor([&] { return !lastRequest().isEmpty(); }));
    EXPECT_EQ(lastRequest(), "<text>\n" + kTyped + "\n</text>");

    ASSERT_TRUE(waitFor([&] { return bubble().text.endsWith(QStringLiteral(" …")); }));
    EXPECT_TRUE(engine->streaming);
    EXPECT_TRUE(desk.keyTap().wanted());
    ASSERT_TRUE(waitFor([&] { return engine->shown.has_value(); }));
    EXPECT_EQ(bubble().text, kRewrite);
    EXPECT_EQ(bubble().hint, QStringLiteral("**Tab** to use · keep typing to ignore"));
    EXPECT_TRUE(log().contains(QStringLiteral(" chars -> suggestion in ")));

    desk.keyboard().clearPosted();
    EXPECT_TRUE(desk.keyTap().press(key::Tab));
    EXPECT_FALSE(engine->bubble->visible());
    EXPECT_EQ(field->text(), kFirst + "\n" + kRewrite);
    ASSERT_EQ(desk.keyboard().posted().size(), 1u);
    EXPECT_EQ(desk.keyboard().posted()[0], (fake::Keyboard::Press{key::V, flag::Command}));
    EXPECT_TRUE(desk.clipboard().transient());

    ASSERT_TRUE(waitFor([&] { return desk.clipboard().items() == userClipboard(); }, 2000));

    // The pasted rewrite is seen as a change and answered from the cache: no new request.
    forgetLastRequest();
    tick();
    after(1.0);
    after(1.0);
    EXPECT_TRUE(lastRequest().isEmpty());
    EXPECT_FALSE(engine->bubble->visible());
}

}  // namespace

namespace {

TEST_F(EngineTest, PauseIsLongerWithoutSentencePunctuation) {
    script("answer We need the deck soon\n");
    desk.openField("com.apple.TextEdit", "we are needing the deck soon");
    tick();
    after(0.9);
    EXPECT_FALSE(engine->claude.requestInFlight());
    after(0.11);
    EXPECT_TRUE(engine->claude.requestInFlight());
}

TEST_F(EngineTest, TabWhileStreamingAppliesOnCompletion) {
    script("init\ntext We need the deck\nsleep 0.4\nanswer " + kRewrite.toUtf8() + "\n");
    auto field = desk.openField("com.apple.TextEdit", kTyped);
    paused(0.31);
    ASSERT_TRUE(waitFor([&] { return engine->streaming; }));
    EXPECT_TRUE(desk.keyTap().press(key::Tab));
    EXPECT_EQ(field->text(), kTyped) << "nothing applied before the answer is complete";
    ASSERT_TRUE(waitFor([&] { return field->text() == kRewrite; }));
    EXPECT_FALSE(engine->shown);
}

// While the keyboard is held for the engine, GTK 4 reports its text box unfocused: a Tab
// waiting then is still the suggestion's, not the box's.
TEST_F(EngineTest, TabWaitingWhileTheBoxSeemsUnfocusedApplies) {
    script("answer " + kRewrite.toUtf8() + "\n");
    desk.openField("com.apple.TextEdit", kTyped);
    paused(0.31);
    ASSERT_TRUE(waitFor([&] { return engine->shown.has_value(); }));
    desk.keyTap().pressPending(key::Tab);
    desk.frontApp()->focus(nullptr);
    desk.keyboard().clearPosted();
    tick();
    ASSERT_EQ(desk.keyboard().posted().size(), 1u) << "the Tab reached the box";
    EXPECT_EQ(desk.keyboard().posted()[0], (fake::Keyboard::Press{key::V, flag::Command}));
    EXPECT_FALSE(engine->bubble->visible());
}

TEST_F(EngineTest, AnswerAfterMoreTypingIsCachedButNotShown) {
    script("init\nsleep 0.3\nanswer " + kRewrite.toUtf8() + "\n");
    auto field = desk.openField("com.apple.TextEdit", kTyped);
    paused(0.31);
    ASSERT_TRUE(engine->claude.requestInFlight());
    // Typing the same text back keeps the request; here the user types on, which cancels it,
    // so simulate a change the request survives: the field text in flight is still the same.
    field->setCaret(0);  // caret moved: no longer current
    ASSERT_TRUE(waitFor([&] { return engine->cache.contains(kTyped); }));
    EXPECT_EQ(engine->cache.value(kTyped), kRewrite);
    EXPECT_FALSE(engine->shown);
    EXPECT_FALSE(engine->bubble->visible());
    // Back at the end of that paragraph, the cached answer shows at once.
    field->setCaret(kTyped.size());
    paused(0.31);
    EXPECT_TRUE(engine->shown);
}

TEST_F(EngineTest, AnswerEqualToTheOriginalIsCachedAsNoChange) {
    const QString good = QStringLiteral("We need the deck before tomorrow.");
    script("answer  " + good.toUtf8() + " \n");
    desk.openField("com.apple.TextEdit", good);
    paused(0.31);
    ASSERT_TRUE(waitFor([&] { return engine->cache.contains(good); }));
    EXPECT_EQ(engine->cache.value(good), QStringLiteral("="));
    EXPECT_FALSE(engine->bubble->visible());
}

TEST_F(EngineTest, TypingOnCancelsTheRequestAndItsAnswerIsDropped) {
    script("init\nsleep 0.5\nanswer " + kRewrite.toUtf8() + "\n");
    desk.openField("com.apple.TextEdit", kTyped);
    paused(0.31);
    ASSERT_TRUE(engine->claude.requestInFlight());
    const qint64 generation = engine->generation();
    type(QStringLiteral(" Thanks"));
    EXPECT_FALSE(engine->claude.requestInFlight());
    EXPECT_GT(engine->generation(), generation);
    spin(900);
    EXPECT_FALSE(engine->cache.contains(kTyped));
    EXPECT_FALSE(engine->claudeTrouble());
    EXPECT_FALSE(log().contains(QStringLiteral("claude failed")));
}

TEST_F(EngineTest, SuggestionStaysWhileTheCaretMovesInsideItsParagraph) {
    const QString other = QStringLiteral("Second paragraph is here.");
    auto field = desk.openField("com.apple.TextEdit", kTyped + "\n" + other);
    field->setCaret(kTyped.size());
    showCached(kTyped, kRewrite);
    field->setCaret(5);  // same paragraph, same text: unchanged field
    tick();
    EXPECT_TRUE(engine->shown);
    field->setCaret(kTyped.size() + 3);  // the next paragraph
    tick();
    EXPECT_FALSE(engine->shown);
    EXPECT_FALSE(engine->bubble->visible());
}

TEST_F(EngineTest, EscDismissesThatParagraphForTheRun) {
    auto field = desk.openField("com.apple.TextEdit", kTyped);
    showCached(kTyped, kRewrite);
    EXPECT_TRUE(desk.keyTap().press(key::Esc));
    EXPECT_FALSE(engine->bubble->visible());
    EXPECT_FALSE(desk.keyTap().wanted());
    // Away and back to the same unchanged paragraph: never shown again.
    field->setText(kTyped + "x");
    tick();
    field->setText(kTyped);
    tick();
    after(2.0);
    EXPECT_FALSE(engine->shown);
    EXPECT_EQ(field->text(), kTyped);
}

TEST_F(EngineTest, KeysThatAreNotTheEnginesPassThrough) {
    auto field = desk.openField("com.apple.TextEdit", kTyped);
    EXPECT_FALSE(desk.keyTap().press(key::Tab)) << "nothing on screen";
    field->setText(kTyped);
    showCached(kTyped, kRewrite);
    EXPECT_FALSE(desk.keyTap().press(key::Tab, flag::Shift));
    EXPECT_FALSE(desk.keyTap().press(key::Down));
    EXPECT_TRUE(engine->shown) << "the next tick, not the key, removes it";
}

}  // namespace
