// Writing on the web, in Chromium and in Firefox on the virtual desktop: the rich-text editors web
// applications are built on (pages from tests/e2e/editors, built from the editors' npm packages,
// each mirroring its model's paragraphs into the window's title) are read as one text, and a
// paragraph typed below a first one that holds a character outside the Basic Multilingual Plane
// gets its suggestion. Pages come from a server in this process.
#include <gtest/gtest.h>

#include <QFile>
#include <QUrl>
#include <optional>

#include "Chromium.h"
#include "EngineOnDesktop.h"
#include "Firefox.h"

using testsupport::waitUntil;

namespace {

const QString kAbove = QStringLiteral("Agenda \U0001F4C5 for Monday.\n\n");
const QString kTyped = QStringLiteral("the parcel should arrive at the front desk before noon");
const QString kRewrite = QStringLiteral("The parcel should reach the front desk before noon.");
// The browser a test runs in, showing url; none when it is not installed.
struct Browser {
    std::optional<desktop::Chromium> chromium;
    std::optional<desktop::Firefox> firefox;
};

// The window title of the browser in front: an editor page's model.
QString frontTitle() {
    return desktop::output("xdotool", {"getactivewindow", "getwindowname"});
}

struct Web : EngineRunsOnDesktop {
    bool open(Browser& b, const QString& browser, const QString& url) {
        if (browser == QLatin1String("chromium")) {
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
        desktop::missingPackage("BROWSER TEST SKIPPED", package);
        return false;
    }
};

// (browser, editor page)
struct Editor : Web, ::testing::WithParamInterface<std::tuple<const char*, const char*>> {};

}  // namespace

// The editor's paragraphs are read as one text: the paragraph typed below the first gets its
// suggestion, and Esc leaves the editor's model as the user wrote it.
TEST_P(Editor, TypedParagraphGetsItsSuggestion) {
    ASSERT_TRUE(desktop.hasDisplay());
    const auto [browserName, editor] = GetParam();
    QFile page(QStringLiteral(GLIMMO_EDITOR_PAGES "/%1.html").arg(editor));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly)) << "no page " << page.fileName().toStdString();
    testsupport::setStandinScript(home, "answer " + kRewrite.toUtf8() + "\n");
    engine.start();
    desktop::PageServer server(page.readAll());
    Browser browser;
    const QString start = QString::fromLatin1(QUrl::toPercentEncoding(kAbove.chopped(1)));
    if (!open(browser, browserName,
              server.url(QStringLiteral("127.0.0.1"), QStringLiteral("/?text=") + start)))
        return;
    const QString first = kAbove.trimmed();
    ASSERT_TRUE(
        waitUntil([&] { return frontTitle().startsWith(first + QStringLiteral(" ¶")); }, 60000))
        << frontTitle().toStdString();
    // Typing starts once the editor has the focus and reads as one text (CKEditor sets up its
    // editing a moment after its model, and keys before that are lost).
    ASSERT_TRUE(
        waitUntil([&] { return engine.lastEl && engine.lastText.trimmed() == first; }, 20000))
        << seen();
    desktop::xdotool({"type", "--delay", "20", "--", kTyped});
    ASSERT_TRUE(suggests(kRewrite, 20000)) << seen() << "title: " << frontTitle().toStdString();
    EXPECT_TRUE(request().contains(kTyped)) << request().toStdString();
    desktop::xdotool({"key", "Escape"});
    EXPECT_TRUE(waitUntil([&] { return !engine.bubble->visible(); }, 5000));
    EXPECT_TRUE(frontTitle().startsWith(first + QStringLiteral(" ¶ ") + kTyped))
        << frontTitle().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Browsers, Editor,
                         ::testing::Combine(::testing::Values("chromium", "firefox"),
                                            ::testing::Values("prosemirror", "quill", "lexical",
                                                              "slate", "ckeditor5")),
                         [](const auto& info) {
                             return std::string(std::get<1>(info.param)) + "_" +
                                    std::get<0>(info.param);
                         });
