// Applying when the field will not take a selection by range.
#include "EngineFixture.h"
#include "platform/Keys.h"

using namespace platform;
using Press = fake::Keyboard::Press;

namespace {

class ApplyTest : public EngineTest {};

TEST_F(ApplyTest, WholeTextFieldFallsBackToSelectAll) {
    const QString typed = QStringLiteral("we was late to the meeting");
    auto field = desk.openField("com.apple.TextEdit", typed);
    field->quirks().refuseSelection = true;
    showCached(typed, QStringLiteral("We were late to the meeting."));
    EXPECT_TRUE(desk.keyTap().press(key::Tab));
    ASSERT_TRUE(waitFor([&] { return field->text() == "We were late to the meeting."; }));
    const std::vector<Press> expected{{key::A, flag::Command}, {key::V, flag::Command}};
    EXPECT_EQ(desk.keyboard().posted(), expected);
}

TEST_F(ApplyTest, OneCharacterParagraphIsCopiedInstead) {
    // Too short to be asked about, but a click can still apply what a longer text left shown.
    auto field = desk.openField("com.apple.TextEdit", QStringLiteral("First line here.\nk"));
    field->quirks().refuseSelection = true;
    tick();
    engine->shown = engine::Target{field->handle(), Range{17, 1}, "k", "OK."};
    engine->apply();
    EXPECT_EQ(field->text(), QStringLiteral("First line here.\nk"));
    EXPECT_EQ(desk.clipboard().text(), QStringLiteral("OK."));
    EXPECT_FALSE(desk.clipboard().transient()) << "meant to be pasted by the user";
    EXPECT_EQ(bubble().hint, QStringLiteral("Copied · press **Ctrl+V** to paste"));
    EXPECT_TRUE(log().contains("could not select the paragraph; rewrite copied to clipboard"));
    ASSERT_TRUE(waitFor([&] { return !engine->bubble->visible(); }, 4000));
}

TEST_F(ApplyTest, KeyboardSelectionReplacesTheParagraphAndCleansUpItsFirstCharacter) {
    const QString first = QStringLiteral("Dear Sam,");
    const QString typed = QStringLiteral("we was late to the meeting.");
    const QString last = QStringLiteral("Best, Kim");
    auto field = desk.openField("com.apple.TextEdit", first + "\n" + typed + "\n" + last);
    field->setCaret(first.size() + 1 + typed.size());
    field->quirks().refuseSelection = true;
    showCached(typed, QStringLiteral("We were late to the meeting."));
    EXPECT_TRUE(desk.keyTap().press(key::Tab));
    ASSERT_TRUE(waitFor([&] { return desk.keyboard().posted().size() >= 7; }, 2000));
    EXPECT_EQ(field->text(), first + "\nWe were late to the meeting.\n" + last);
    const std::vector<Press> expected{
        {key::Up, flag::Option},  {key::Right, 0},         {key::Down, flag::Shift | flag::Option},
        {key::V, flag::Command},  {key::Up, flag::Option}, {key::ForwardDelete, 0},
        {key::Down, flag::Option}};
    EXPECT_EQ(desk.keyboard().posted(), expected);
}

TEST_F(ApplyTest, KeyboardSelectionThatPicksSomethingElseFallsBackToCopy) {
    const QString typed = QStringLiteral("we was late to the meeting.");
    auto field = desk.openField("com.apple.TextEdit", QStringLiteral("Hi,\n") + typed);
    field->quirks().refuseSelection = true;
    field->quirks().ignoreKeys = true;
    showCached(typed, QStringLiteral("We were late to the meeting."));
    EXPECT_TRUE(desk.keyTap().press(key::Tab));
    ASSERT_TRUE(waitFor([&] { return desk.clipboard().text() == "We were late to the meeting."; }));
    EXPECT_TRUE(log().contains(QStringLiteral("debug: selection picked 0 of 26 chars")));
    EXPECT_EQ(desk.keyboard().posted().back(), (Press{key::Right, 0}));
    EXPECT_EQ(field->text(), QStringLiteral("Hi,\n") + typed);
}

TEST_F(ApplyTest, ChangedParagraphIsNotTouched) {
    const QString typed = QStringLiteral("we was late to the meeting.");
    auto field = desk.openField("com.apple.TextEdit", typed);
    showCached(typed, QStringLiteral("We were late to the meeting."));
    field->setText(QStringLiteral("something else entirely now"));
    EXPECT_TRUE(desk.keyTap().press(key::Tab));
    EXPECT_TRUE(desk.keyboard().posted().empty());
    EXPECT_EQ(field->text(), QStringLiteral("something else entirely now"));
}

}  // namespace
