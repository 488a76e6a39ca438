// Writing on the web, in Chromium and in Firefox on the virtual desktop: a paragraph typed below
// a first one that holds a character outside the Basic Multilingual Plane is rewritten, Tab
// replaces exactly that paragraph, and the user's clipboard is back. Pages come from a server
// in this process.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <memory>
#include <optional>

#include "Chromium.h"
#include "EngineOnDesktop.h"
#include "Firefox.h"

using testsupport::waitUntil;

namespace {

const QString kAbove = QStringLiteral("Agenda \U0001F4C5 for Monday.\n\n");
const QString kTyped = QStringLiteral("the parcel should arrive at the front desk before noon");
const QString kRewrite = QStringLiteral("The parcel should reach the front desk before noon.");
const QString kKept = QStringLiteral("the user's own clipboard");

// A textarea holding the first paragraph, the caret after it.
const QByteArray kTextarea =
    "<!doctype html><html><head><meta charset=\"utf-8\"><title>Notes</title></head><body>"
    "<textarea id=\"t\" rows=\"8\" cols=\"70\" spellcheck=\"false\" aria-label=\"Note\">"
    "Agenda \xF0\x9F\x93\x85 for Monday.\n\n</textarea><script>"
    "const t = document.getElementById('t'); t.focus();"
    "t.setSelectionRange(t.value.length, t.value.length);</script></body></html>";

// The browser a test runs in, showing url; none when it is not installed.
struct Browser {
    std::optional<desktop::Chromium> chromium;
    std::optional<desktop::Firefox> firefox;
    qint64 pid() const { return chromium ? chromium->pid() : firefox->pid(); }
};

struct WebOnDesktop : EngineRunsOnDesktop, ::testing::WithParamInterface<const char*> {
    bool open(Browser& b, const QString& url) {
        if (QLatin1String(GetParam()) == QLatin1String("chromium")) {
            const QString program = desktop::chromiumProgram();
            if (program.isEmpty()) return missing("chromium");
            b.chromium.emplace(program, home.path() + QStringLiteral("/chromium"), url);
            return b.chromium->started();
        }
        const QString program = desktop::firefoxProgram();
        if (program.isEmpty()) return missing("firefox-esr");
        b.firefox.emplace(program, home, url);
        return b.firefox->started();
    }
    bool missing(const char* package) {
        if (qEnvironmentVariable("CI") == QLatin1String("true"))
            ADD_FAILURE() << package << " is not installed";
        else
            [&] { GTEST_SKIP() << "BROWSER TEST SKIPPED: " << package << " is not installed"; }();
        return false;
    }

    // Types the paragraph below the first one, waits for its rewrite and applies it with Tab;
    // the clipboard the user had is back afterwards.
    void typeAndApply() {
        QGuiApplication::clipboard()->setText(kKept);
        desktop::xdotool({"type", "--delay", "20", "--", kTyped});
        ASSERT_TRUE(suggests(kRewrite, 20000)) << seen();
        desktop::xdotool({"key", "Tab"});
        EXPECT_TRUE(waitUntil([&] { return !engine.bubble->visible(); }, 5000)) << seen();
        EXPECT_TRUE(waitUntil([&] { return QGuiApplication::clipboard()->text() == kKept; }, 5000));
    }
};

}  // namespace

TEST_P(WebOnDesktop, TextareaSecondParagraph) {
    ASSERT_TRUE(desktop.hasDisplay());
    testsupport::setStandinScript(home, "answer " + kRewrite.toUtf8() + "\n");
    engine.start();
    desktop::PageServer server(kTextarea);
    Browser browser;
    if (!open(browser, server.url(QStringLiteral("127.0.0.1"), QStringLiteral("/notes.html"))))
        return;
    ASSERT_TRUE(waitUntil(
        [&] { return engine.lastEl && engine.lastText.trimmed() == kAbove.trimmed(); }, 60000))
        << seen();
    typeAndApply();
    EXPECT_TRUE(focusedHolds(browser.pid(), (kAbove + kRewrite).trimmed())) << seen();
}

INSTANTIATE_TEST_SUITE_P(Browsers, WebOnDesktop, ::testing::Values("chromium", "firefox"),
                         [](const auto& info) { return std::string(info.param); });
