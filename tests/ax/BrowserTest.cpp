#include <gtest/gtest.h>

#include "ax/Browser.h"
#include "main/Constants.h"
#include "platform/fake/Desktop.h"

using namespace platform;

namespace {

// A web area holding a chain of groups depth deep with a text field at the bottom.
fake::NodePtr nest(const fake::NodePtr& area, int depth) {
    fake::NodePtr at = area;
    for (int i = 1; i < depth; ++i) at = at->add("AXGroup");
    return at->add(fake::TextField::create("hi", "AXTextField"));
}

TEST(Browser, WebAreaIsFoundWithinSixtyElements) {
    fake::Desktop desk;
    auto& ax = desk.platform().ax;
    auto window = desk.addApp("com.google.Chrome").addWindow();
    auto area = window->add("AXWebArea");
    area->set("AXURL", Url{"https://mail.google.com/mail/u/0/#inbox"});

    auto found = ax::webArea(ax, nest(area, 59)->handle());  // 59 levels below: 60 elements
    ASSERT_TRUE(found);
    EXPECT_TRUE(ax.same(*found, area->handle()));
    EXPECT_EQ(ax::pageHost(ax, nest(area, 59)->handle()), "mail.google.com");

    EXPECT_FALSE(ax::webArea(ax, nest(area, 60)->handle()));
    EXPECT_FALSE(ax::pageHost(ax, nest(area, 60)->handle()));

    auto self = ax::webArea(ax, area->handle());
    ASSERT_TRUE(self);
    EXPECT_TRUE(ax.same(*self, area->handle()));
    // Outside any page, and a parent that is not an element.
    EXPECT_FALSE(ax::webArea(ax, window->handle()));
    auto odd = area->add("AXGroup");
    odd->set("AXParent", QStringLiteral("not an element"));
    EXPECT_FALSE(ax::webArea(ax, odd->handle()));
}

TEST(Browser, AddressAsUrlOrStringAndItsHostUnchanged) {
    fake::Desktop desk;
    auto& ax = desk.platform().ax;
    auto area = desk.addApp("org.mozilla.firefox").addWindow()->add("AXWebArea");
    auto box = area->add("AXGroup")->add(fake::TextField::create());

    area->set("AXURL", QStringLiteral("https://www.Example.org:8080/a?b#c"));
    EXPECT_EQ(ax::webAreaURL(ax, box->handle()), "https://www.Example.org:8080/a?b#c");
    EXPECT_EQ(ax::pageHost(ax, box->handle()), "www.Example.org");  // as written, no label removed
    area->set("AXURL", QStringLiteral("https://me@Mail.Example.com:8443"));
    EXPECT_EQ(ax::pageHost(ax, box->handle()), "Mail.Example.com");

    area->set("AXURL", Url{"https://docs.example.com/x"});
    EXPECT_EQ(ax::webAreaURL(ax, box->handle()), "https://docs.example.com/x");

    area->set("AXURL", Url{"about:blank"});
    EXPECT_FALSE(ax::pageHost(ax, box->handle()));
    area->set("AXURL", true);
    EXPECT_FALSE(ax::webAreaURL(ax, box->handle()));
    area->unset("AXURL");
    EXPECT_FALSE(ax::webAreaURL(ax, box->handle()));
}

TEST(Browser, PrimingOncePerProcessEnhancedOnlyForChromium) {
    fake::Desktop desk;
    std::set<qint64> primed;
    auto& ax = desk.platform().ax;
    int pid = 100;
    for (const QString& id : glimmo::chromiumBrowsers()) {
        ax::prime(ax, primed, desk.addApp(id, {}, pid++).info());
    }
    for (const char* id : {"com.apple.Safari", "com.tinyspeck.slackmacgap", ""}) {
        ax::prime(ax, primed, desk.addApp(id, {}, pid++).info());
    }
    ax::prime(ax, primed, desk.app(100)->info());  // again: nothing more
    ax::prime(ax, primed, desk.app(pid - 1)->info());

    const std::size_t chromium = glimmo::chromiumBrowsers().size(), all = chromium + 3;
    auto manual = desk.ax().writes("AXManualAccessibility");
    auto enhanced = desk.ax().writes("AXEnhancedUserInterface");
    EXPECT_EQ(manual.size(), all);
    ASSERT_EQ(enhanced.size(), chromium);
    for (std::size_t i = 0; i < enhanced.size(); ++i) {
        EXPECT_EQ(enhanced[i].node, desk.app(100 + qint64(i))->element());
        EXPECT_EQ(enhanced[i].value, Value(true));
    }
    EXPECT_EQ(manual.back().node, desk.app(pid - 1)->element());
    EXPECT_EQ(primed.size(), all);
    EXPECT_EQ(desk.ax().primed().size(), all);
    EXPECT_EQ(desk.ax().primed().front(), 100);
}

}  // namespace
