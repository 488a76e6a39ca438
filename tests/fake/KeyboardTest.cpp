// The fake keyboard's editing must match what the engine expects of a real text box, or the
// engine tests would pass against behaviour no application has.
#include <gtest/gtest.h>

#include "platform/Keys.h"
#include "platform/fake/Desktop.h"

using namespace platform;

namespace {

constexpr quint64 ShiftOption = flag::Shift | flag::Option;

struct FakeKeyboard : ::testing::Test {
    fake::Desktop desk;
    void post(int code, quint64 flags = 0) { desk.keyboard().post(code, flags); }
};

TEST_F(FakeKeyboard, ParagraphMovesSelectAllButTheFirstCharacter) {
    auto field = desk.openField("com.apple.TextEdit", "One.\nTwo words.\nThree.");
    field->setCaret(9);  // inside "Two words."
    post(key::Up, flag::Option);
    EXPECT_EQ(field->selection(), (Range{5, 0}));
    post(key::Right);
    post(key::Down, ShiftOption);
    EXPECT_EQ(field->selectedText(), "wo words.");
    // Right collapses the selection to its end: the line break stays untouched.
    post(key::Right);
    EXPECT_EQ(field->selection(), (Range{15, 0}));
}

TEST_F(FakeKeyboard, PasteReplacesTheSelectionAndCleanupRemovesTheOldFirstCharacter) {
    auto field = desk.openField("x", "Keep.\nhelo wrld\nKeep.");
    desk.clipboard().setText("Hello world.");
    field->select(7, 8);  // "elo wrld": keyboard selection one character in
    post(key::V, flag::Command);
    EXPECT_EQ(field->text(), "Keep.\nhHello world.\nKeep.");
    post(key::Up, flag::Option);
    post(key::ForwardDelete);
    post(key::Down, flag::Option);
    EXPECT_EQ(field->text(), "Keep.\nHello world.\nKeep.");
    EXPECT_EQ(field->selection(), (Range{18, 0}));
    EXPECT_EQ(desk.keyboard().posted().front(), (fake::Keyboard::Press{key::V, flag::Command}));
}

}  // namespace
