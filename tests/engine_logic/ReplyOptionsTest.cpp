#include <gtest/gtest.h>

#include "engine/ReplyOptions.h"

namespace {

using engine::finalReplyOptions;
using engine::partialReplyOptions;

TEST(ReplyOptions, PartialListGrowsWithEachCompleteString) {
    EXPECT_TRUE(partialReplyOptions(R"([ "Yes, I ca)").isEmpty());
    EXPECT_EQ(partialReplyOptions(R"(["Yes, I can", "No)"), QStringList{"Yes, I can"});
    EXPECT_EQ(partialReplyOptions(R"(["a \"quoted\" word", "line\nbreak"])"),
              (QStringList{"a \"quoted\" word", "line\nbreak"}));
    EXPECT_EQ(partialReplyOptions(R"(["1","2","3","4"])"), (QStringList{"1", "2", "3"}));
}

TEST(ReplyOptions, FinalListIsTheArrayOfNonBlankStrings) {
    EXPECT_EQ(finalReplyOptions("Here you go:\n[\" one \", 2, \"two\", \"\"]\nDone"),
              (QStringList{"one", "two"}));
    EXPECT_EQ(finalReplyOptions(R"(["a","b","c","d"])"), (QStringList{"a", "b", "c"}));
    EXPECT_EQ(finalReplyOptions(R"(["é 🙂", "[link]"])"),
              (QStringList{QString::fromUtf8("é 🙂"), "[link]"}));
}

TEST(ReplyOptions, UnreadableAnswers) {
    EXPECT_FALSE(finalReplyOptions("Sure! Yes, I can."));
    EXPECT_FALSE(finalReplyOptions(R"(["  ", "\n"])"));
    EXPECT_FALSE(finalReplyOptions("] backwards ["));
    EXPECT_FALSE(finalReplyOptions("[1, 2, 3]"));
}

}  // namespace
