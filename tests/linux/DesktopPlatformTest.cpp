// The Desktop bundle and the parts without an application to talk to: screens, input source.
#include <gtest/gtest.h>

#include "TempHome.h"
#include "platform/linux/Desktop.h"

TEST(Desktop, HandsOutEveryPartWithTheVirtualScreen) {
    testsupport::TempHome home;
    platform::MemoryDefaults defaults;
    platform::SystemClock clock;
    linuxdesk::Desktop desktop;
    ASSERT_TRUE(desktop.hasDisplay());
    platform::Platform p = desktop.platform(defaults, clock);
    EXPECT_EQ(&p.defaults, &defaults);
    EXPECT_TRUE(p.ax.trusted());

    // tests/e2e/desktop.sh starts one 1280x800 screen without panels.
    auto main = p.screens.main();
    ASSERT_TRUE(main);
    EXPECT_EQ(main->frame, (platform::Rect{0, 0, 1280, 800}));
    EXPECT_EQ(main->visible, main->frame);
    EXPECT_EQ(p.screens.screens().size(), 1u);

    // No input method framework runs there: the XKB layout (us) decides.
    EXPECT_EQ(p.inputSource.languages(), QStringList{"en"});
    EXPECT_TRUE(p.keyTap.install([](int, quint64) { return false; }));
}
