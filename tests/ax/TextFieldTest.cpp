#include <gtest/gtest.h>

#include "ax/TextField.h"
#include "platform/fake/Desktop.h"

using namespace platform;

namespace {

struct TextFieldHelpers : ::testing::Test {
    fake::Desktop desk;
    std::shared_ptr<fake::TextField> field = desk.openField("com.apple.TextEdit", "Hello there");
    Ax& ax = desk.platform().ax;
    Element el = field->handle();
};

TEST_F(TextFieldHelpers, SetSelectedRangeTrustsOnlyTheReadBack) {
    EXPECT_TRUE(ax::setSelectedRange(ax, el, 0, 5));
    EXPECT_EQ(field->selectedText(), "Hello");
    // Accepted, but clamped by the application to something else.
    EXPECT_FALSE(ax::setSelectedRange(ax, el, 6, 50));
    field->quirks().ignoreSelection = true;
    EXPECT_FALSE(ax::setSelectedRange(ax, el, 1, 2));
    field->quirks() = {};
    field->quirks().refuseSelection = true;
    EXPECT_FALSE(ax::setSelectedRange(ax, el, 1, 2));
    field->quirks() = {};
    field->fail("AXSelectedTextRange");  // written, but cannot be read back
    EXPECT_FALSE(ax::setSelectedRange(ax, el, 1, 2));
}

TEST_F(TextFieldHelpers, BoundsAsksForTheCharacterBeforeTheCaretThenFallsBack) {
    field->setFrame({300, 400, 200, 50});
    auto atFive = ax::bounds(ax, el, 5);
    EXPECT_EQ(desk.ax().queries().back().parameter, Value(Range{4, 1}));
    EXPECT_EQ(atFive, (Rect{300 + 4 + 4 * 8, 404, 8, 16}));
    // Nothing before the caret: the box's first line (an empty range has no box of its own).
    EXPECT_EQ(ax::bounds(ax, el, 0), (Rect{300, 400, 200, 24}));

    const Rect frame{300, 400, 200, 50};
    field->quirks().zeroBounds = true;
    EXPECT_EQ(ax::bounds(ax, el, 5), frame);
    field->quirks() = {};
    field->setGlyph(8, 0);  // height 0 at a real origin
    EXPECT_EQ(ax::bounds(ax, el, 5), frame);
    field->setGlyph(8, 16);
    field->quirks().noBounds = true;
    EXPECT_EQ(ax::bounds(ax, el, 5), frame);
    field->fail("AXSize");
    EXPECT_FALSE(ax::bounds(ax, el, 5));
}

TEST_F(TextFieldHelpers, TextFieldRolesAndRefusals) {
    EXPECT_TRUE(ax::isTextField(ax, el));  // a bare text area
    for (const char* role : {"AXTextField", "AXComboBox"}) {
        field->set("AXRole", QString(role));
        EXPECT_TRUE(ax::isTextField(ax, el)) << role;
    }
    for (const char* role : {"AXStaticText", "AXSecureTextField", "AXButton"}) {
        field->set("AXRole", QString(role));
        EXPECT_FALSE(ax::isTextField(ax, el)) << role;
    }
    field->set("AXRole", QStringLiteral("AXTextField"));
    for (const char* subrole : {"AXSecureTextField", "AXSearchField"}) {
        field->set("AXSubrole", QString(subrole));
        EXPECT_FALSE(ax::isTextField(ax, el)) << subrole;
    }
    field->unset("AXSubrole");
    for (const char* name : {"AXDescription", "AXTitle", "AXIdentifier", "AXPlaceholderValue"}) {
        for (const char* words :
             {"Search or enter Address", "Your email ADDRESS", "searching", "Password"}) {
            field->set(name, QString(words));
            EXPECT_FALSE(ax::isTextField(ax, el)) << name << ": " << words;
        }
        field->set(name, QStringLiteral("Message #general"));
        EXPECT_TRUE(ax::isTextField(ax, el)) << name;
    }
}

}  // namespace
