// Where the engine must not act.
#include "EngineFixture.h"

using namespace platform;

namespace {

const QString kTyped = QStringLiteral("we are needing the deck before tomorrow.");

class GatesTest : public EngineTest {
protected:
    // Types, waits well past every pause, and says whether a rewrite was asked for.
    bool asks() {
        tick();
        after(1.0);
        after(1.0);
        return engine->claude.requestInFlight();
    }
};

TEST_F(GatesTest, SwitchedOffOrUntrustedDoesNothingAndDropsTheWaitingProcess) {
    desk.openField("com.apple.TextEdit", kTyped);
    tick();
    ASSERT_TRUE(engine->claude.hasWarm());
    desk.defaults().setBool(QStringLiteral("enabled"), false);
    EXPECT_FALSE(asks());
    EXPECT_FALSE(engine->claude.hasWarm());
    EXPECT_TRUE(log().contains(QStringLiteral("debug: off or no access")));

    desk.defaults().setBool(QStringLiteral("enabled"), true);
    desk.ax().setTrusted(false);
    EXPECT_FALSE(asks());
    desk.ax().setTrusted(true);
    EXPECT_TRUE(asks());
}

TEST_F(GatesTest, ApplicationSwitchedOff) {
    desk.openField("com.apple.TextEdit", kTyped);
    rules->setApp(QStringLiteral("com.apple.TextEdit"), false);
    EXPECT_FALSE(asks());
    EXPECT_TRUE(log().contains(QStringLiteral("debug: off in com.apple.TextEdit")));
}

TEST_F(GatesTest, FieldsThatAreNotForRewriting) {
    desk.openField("com.apple.TextEdit", kTyped, QStringLiteral("AXSecureTextField"));
    EXPECT_FALSE(asks());
    EXPECT_TRUE(log().contains(QStringLiteral("debug: no text field in com.apple.TextEdit")));
}

TEST_F(GatesTest, ComposingSelectionAndThinTextWait) {
    auto field = desk.openField("com.apple.TextEdit", kTyped);
    field->setMarked(Range{field->text().size() - 3, 3});
    EXPECT_FALSE(asks());
    EXPECT_TRUE(log().contains(QStringLiteral("debug: composing")));
    field->setMarked(std::nullopt);

    field->select(0, 5);
    EXPECT_FALSE(asks());

    field->setText(QStringLiteral("ok ok"));
    EXPECT_FALSE(asks());
    EXPECT_TRUE(log().contains(QStringLiteral("debug: not worth asking")));

    field->setText(kTyped);
    EXPECT_TRUE(asks());
}

TEST_F(GatesTest, WebsiteSwitchesDecideInBrowsers) {
    auto& chrome =
        desk.addApp(QStringLiteral("com.google.Chrome"), QStringLiteral("Google Chrome"));
    auto window = chrome.addWindow(QStringLiteral("Page"));
    auto page = window->add(QStringLiteral("AXWebArea"));
    page->set(QStringLiteral("AXURL"), Url{QStringLiteral("https://blocked.example.com/post")});
    auto field = page->add(fake::TextField::create(kTyped));
    chrome.focus(field);
    desk.setFrontmost(chrome.pid());

    rules->setSite(QStringLiteral("blocked.example.com"), false);
    EXPECT_FALSE(asks());
    EXPECT_EQ(engine->frontHost, QStringLiteral("blocked.example.com"));
    EXPECT_TRUE(log().contains(QStringLiteral("debug: off on blocked.example.com")));

    // Another page of the same browser still gets suggestions.
    auto otherPage = window->add(QStringLiteral("AXWebArea"));
    otherPage->set(QStringLiteral("AXURL"), QStringLiteral("https://open.example.org/"));
    auto otherField = otherPage->add(fake::TextField::create(kTyped));
    chrome.focus(otherField);
    EXPECT_TRUE(asks());
    EXPECT_EQ(engine->frontHost, QStringLiteral("open.example.org"));
}

TEST_F(GatesTest, OwnWindowsLeaveEverythingAsItIs) {
    desk.openField("com.apple.TextEdit", kTyped);
    showCached(kTyped, QStringLiteral("We need the deck before tomorrow."));
    auto& self = desk.addApp(QStringLiteral("org.glimmo.Glimmo"), QStringLiteral("Glimmo"),
                             desk.platform().workspace.ownPid());
    desk.setFrontmost(self.pid());
    tick();
    EXPECT_TRUE(engine->shown) << log().toStdString();
    EXPECT_TRUE(engine->bubble->visible());
}

TEST_F(GatesTest, ChineseWaitsForTheInputMethodToFinish) {
    const QString typed = QString::fromUtf8("我们明天下午开会讨论 ni'hao");
    desk.openField("com.apple.TextEdit", typed);
    EXPECT_TRUE(asks()) << "without a Chinese input source the Latin letters are English";
    engine->cancel();

    desk.inputSource().setLanguages({QStringLiteral("zh-Hans")});
    desk.openField("com.apple.TextEdit", typed);
    EXPECT_FALSE(asks()) << "pinyin still being typed before the caret";
    desk.openField("com.apple.TextEdit", QString::fromUtf8("我们明天下午开会讨论。"));
    EXPECT_TRUE(asks());
}

}  // namespace
