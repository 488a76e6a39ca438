#include <gtest/gtest.h>

#include "overlay/Markup.h"

TEST(Markup, PairsOfStarsMarkBoldSegmentsAndStrayStarsStay) {
    const struct {
        const char* marked;
        const char* text;
        QStringList bold;
    } cases[] = {
        {"**↑ ↓** to choose · **Tab** to insert", "↑ ↓ to choose · Tab to insert", {"↑ ↓", "Tab"}},
        {"**a** b **c", "a b **c", {"a"}},  // an unpaired last marker stays
        {"a ** b", "a ** b", {}},
        {"x****y", "xy", {}},  // an empty pair leaves no format behind
    };
    for (const auto& c : cases) {
        const auto styled = overlay::boldMarkup(QString::fromUtf8(c.marked));
        EXPECT_EQ(styled.text, QString::fromUtf8(c.text)) << c.marked;
        QStringList bold;
        for (const auto& range : styled.formats) {
            EXPECT_EQ(range.format.fontWeight(), QFont::Bold) << c.marked;
            bold << styled.text.mid(range.start, range.length);
        }
        EXPECT_EQ(bold, c.bold) << c.marked;
    }
}
