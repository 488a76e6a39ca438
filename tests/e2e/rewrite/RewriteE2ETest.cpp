// The rewrite cycle on a real X11 desktop: the built program in a normal launch, the GTK test
// editor, the accessibility bus and the scripted claude stand-in, driven by xdotool keys as a
// user would drive them. The cases share one editor and one running program and build on each
// other's text, so they run in the order written.
#include <gtest/gtest.h>
#include <signal.h>

#include <QImage>
#include <QProcess>

#include "GlimmoRun.h"
#include "GtkEditor.h"
#include "platform/linux/session/QtClipboard.h"
#include "platform/linux/session/QtScreens.h"

using testsupport::waitUntil;

namespace {

// Ends with an empty paragraph: the caret waits there and nothing is worth asking yet.
const QString kStart = QStringLiteral(
    "The first paragraph stays as it is.\n\n"
    "Second paragraph with emoji \U0001F600 and CJK \u4F60\u597D text.\n\n");
const QString kTyped = QStringLiteral("we need teh deck befor tomorow");
const QString kRewrite = QStringLiteral("We need the deck before tomorrow.");
const QString kDismissed = QStringLiteral("the meeting is moved to thursday afernoon");
const QString kKept = QStringLiteral("please send me the numbrs by friday");
const QString kPassword = QStringLiteral("hunter two secret words");
const QString kClipText = QStringLiteral("kept on the clipboard \U0001F600");

void type(const QString& text) {
    desktop::xdotool({"type", "--delay", "25", "--", text});
}

// What a GTK application finds on the clipboard, with the targets as a sorted set less the
// selection requests every owner answers in its own way (TARGETS, TIMESTAMP, ...).
std::string foreignContent() {
    QStringList lines = desktop::foreignClipboard().split('\n');
    if (!lines.isEmpty() && lines[0].startsWith("targets")) {
        QStringList targets = lines[0].split(' ', Qt::SkipEmptyParts).mid(1);
        for (const char* request : {"TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS"})
            targets.removeAll(QString::fromLatin1(request));
        targets.removeDuplicates();
        targets.sort();
        lines[0] = "targets " + targets.join(' ');
    }
    return lines.join('\n').toStdString();
}

QString screenshotPath() {
    return QStringLiteral(GLIMMO_SHOT_DIR "/e2e-rewrite-bubble.png");
}

class Rewrite : public WithGlimmo {
protected:
    static void SetUpTestSuite() {
        // Another application owns the clipboard (a text and an image item) before the editor
        // comes up on top of it with the keyboard focus; Glimmo starts after both, as after a
        // login that restores the session.
        owner = new GtkEditor({"--own-clipboard", kClipText, "--title", "Clipboard owner"});
        editor = new GtkEditor({"--text", kStart, "--title", "Rewrite editor"});
        glimmo = new GlimmoRun(answer(kRewrite));
        ax = new linuxdesk::AtspiAx;
    }

    static void TearDownTestSuite() {
        delete ax;
        delete glimmo;
        delete editor;
        delete owner;
    }

    void SetUp() override {
        ASSERT_TRUE(owner->ready() && editor->ready()) << "the GTK editor did not come up";
        ASSERT_TRUE(glimmo->started()) << glimmo->output().toStdString();
        field = desktop::focusedElement(*ax, editor->pid());
        ASSERT_TRUE(field) << "the editor's text view has no accessible focus";
    }

    // Starts a new paragraph at the end of the text and types text into it.
    void typeParagraph(const QString& text) {
        desktop::xdotool({"key", "ctrl+End", "Return", "Return"});
        type(text);
    }

