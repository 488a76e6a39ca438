// Reply drafts for an empty message box.
#include "EngineFixture.h"
#include "platform/Keys.h"

using namespace platform;

namespace {

const QByteArray kStreamed =
    "init\n"
    "text [\"Yes, I can join at 3.\"\n"
    "sleep 0.3\n"
    "text , \"I can't make 3, but 4 works.\"\n"
    "sleep 0.3\n"
    "text , \"Is there an agenda?\"]\n"
    "result [\"Yes, I can join at 3.\", \"I can't make 3, but 4 works.\", \"Is there an "
    "agenda?\"]\n";

class RepliesTest : public EngineTest {
protected:
    // Slack, with a conversation above an empty, focused message box.
    void openSlack(const QStringList& messages, const QString& boxText = {}) {
        auto& slack =
            desk.addApp(QStringLiteral("com.tinyspeck.slackmacgap"), QStringLiteral("Slack"));
        if (!window) window = slack.addWindow(QStringLiteral("general"));
        window->clearChildren();
        for (const QString& m : messages) window->addText(m);
        box = window->add(fake::TextField::create(boxText));
        box->set(QStringLiteral("AXDescription"), QStringLiteral("Message #general"));
        box->setCaret(0);
        slack.focus(box);
        desk.setFrontmost(slack.pid());
    }
    const QStringList kMessages{QStringLiteral("Ana: Can you join the pilot call at 3 tomorrow?"),
                                QStringLiteral("Ana: It should take half an hour.")};
    fake::NodePtr window;
    std::shared_ptr<fake::TextField> box;
};

TEST_F(RepliesTest, DraftsStreamInOneByOneAndTabInsertsTheChosenOne) {
    script(kStreamed);
    openSlack(kMessages);
    paused(0.31);
    EXPECT_FALSE(engine->draftingReplies) << "0.4 s of quiet first";
    after(0.11);
    ASSERT_TRUE(engine->draftingReplies) << log().toStdString();
    EXPECT_EQ(bubble().text, QStringLiteral("Drafting 3 replies…"));
    EXPECT_EQ(bubble().hint, QStringLiteral("keep typing to skip"));

    ASSERT_TRUE(waitFor([&] { return !lastRequest().isEmpty(); }));
    EXPECT_EQ(lastRequest(), "<reply>\n<where>Slack — Message #general</where>\n<conversation>\n" +
                                 kMessages.join(u' ') + "\n</conversation>\n</reply>");

    ASSERT_TRUE(waitFor([&] { return bubble().options.size() == 1; }));
    EXPECT_TRUE(bubble().more);
    ASSERT_TRUE(waitFor([&] { return bubble().options.size() == 3 && !bubble().more; }));
    EXPECT_FALSE(engine->draftingReplies);
    EXPECT_TRUE(log().contains(QStringLiteral(" chars -> reply options in ")));

    // Arrows wrap at both ends.
    EXPECT_TRUE(desk.keyTap().press(key::Up));
    EXPECT_EQ(bubble().selected, 2);
    EXPECT_TRUE(desk.keyTap().press(key::Down));
    EXPECT_TRUE(desk.keyTap().press(key::Down));
    EXPECT_EQ(bubble().selected, 1);
    EXPECT_FALSE(desk.keyTap().press(key::Down, flag::Shift));

    EXPECT_TRUE(desk.keyTap().press(key::Tab));
    EXPECT_EQ(box->text(), QStringLiteral("I can't make 3, but 4 works."));
    EXPECT_EQ(engine->cache.value(QStringLiteral("I can't make 3, but 4 works.")),
              QStringLiteral("="));
    EXPECT_FALSE(engine->bubble->visible());

    // Back in the same box and conversation: the drafts come from the cache at once.
    forgetLastRequest();
    box->setText({});
    paused(0.41);
    EXPECT_EQ(bubble().options.size(), 3);
    EXPECT_FALSE(engine->claude.requestInFlight());
}

TEST_F(RepliesTest, EscDismissesThisConversationUntilANewMessageArrives) {
    openSlack(kMessages);
    paused(0.41);
    ASSERT_TRUE(waitFor([&] { return engine->replies && !engine->draftingReplies; }));
    EXPECT_TRUE(desk.keyTap().press(key::Esc));
    EXPECT_FALSE(engine->bubble->visible());

    box->setText(QStringLiteral("x"));
    tick();
    box->setText({});
    tick();
    after(1.0);
    EXPECT_FALSE(engine->bubble->visible());
    EXPECT_FALSE(engine->draftingReplies);

    openSlack(kMessages + QStringList{QStringLiteral("Ana: Also, bring the numbers please.")});
    paused(0.41);
    EXPECT_TRUE(engine->draftingReplies);
}

TEST_F(RepliesTest, EscWhileDraftingCancelsAndDismisses) {
    script("init\nhang\n");
    openSlack(kMessages);
    paused(0.41);
    ASSERT_TRUE(engine->draftingReplies);
    EXPECT_TRUE(desk.keyTap().press(key::Esc));
    EXPECT_FALSE(engine->draftingReplies);
    EXPECT_FALSE(engine->claude.requestInFlight());
    EXPECT_FALSE(engine->bubble->visible());
    after(1.0);
    EXPECT_FALSE(engine->draftingReplies);
}

TEST_F(RepliesTest, UnreadableAnswerRemovesTheNotice) {
    script("answer Sure, here are some ideas.\n");
    openSlack(kMessages);
    paused(0.41);
    ASSERT_TRUE(
        waitFor([&] { return log().contains(QStringLiteral("reply options unreadable")); }));
    EXPECT_FALSE(engine->bubble->visible());
    EXPECT_FALSE(engine->replies);
}

TEST_F(RepliesTest, MailAndLinuxMailClientsSendTheQuotedMessageBelowTheCaret) {
    script(R"(answer ["Sure, here it is.", "Tomorrow.", "Which deck?"])" "\n");
    for (const char* id : {"com.apple.mail", "org.mozilla.Thunderbird", "org.gnome.Evolution"}) {
        forgetLastRequest();
        // Evolution puts the caret on the quote's first line rather than above it.
        const bool evolution = qstrcmp(id, "org.gnome.Evolution") == 0;
        const QString quote = QStringLiteral("On Monday, Ana wrote:\n> Could you send me the deck?");
        auto& mail = desk.addApp(QString::fromLatin1(id), QString::fromLatin1(id));
        auto window = mail.addWindow(QStringLiteral("Re: Deck"));
        window->addText(QStringLiteral("From: Ana Lopez"));
        auto box = window->add(fake::TextField::create(evolution ? quote : "\n\n" + quote));
        box->setCaret(0);
        mail.focus(box);
        desk.setFrontmost(mail.pid());
        paused(0.41);
        ASSERT_TRUE(waitFor([&] { return !lastRequest().isEmpty(); })) << id;
        EXPECT_TRUE(lastRequest().contains("<conversation>\nFrom: Ana Lopez\n</conversation>"))
            << id;
        EXPECT_TRUE(
            lastRequest().contains("<quoted>\nOn Monday, Ana wrote:\n> Could you send me "
                                   "the deck?\n</quoted>\n</reply>"))
            << id;
        ASSERT_TRUE(waitFor([&] { return engine->replies && !engine->draftingReplies; })) << id;
        EXPECT_TRUE(desk.keyTap().press(key::Tab));
        EXPECT_EQ(box->text(), "Sure, here it is.\n\n" + quote) << id;
    }
}

TEST_F(RepliesTest, GmailInAnyBrowserAndNoWordProcessor) {
    auto& chrome = desk.addApp(QStringLiteral("org.mozilla.firefox"), QStringLiteral("Firefox"));
    auto window = chrome.addWindow(QStringLiteral("Inbox"));
    auto page = window->add(QStringLiteral("AXWebArea"));
    page->set(QStringLiteral("AXURL"),
              Url{QStringLiteral("https://mail.google.com/mail/u/0/#inbox/1")});
    page->addText(QStringLiteral("Ana: could you send me the deck before Friday?"));
    auto box = page->add(fake::TextField::create());
    box->set(QStringLiteral("AXDescription"), QStringLiteral("Message Body"));
    chrome.focus(box);
    desk.setFrontmost(chrome.pid());
    paused(0.41);
    ASSERT_TRUE(waitFor([&] { return !lastRequest().isEmpty(); }));
    EXPECT_TRUE(
        lastRequest().startsWith("<reply>\n<where>Firefox (Gmail) — Message "
                                 "Body</where>\n<conversation>\nAna: could"));

    // An empty box in a word processor is not a reply box.
    engine->cancel();
    desk.openField(QStringLiteral("com.apple.TextEdit"));
    tick();
    after(1.0);
    EXPECT_FALSE(engine->draftingReplies);
    EXPECT_TRUE(log().contains(QStringLiteral("debug: empty field")));
}

TEST_F(RepliesTest, OutlookReplyOfTwoLinesIsNotRewrittenAfterwards) {
    // A reply's lines may end in any line break, carriage return and line feed included.
    script(
        R"(answer ["Hi Ana,\r\nYes, I will send it today.", "Hi Ana,\nNot today.", "Which deck?"])"
        "\n");
    auto& outlook =
        desk.addApp(QStringLiteral("com.microsoft.Outlook"), QStringLiteral("Microsoft Outlook"));
    auto window = outlook.addWindow(QStringLiteral("Re: Deck"));
    window->addText(QStringLiteral("Ana Lopez: Could you send me the deck today?"));
    auto box = window->add(fake::TextField::create());
    outlook.focus(box);
    desk.setFrontmost(outlook.pid());
    paused(0.41);
    ASSERT_TRUE(waitFor([&] { return engine->replies && !engine->draftingReplies; }));
    EXPECT_TRUE(desk.keyTap().press(key::Tab));
    EXPECT_EQ(box->text(), QStringLiteral("Hi Ana,\r\nYes, I will send it today."));
    EXPECT_EQ(engine->cache.value(QStringLiteral("Hi Ana,")), QStringLiteral("="));
    EXPECT_EQ(engine->cache.value(QStringLiteral("Yes, I will send it today.")),
              QStringLiteral("="));

    // An application slow to fetch the pasted reply still shows an empty box for a moment; the
    // list must not come back meanwhile.
    box->setText({});
    box->quirks().ignoreKeys = true;
    paused(0.41);
    ASSERT_TRUE(engine->replies);
    EXPECT_TRUE(desk.keyTap().press(key::Tab));
    after(0.2);
    EXPECT_FALSE(engine->bubble->visible());
}

}  // namespace
