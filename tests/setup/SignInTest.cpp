#include "SetupFixture.h"

namespace {

using testsupport::waitUntil;

// Plays the recorded sign-in: the page's address, a prompt without a line feed, "Invalid
// code" and a new address for a wrong code; "good" signs in. Like the real program it keeps
// waiting once its input closes. Verification answers OK only once signed in.
QByteArray signInStandin() {
    const QByteArray data = GLIMMO_SETUP_DATA;
    return "if [ \"$1\" = auth ]; then\n"
           "  echo \"$*\" >> \"$HOME/signins\"\n"
           "  cat '" +
           data +
           "/signin-waiting.txt'\n"
           "  while IFS= read -r code; do\n"
           "    echo \"$code\" >> \"$HOME/codes\"\n"
           "    if [ \"$code\" = good ]; then touch \"$HOME/signed-in\"; echo 'Login successful'; "
           "exit 0; fi\n"
           "    cat '" +
           data +
           "/signin-invalid-code.txt'\n"
           "  done\n"
           "  exec sleep 60\n"
           "fi\n"
           "cat >/dev/null\n"
           "[ -f \"$HOME/signed-in\" ] && echo OK && exit 0\n"
           "echo 'Not logged in · Please run /login'; exit 1\n";
}

TEST_F(SetupFixture, SignInOffersThePageTakesACodeAndVerifies) {
    useClaude(signInStandin());
    auto s = make();
    s->signIn();
    EXPECT_TRUE(s->signingIn());
    ASSERT_TRUE(waitUntil([&] { return s->loginURL().has_value(); }));
    const QString first = *s->loginURL();
    EXPECT_TRUE(first.endsWith("state=hC1Uz6k0gUOmJBk7o8TCSKiYbz_ZAsGU-0g16MRN6mM"));
    s->openLoginPage();
    EXPECT_EQ(workspace.openedUrls(), QStringList{first});

    s->signIn();  // already running: ignored
    s->setCode("  \t");
    s->submitCode();  // blank: ignored
    s->setCode(" wrong \n");
    s->submitCode();
    ASSERT_TRUE(waitUntil([&] { return s->loginURL() != first; }));
    EXPECT_TRUE(s->loginURL()->endsWith("state=qzoDCne_DX_QgGacAKpbMSeybmaJ-KlUEgOvRQU79I4"));
    EXPECT_EQ(s->code(), " wrong \n");

    s->setCode("good");
    s->submitCode();
    ASSERT_TRUE(waitUntil([&] { return s->claudeOK(); }));
    EXPECT_FALSE(s->signingIn());
    EXPECT_EQ(home.read("signins"), "auth login --claudeai\n");
    EXPECT_EQ(home.read("codes"), "wrong\ngood\n");
    const QString text = log();
    EXPECT_LT(text.indexOf("setup: sign-in started"), text.indexOf("setup: sign-in ended (0)"));
    EXPECT_LT(text.indexOf("setup: sign-in ended (0)"), text.indexOf("setup: claude answers"));
}

TEST_F(SetupFixture, CancelledSignInEndsAndIsVerified) {
    useClaude(signInStandin());
    auto s = make();
    s->signIn();
    ASSERT_TRUE(waitUntil([&] { return s->loginURL().has_value(); }));
    s->cancelSignIn();
    ASSERT_TRUE(waitUntil([&] { return !s->signingIn(); }));
    EXPECT_TRUE(s->checking());
    EXPECT_TRUE(log().contains("setup: sign-in ended (15)"));
    ASSERT_TRUE(waitUntil([&] { return !s->checking(); }));
    EXPECT_FALSE(s->claudeOK());

    // A new sign-in starts afresh, without the old page.
    s->signIn();
    EXPECT_TRUE(s->signingIn());
    EXPECT_FALSE(s->loginURL().has_value());
    s->cancelSignIn();
    ASSERT_TRUE(waitUntil([&] { return !s->signingIn(); }));
}

TEST_F(SetupFixture, SignInThatCannotStartIsLogged) {
    useClaude("exit 0");
    home.write("bin/claude", "#!/nonexistent/interpreter\n");
    auto s = make();
    s->signIn();
    EXPECT_FALSE(s->signingIn());
    EXPECT_TRUE(log().contains("setup: cannot start sign-in: "));
}

}  // namespace
