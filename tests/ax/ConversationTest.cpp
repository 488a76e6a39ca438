#include <gtest/gtest.h>

#include "ax/Conversation.h"
#include "platform/fake/Desktop.h"

using namespace platform;

namespace {

struct Capture : ::testing::Test {
    fake::Desktop desk;
    Ax& ax = desk.platform().ax;
    fake::App& mail = desk.addApp("com.apple.mail", "Mail");
    fake::NodePtr window = mail.addWindow("Re: lunch");
    std::shared_ptr<fake::TextField> box;

    // The reply box after the given number of texts, focused.
    void addBox(const QString& text = {}) {
        box = window->add(fake::TextField::create(text));
        mail.focus(box);
    }
    QString capture() {
        return ax::conversation(ax, desk.clock(), window->handle(), box->handle());
    }
    auto context(qint64 caret) {
        return ax::replyContext(ax, desk.clock(), mail.info(), mail.element()->handle(),
                                box->handle(), box->text(), caret);
    }
};

TEST_F(Capture, MailWindowAboveTheBoxAndQuotedMessageInsideIt) {
    auto list = window->add("AXGroup");
    list->addText("Ann: lunch at noon?");
    list->add("AXGroup")->addText("  Bob: sure  ");  // kept as it is
    list->addText(" \t ");                           // blank: skipped
    list->addText("\n");                             // a bare line feed counts
    list->addText("");
    addBox("\n\n> Ann wrote:\n> lunch at noon?\n\n");
    window->addText("Below the box: not part of it");

    EXPECT_EQ(capture(), "Ann: lunch at noon?   Bob: sure   \n");
    const auto reply = context(0);
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->conversation, "Ann: lunch at noon?   Bob: sure   \n");
    EXPECT_EQ(reply->quoted, "> Ann wrote:\n> lunch at noon?");
    // The caret after the quote: nothing quoted; a caret past the end is clamped.
    EXPECT_EQ(context(999)->quoted, "");
}

TEST_F(Capture, StaticTextsAreDescendedAndUnreadableBranchesPruned) {
    auto text = window->addText("outer");
    text->addText("inner");
    auto broken = window->add("AXGroup");
    broken->addText("hidden");
    broken->fail("AXChildren");
    window->add("AXStaticText")->fail("AXValue");
    addBox();
    EXPECT_EQ(capture(), "outer inner");
}

TEST_F(Capture, StopsAfterSixThousandElementsWithWhatItHas) {
    for (int i = 0; i < 7000; ++i) window->addText(QString("t%1").arg(i));
    addBox();
    const QString all = capture();
    // The window is the first element examined, so 5999 texts fit.
    EXPECT_TRUE(all.endsWith(" t5998"));
    EXPECT_FALSE(all.contains("t5999"));
    EXPECT_TRUE(all.startsWith("t0 t1 "));
}

TEST_F(Capture, StopsAfterSixTenthsOfASecond) {
    // Each read of these texts costs 0.125 s: three reads, 0.375 s a text.
    for (int i = 0; i < 5; ++i) window->addText(QString("slow%1").arg(i))->setReadCost(0.125);
    addBox();
    const double start = desk.clock().now();
    EXPECT_EQ(capture(), "slow0 slow1");
    EXPECT_DOUBLE_EQ(desk.clock().now() - start, 0.75);
}

TEST_F(Capture, SkipsWhatLiesDeeperThanSixtyAndGoesOn) {
    fake::NodePtr at = window;
    for (int depth = 1; depth < 60; ++depth) at = at->add("AXGroup");
    at->addText("depth 60")->addText("depth 61");
    window->addText("after");
    addBox();
    EXPECT_EQ(capture(), "depth 60 after");
}

TEST_F(Capture, RootsForReplyAppsAndReplySitesInAnyBrowser) {
    addBox();
    auto root = ax::captureRoot(ax, mail.info(), mail.element()->handle(), box->handle());
    ASSERT_TRUE(root);
    EXPECT_TRUE(ax.same(root->root, window->handle()));
    EXPECT_TRUE(root->site.isEmpty());
    mail.focus(nullptr);  // no focused window: nothing to capture
    EXPECT_FALSE(ax::captureRoot(ax, mail.info(), mail.element()->handle(), box->handle()));

    for (const char* id : {"com.google.Chrome", "org.mozilla.firefox", "com.apple.TextEdit"}) {
        auto& browser = desk.addApp(id);
        auto area = browser.addWindow()->add("AXWebArea");
        area->set("AXURL", Url{"https://App.Slack.com/client/T1/C2"});
        auto reply = area->add("AXGroup")->add(fake::TextField::create());
        auto got =
            ax::captureRoot(ax, browser.info(), browser.element()->handle(), reply->handle());
        if (QString(id) == "com.apple.TextEdit") {
            EXPECT_FALSE(got) << id;
            continue;
        }
        ASSERT_TRUE(got) << id;
        EXPECT_EQ(got->site, "Slack");
        EXPECT_TRUE(ax.same(got->root, area->handle()));
        // A look-alike host is no reply site.
        area->set("AXURL", QStringLiteral("https://app.slack.com.example.net/"));
        EXPECT_FALSE(
            ax::captureRoot(ax, browser.info(), browser.element()->handle(), reply->handle()));
    }
}

TEST(Graphemes, CutsNeverSplitACharacter) {
    const QString accented = QString("e") + QChar(0x0301);  // one character, two units
    const QString flag = QString::fromUtf8("\xF0\x9F\x87\xAB\xF0\x9F\x87\xB7");  // four units
    EXPECT_EQ(ax::graphemeCount(accented + flag + "a"), 3);
    EXPECT_EQ(ax::lastGraphemes(accented + flag + "a", 2), flag + "a");
    EXPECT_EQ(ax::firstGraphemes(accented + flag + "a", 2), accented + flag);
    EXPECT_EQ(ax::firstGraphemes("ab", 5), "ab");
    EXPECT_EQ(ax::lastGraphemes("ab", 0), "");
}

TEST_F(Capture, LongConversationAndQuoteAreCutByCharacters) {
    const QString accented = QString("e") + QChar(0x0301);
    QString talk;
    for (int i = 0; i < 5000; ++i) talk += (i == 1499 ? QString("X") : accented);
    window->addText(talk);
    QString quote;
    for (int i = 0; i < 5000; ++i) quote += (i == 3000 ? QString("Y") : accented);
    addBox(quote);
    const auto reply = context(0);
    ASSERT_TRUE(reply);
    EXPECT_EQ(ax::graphemeCount(reply->conversation), 3500);
    EXPECT_EQ(reply->conversation.size(), 7000);  // no half character at the cut
    EXPECT_FALSE(reply->conversation.contains('X'));
    EXPECT_EQ(ax::graphemeCount(reply->quoted), 3000);
    EXPECT_FALSE(reply->quoted.contains('Y'));
    EXPECT_TRUE(reply->quoted.endsWith(accented));
}

}  // namespace