    static inline GtkEditor* owner = nullptr;
    static inline GtkEditor* editor = nullptr;
};

TEST_F(Rewrite, NoCompositorOnTheVirtualDesktop) {
    // openbox composites nothing: the bubble must be cut to its card, with no shadow band.
    EXPECT_FALSE(linuxdesk::QtScreens().composited());
}

TEST_F(Rewrite, TabReplacesTheTypedParagraphAndTheClipboardComesBack) {
    ASSERT_EQ(value(), kStart);
    linuxdesk::QtClipboard clipboard;
    ASSERT_TRUE(waitUntil([&] { return !clipboard.save().empty(); }));
    const platform::ClipContents before = clipboard.save();
    const std::string foreignBefore = foreignContent();
    ASSERT_NE(foreignBefore.find("image 24x16"), std::string::npos) << foreignBefore;
    for (const auto& [type, data] : before.front().types)
        EXPECT_NE(type, "TIMESTAMP");  // a selection request, not content

    desktop::xdotool({"key", "ctrl+End"});
    type(kTyped);
    ASSERT_TRUE(waitUntil([&] { return value() == kStart + kTyped; }));
    ASSERT_TRUE(bubbleShown(true)) << "no bubble appeared";
    const QRect frame = *glimmo->bubble();

    // Next to the caret: just below (or above) the typed line, overlapping the caret's column.
    const auto last = ax->parameterized(field, "AXBoundsForRange",
                                        platform::Range{qint64(value().size()) - 1, 1});
    ASSERT_TRUE(last && std::holds_alternative<platform::Rect>(*last));
    const auto caret = std::get<platform::Rect>(*last);
    const double caretX = caret.x + caret.width;
    const double below = frame.top() - (caret.y + caret.height);
    const double above = caret.y - (frame.bottom() + 1);
    EXPECT_TRUE((below >= -1 && below <= 40) || (above >= -1 && above <= 40))
        << "bubble " << frame.y() << ".." << frame.bottom() << ", caret line " << caret.y << ".."
        << caret.y + caret.height;
    EXPECT_GE(caretX, frame.left() - 40);
    EXPECT_LE(caretX, frame.right() + 40);

    ASSERT_EQ(QProcess::execute("import", {"-window", "root", screenshotPath()}), 0);
    std::cout << "screenshot of the bubble: " << screenshotPath().toStdString() << std::endl;
    const QImage shot(screenshotPath());
    ASSERT_FALSE(shot.isNull());
    // Without a compositor the window is cut to the card's rounded shape: its corner shows the
    // editor beneath, not the black that stands for see-through.
    EXPECT_GT(qGray(shot.pixel(frame.topLeft())), 128);
    EXPECT_GT(qGray(shot.pixel(frame.bottomRight())), 128);
    EXPECT_GT(qGray(shot.pixel(frame.center())), 128);

    editor->clearKeys();
    desktop::xdotool({"key", "Tab"});
    EXPECT_TRUE(waitUntil([&] { return value() == kStart + kRewrite; })) << value().toStdString();
    EXPECT_TRUE(bubbleShown(false, 3000));
    EXPECT_FALSE(editor->keys().contains("Tab 0"));  // the engine's key, never the editor's

    // The rewrite went through the clipboard; 0.6 s after the paste it is the user's again.
    pause(1500);
    EXPECT_EQ(clipboard.save(), before);
    EXPECT_EQ(foreignContent(), foreignBefore);
    EXPECT_EQ(value(), kStart + kRewrite);
}

TEST_F(Rewrite, EscDismissesTheSuggestion) {
    glimmo->setScript(answer(QStringLiteral("The meeting is moved to Thursday afternoon.")));
    const QString expected = value() + "\n\n" + kDismissed;
    typeParagraph(kDismissed);
    ASSERT_TRUE(waitUntil([&] { return value() == expected; })) << value().toStdString();
    ASSERT_TRUE(bubbleShown(true));

    editor->clearKeys();
    desktop::xdotool({"key", "Escape"});
    EXPECT_TRUE(bubbleShown(false, 3000));
    EXPECT_FALSE(editor->keys().contains("Escape 0"));
    // Dismissed for good: the engine keeps polling the same paragraph and asks nothing more.
    pause(2000);
    EXPECT_FALSE(glimmo->bubble());
    EXPECT_EQ(value(), expected);
}

TEST_F(Rewrite, ShiftTabReachesTheApplication) {
    glimmo->setScript(answer(QStringLiteral("Please send me the numbers by Friday.")));
    typeParagraph(kKept);
    ASSERT_TRUE(waitUntil([&] { return value().endsWith(kKept); })) << value().toStdString();
    ASSERT_TRUE(bubbleShown(true));

    editor->clearKeys();
    desktop::xdotool({"key", "shift+Tab"});
    EXPECT_TRUE(waitUntil([&] { return editor->keys().contains("ISO_Left_Tab 1"); }))
        << editor->keys().join(", ").toStdString();
    pause(1000);
    EXPECT_FALSE(value().contains("Please send me the numbers by Friday."));
    EXPECT_TRUE(value().contains(kKept));
}

// The user's layouts, the last one switched on after typing as a user switches: the paste and
// select-all are pressed where the layout that is on has them (Ctrl+V on the US "v" key is
// Ctrl+K in Dvorak), or in a Latin group that has them.
TEST_F(Rewrite, TabAppliesOnEveryLayout) {
    linuxdesk::QtClipboard clipboard;
    const platform::ClipContents before = clipboard.save();
    for (const desktop::SwitchedLayout& layout : desktop::kSwitchedLayouts) {
        SCOPED_TRACE(layout.layouts);
        const QString typed = QStringLiteral("layouts %1 ar swiched aftr typing")
                                  .arg(QString::fromLatin1(layout.layouts));
        const QString rewrite = QStringLiteral("Layouts %1 are switched after typing.")
                                    .arg(QString::fromLatin1(layout.layouts));
        glimmo->setScript(answer(rewrite));
        typeParagraph(typed);
        ASSERT_TRUE(waitUntil([&] { return value().endsWith(typed); })) << value().toStdString();
        ASSERT_TRUE(bubbleShown(true));

        desktop::setLayout(QString::fromLatin1(layout.layouts), layout.group);
        desktop::xdotool({"key", "Tab"});
        EXPECT_TRUE(waitUntil([&] { return value().endsWith(rewrite); })) << value().toStdString();
        EXPECT_TRUE(bubbleShown(false, 3000));
        pause(1500);
        EXPECT_EQ(desktop::layoutGroup(), layout.group);
        EXPECT_EQ(clipboard.save(), before);
        desktop::setLayout(QStringLiteral("us"), 0);
    }
}

// The application holding the clipboard is stopped (a suspended job, a debugger's): nothing
// waits on it, the rewrite goes in all the same, and its clipboard is still there once it runs.
TEST_F(Rewrite, AStoppedClipboardOwnerKeepsItsClipboard) {
    // A new owner: earlier cases left Glimmo's copy of the clipboard on it.
    GtkEditor stopped({"--own-clipboard", "held by a stopped program", "--title", "Stopped"});
    ASSERT_TRUE(stopped.ready());
    desktop::xdotool({"windowactivate", "--sync", desktop::windowOf(editor->pid(), "Rewrite")});
    const std::string before = foreignContent();
    ASSERT_NE(before.find("held by a stopped program"), std::string::npos) << before;
    const QString typed = QStringLiteral("the owner is stoped while we tipe");
    const QString rewrite = QStringLiteral("The owner is stopped while we type.");
    glimmo->setScript(answer(rewrite));
    ::kill(pid_t(stopped.pid()), SIGSTOP);
    typeParagraph(typed);
    EXPECT_TRUE(waitUntil([&] { return value().endsWith(typed); })) << value().toStdString();
    EXPECT_TRUE(bubbleShown(true));
    desktop::xdotool({"key", "Tab"});
    EXPECT_TRUE(waitUntil([&] { return value().endsWith(rewrite); }, 3000))
        << value().toStdString();
    pause(1500);
    ::kill(pid_t(stopped.pid()), SIGCONT);
    EXPECT_TRUE(glimmo->log().contains("is stopped: pasting without the clipboard"))
        << glimmo->log().toStdString();
    EXPECT_EQ(foreignContent(), before);
}

TEST_F(Rewrite, NothingIsAskedInAPasswordEntry) {
    GtkEditor passwords({"--focus", "password", "--title", "Sign in"});
    ASSERT_TRUE(passwords.ready());
    const bool hadInput = glimmo->hasStandinFile("stdin");
    const QByteArray input = glimmo->standinFile("stdin");
    const QByteArray runs = glimmo->standinFile("runs");
    const qsizetype asked = glimmo->log().count(" chars -> ");

    type(kPassword);
    pause(2500);  // well past the pause after which a text box would be asked about
    EXPECT_EQ(glimmo->hasStandinFile("stdin"), hadInput);
    EXPECT_EQ(glimmo->standinFile("stdin"), input);
    EXPECT_EQ(glimmo->standinFile("runs"), runs);
    EXPECT_EQ(glimmo->log().count(" chars -> "), asked);
    EXPECT_FALSE(glimmo->bubble());
}

// The editor stops answering (SIGSTOP) with a suggestion on it and stays in front: Esc is
// handled at once (well within the timeout of one call into it), the switch to another window
// is noticed and the keys typed there arrive, and once the editor runs again a new paragraph
// gets its suggestion.
TEST_F(Rewrite, AStoppedApplicationHoldsNothingAndIsServedWhenItContinues) {
    glimmo->setScript(answer(QStringLiteral("The courier comes at nine.")));
    typeParagraph(QStringLiteral("the courier comes at nine"));
    ASSERT_TRUE(bubbleShown(true));
    Stopped stopped(editor->pid());
    pause(3000);  // polled while stopped and in front
    desktop::xdotool({"key", "Escape"});
    EXPECT_TRUE(bubbleShown(false, 500));

    owner->clearKeys();
    desktop::xdotool({"search", "--name", "Clipboard owner", "windowactivate"});
    desktop::xdotool({"key", "--delay", "100", "a", "Tab", "b"});
    EXPECT_TRUE(waitUntil(
        [&] {
            const QStringList keys = owner->keys();
            return keys.contains("Tab 0") && keys.contains("b 0");
        },
        3000))
        << owner->keys().join(", ").toStdString();
    EXPECT_EQ(glimmo->log().count(QStringLiteral(" stopped answering")), 1)
        << glimmo->log().toStdString();

    stopped.resume();
    desktop::xdotool({"search", "--name", "Rewrite editor", "windowactivate"});
    glimmo->setScript(answer(QStringLiteral("The van leaves at ten.")));
    typeParagraph(QStringLiteral("the van leaves at ten"));
    EXPECT_TRUE(bubbleShown(true)) << glimmo->log().toStdString();
    EXPECT_TRUE(glimmo->log().contains(QStringLiteral(" answers again")));
    desktop::xdotool({"key", "Escape"});
    EXPECT_TRUE(bubbleShown(false, 3000));
}

TEST_F(Rewrite, LogHoldsTheSuccessLineAndNoText) {
    const QString log = glimmo->log();
    EXPECT_TRUE(log.contains(" chars -> suggestion in ")) << log.toStdString();
    for (const QString& text : {kTyped, kDismissed, kKept, kPassword, kRewrite}) {
        // Whole texts and telling pieces of them.
        for (const QString& piece : {text, text.left(12), text.right(12)})
            EXPECT_FALSE(log.contains(piece, Qt::CaseInsensitive)) << piece.toStdString();
    }
}

}  // namespace
