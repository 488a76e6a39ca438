#include <gtest/gtest.h>

#include <QLineEdit>

#include "platform/Defaults.h"
#include "shell/ProfileDialog.h"

namespace {

TEST(ProfileDialog, SavesTrimmedFieldsAndKeepsEmptyOnes) {
    platform::MemoryDefaults defaults;
    defaults.setString("role", "an engineer");
    shell::ProfileDialog dialog(defaults);
    EXPECT_EQ(dialog.roleField()->text(), "an engineer");
    EXPECT_EQ(dialog.nameField()->placeholderText(), "Alex");

    dialog.nameField()->setText("  Alex \n");
    dialog.roleField()->clear();
    dialog.languageField()->setText("\tSpanish ");
    dialog.save();
    EXPECT_EQ(defaults.string("name"), "Alex");
    EXPECT_EQ(defaults.string("role"), "");
    EXPECT_EQ(defaults.string("language"), "Spanish");
}

}  // namespace
