// The rewrite cycle in a GNOME-style Wayland session: the built program (its windows through
// Xwayland) against GTK 3 and GTK 4 editors running natively, keys typed through the
// compositor's remote-desktop keyboard. An X11 application owns the clipboard throughout;
// native windows are edited without it, so it must come out as it went in. One program serves
// every case; each case brings its own editor, so Glimmo also follows the focus from one
// native application to the next. On the GNOME desktop (gnome-desktop.sh) Glimmo's companion
// runs in the shell: the bubble then stands under the caret, found in the screen's pixels, and
// the keys are taken before any window sees them, GTK 4's Esc included. A native chat window's
// drafts are chosen with the arrows. On the KWin desktop (kwin-desktop.sh) Glimmo loads its
// script into KWin and takes the keys as KDE global shortcuts, and the bubble is found in KWin's
// screenshot where KWin takes one; KWrite runs there natively too,
// and afterwards nothing of Glimmo's may be left in the user's shortcut settings, even after
// Glimmo was killed with the keys taken.
#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>
#include <QScreen>
#include <QTemporaryDir>
#include <csignal>
#include <iostream>

#include "GlimmoRun.h"
#include "GtkEditor.h"
#include "KWinWindow.h"
#include "ScreenCaret.h"
#include "WaylandKeys.h"

using testsupport::waitUntil;

namespace {

const QString kStart = QStringLiteral("The first paragraph stays as it is.\n\n");
const QString kTyped = QStringLiteral("we need teh deck befor tomorow");
const QString kRewrite = QStringLiteral("We need the deck before tomorrow.");
const QString kDismissed = QStringLiteral("the meeting is moved to thursday afernoon");

// The X display (Glimmo's windows are X11 ones), in its pixels, and its scale (Xft.dpi).
QRect xScreen() {
    return QRect(QPoint(0, 0), desktop::xDisplaySize());
}
double xRatio() {
    // Read now: KWin sets Xft.dpi once Xwayland runs, which may be after this program started.
    const QString resources = desktop::output("xprop", {"-root", "RESOURCE_MANAGER"});
    const auto dpi = QRegularExpression(QStringLiteral(R"(Xft\.dpi:(?:\\t|\s)*([0-9.]+))"))
                         .match(resources);
    return dpi.hasMatch() ? dpi.captured(1).toDouble() / 96 : 1;
}
// KWin's logical pixels in the X display's.
QRect inX(const QRect& logical, const desktop::KWinWindow& window) {
    const double f =
        window.desktop.width() > 0 ? xScreen().width() / double(window.desktop.width()) : 1;
    return QRect(QPoint(int(logical.x() * f), int(logical.y() * f)), logical.size() * f);
}

bool onGnome() {
    return qEnvironmentVariableIsSet("GLIMMO_GNOME_SCREENSHOT");
}
bool onKWin() {
    return qEnvironmentVariableIsSet("GLIMMO_KWIN_LOG");
}
bool withCompanion() {
    return onGnome() || onKWin();
}

// The lines of the user's KDE shortcut settings that name Glimmo.
std::string kdeShortcutsOfGlimmo() {
    QFile file(qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/kglobalshortcutsrc"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    lines.removeIf([](const QString& l) { return !l.contains(u"glimmo", Qt::CaseInsensitive); });
    return lines.join(u'\n').toStdString();
}

// Whether KWin takes screenshots (it needs OpenGL: 5.27 here, 6 only with a render node).
bool kwinShows() {
    static const bool shows = onKWin() && !desktop::kwinScreenshot().isNull();
    return shows;
}

// Keeps the compositor's screenshot in the build folder for a person to look at.
void keepShot(const char* name) {
    const QString path = QStringLiteral(GLIMMO_SHOT_DIR "/") + QLatin1String(name);
    const QImage shot = onGnome()    ? desktop::shellScreenshot()
                        : kwinShows() ? desktop::kwinScreenshot()
                                      : QImage();
    if (shot.save(path)) std::cout << "screenshot: " << path.toStdString() << std::endl;
}

// What an X11 application finds on the clipboard (targets, text, image size).
QString x11Clipboard() {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("GDK_BACKEND"), QStringLiteral("x11"));
    p.setProcessEnvironment(env);
    p.start(qEnvironmentVariable("GLIMMO_GTK_EDITOR"), {"--print-clipboard"});
    p.waitForFinished(15000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

class NativeRewrite : public WithGlimmo {
protected:
    static void SetUpTestSuite() {
        // GTK takes its backend from the environment when the owner starts.
        qputenv("GDK_BACKEND", "x11");
        owner = new GtkEditor({"--own-clipboard", "kept on the clipboard", "--title", "Owner"});
        qputenv("GDK_BACKEND", "wayland");
        glimmo = new GlimmoRun(answer(kRewrite));
        ax = new linuxdesk::AtspiAx;
    }

    static void TearDownTestSuite() {
        delete ax;
        delete glimmo;
        delete owner;
        // KDE writes its settings half a second after a change.
        if (onKWin()) {
            pause(1000);
            EXPECT_EQ(kdeShortcutsOfGlimmo(), "");
        }
    }

    void SetUp() override {
        ASSERT_TRUE(owner->ready()) << "the clipboard owner did not come up";
        ASSERT_TRUE(glimmo->started()) << glimmo->output().toStdString();
        clipboard = x11Clipboard();
        ASSERT_TRUE(clipboard.contains("text kept on the clipboard")) << clipboard.toStdString();
    }

    // Starts a native editor holding kStart, its caret in the empty last paragraph.
    void open(const QString& program) {
        editor = std::make_unique<GtkEditor>(QStringList{"--text", kStart}, program);
        ASSERT_TRUE(editor->ready()) << program.toStdString();
        field = desktop::focusedElement(*ax, editor->pid());
        ASSERT_TRUE(field) << "the editor's text view has no accessible focus";
        ASSERT_TRUE(desktop::waylandKeys("ctrl+End"));
    }

    // Types a paragraph and waits for its suggestion, which sits wholly on the screen.
    void typeUntilSuggested(const QString& expected, const QString& typed) {
        ASSERT_TRUE(desktop::waylandType(typed));
        ASSERT_TRUE(waitUntil([&] { return value() == expected; })) << value().toStdString();
        ASSERT_TRUE(bubbleShown(true)) << "no bubble appeared";
        const QRect frame = *glimmo->bubble();
        EXPECT_TRUE(xScreen().contains(frame))
            << frame.x() << "," << frame.y() << " " << frame.width() << "x" << frame.height();
        if (onGnome()) bubbleUnderCaret(frame);
        if (onKWin()) {
            // KWin grants fake input through Glimmo's launcher entry.
            EXPECT_FALSE(glimmo->log().contains(QStringLiteral("(fake input)")));
            if (kwinShows()) {
                const auto off = desktop::bubbleOffCaret(frame, desktop::kwinScreenshot, xRatio());
                EXPECT_FALSE(off) << off->toStdString();
            } else {
                bubbleUnderKWinCaret(frame);
            }
            // KDE writes its settings half a second after a change; a component with shortcuts
            // keeps its name there, but no session shortcut is ever written.
            pause(700);
            EXPECT_EQ(kdeShortcutsOfGlimmo().find("_k_session"), std::string::npos)
                << kdeShortcutsOfGlimmo();
        }
        keepShot(onKWin() ? "e2e-kwin-suggestion.png" : "e2e-gnome-suggestion.png");
    }

    static void bubbleUnderCaret(const QRect& frame) {
        const auto off = desktop::bubbleOffCaret(frame);
        EXPECT_FALSE(off) << off->toStdString();
    }

    // Without KWin's screenshots (KWin 6 without a render node) the caret is where KWin's window
    // rectangle and the toolkit's box of the last character put it (GTK 3 counts from its
    // surface, shadows included, GTK 4 from inside KWin's title bar, Qt from its surface, which
    // KWin frames).
    void bubbleUnderKWinCaret(const QRect& frame) {
        const auto window = desktop::kwinActiveWindow();
        ASSERT_TRUE(window) << "KWin names no active window";
        const int last = int(value().size()) - 1;
        const auto box = ax->windowBounds(field, platform::Range{last, 1});
        ASSERT_TRUE(box) << "no box for the last character";
        const QRect origin = ax->gtkVersion(field) == 4 ? window->client : window->buffer;
        // The bubble's window begins with its shadow, a few points above what is drawn. KWin
        // and the toolkit count in logical pixels, the bubble in the X display's.
        const QRect caret = inX(QRect(origin.x() + int(box->x + box->width),
                                      origin.y() + int(box->y), 1, int(box->height)),
                                *window);
        const double pt = xRatio();
        const int left = caret.x() - (frame.left() + int(12 * pt));
        EXPECT_TRUE(frame.top() >= caret.top() && frame.top() <= caret.bottom() + 16 * pt &&
                    left >= -4 * pt && left <= 32 * pt)
            << "bubble at " << frame.left() << "," << frame.top() << ", caret at " << caret.x()
            << "," << caret.top() << ".." << caret.bottom();
    }

    // Esc takes the bubble away and leaves the text as typed.
    void escDismisses(const QString& typed, const QString& rewrite) {
        glimmo->setScript(answer(rewrite));
        const QString expected = value() + "\n\n" + typed;
        ASSERT_TRUE(desktop::waylandKeys("Return Return"));
        typeUntilSuggested(expected, typed);
        if (editor) editor->clearKeys();
        ASSERT_TRUE(desktop::waylandKeys("Escape"));
        EXPECT_TRUE(bubbleShown(false, 3000));
        if (editor) {
            EXPECT_FALSE(editor->keys().contains("Escape 0"));
        }
        pause(2000);
        EXPECT_FALSE(glimmo->bubble());
        EXPECT_EQ(value(), expected);
        glimmo->setScript(answer(kRewrite));
    }

    // Tab replaces the typed paragraph with the suggestion; the clipboard stays as it was.
    // (A paragraph Glimmo rewrote in one window is not suggested for again in the next.)
    void tabApplies(const QString& typed = kTyped, const QString& rewrite = kRewrite) {
        glimmo->setScript(answer(rewrite));
        typeUntilSuggested(kStart + typed, typed);
        ASSERT_TRUE(desktop::waylandKeys("Tab"));
        EXPECT_TRUE(waitUntil([&] { return value() == kStart + rewrite; }))
            << value().toStdString();
        EXPECT_TRUE(bubbleShown(false, 3000));
        pause(1000);  // anything that borrowed the clipboard would have put it back by now
        EXPECT_EQ(x11Clipboard(), clipboard);
        EXPECT_EQ(value(), kStart + rewrite);
        glimmo->setScript(answer(kRewrite));
    }

    static inline GtkEditor* owner = nullptr;
    std::unique_ptr<GtkEditor> editor;
    QString clipboard;
};

TEST_F(NativeRewrite, Gtk3TabAppliesAndEscDismisses) {
    open(qEnvironmentVariable("GLIMMO_GTK_EDITOR"));
    editor->clearKeys();
    tabApplies();
    EXPECT_FALSE(editor->keys().contains("Tab 0"));  // consumed before the window saw it

    escDismisses(kDismissed, QStringLiteral("The meeting is moved to Thursday afternoon."));
}

TEST_F(NativeRewrite, Gtk4TabApplies) {
    // GTK 4 lets the Tab into the text; it is taken out again with the paragraph replaced.
    open(qEnvironmentVariable("GLIMMO_GTK4_EDITOR"));
    editor->clearKeys();
    tabApplies();
    if (withCompanion()) {
        EXPECT_FALSE(editor->keys().contains("Tab 0"));
    }
    // GTK 4 hands no keys to the accessibility bus: Esc is the companion's alone. (A paragraph
    // of its own: one dismissed before is not suggested for again.)
    if (withCompanion())
        escDismisses(QStringLiteral("the lunch is moved to friday noon"),
                     QStringLiteral("Lunch is moved to Friday at noon."));
}

// KWrite (Qt 6, KDE Frameworks 6) as Plasma runs it: natively, on KWin.
TEST_F(NativeRewrite, KWriteTabAppliesAndEscDismisses) {
    if (!onKWin()) GTEST_SKIP() << "KWrite runs natively on the KWin desktop";
    // KWrite 5 offers no editable text to the accessibility bus: on Plasma 5.27 a Qt 6 text
    // box stands in for it (Qt 6 applications run there too).
    const bool kwrite5 = qEnvironmentVariable("GLIMMO_KWIN_VERSION").section(u'.', 0, 0).toInt() < 6;
    QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("notes.txt")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(kStart.toUtf8());
    file.close();
    QProcess kwrite;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("wayland"));
    kwrite.setProcessEnvironment(env);
    if (kwrite5)
        kwrite.start(qEnvironmentVariable("GLIMMO_QT_EDITOR"), {kStart});
    else
        kwrite.start(QStringLiteral("kwrite"), {file.fileName()});
    ASSERT_TRUE(kwrite.waitForStarted()) << "kwrite is not installed";
    ASSERT_TRUE(waitUntil(
        [&] { return bool(field = ax->focusedIn(kwrite.processId())); }, 20000))
        << "KWrite's text has no accessible focus";
    ASSERT_TRUE(desktop::waylandKeys("ctrl+End"));
    tabApplies(QStringLiteral("please send me teh report befor friday"),
               QStringLiteral("Please send me the report before Friday."));
    EXPECT_FALSE(value().contains(u'\t')) << "the window saw the Tab";
    escDismisses(QStringLiteral("the call is moved to monday mornig"),
                 QStringLiteral("The call is moved to Monday morning."));
    if (HasFailure()) std::cerr << "--- log.txt\n" << glimmo->log().toStdString();
    field = nullptr;  // KWrite goes
    kwrite.kill();
    kwrite.waitForFinished();
}

// Glimmo killed while it holds the keys: KWin's script sees it gone and gives the keys back to
// the windows, and the user's shortcut settings hold nothing of Glimmo's. Glimmo then starts
// again for the next case.
TEST_F(NativeRewrite, KilledWhileHoldingTheKeysLeavesThemBehind) {
    if (!onKWin()) GTEST_SKIP() << "KDE's global shortcuts are KWin's";
    open(qEnvironmentVariable("GLIMMO_GTK_EDITOR"));
    const QString typed = QStringLiteral("the review is moved to next wek");
    glimmo->setScript(answer(QStringLiteral("The review is moved to next week.")));
    typeUntilSuggested(kStart + typed, typed);
    ASSERT_EQ(::kill(pid_t(glimmo->pid()), SIGKILL), 0);
    pause(2500);  // the script looks for Glimmo every second
    editor->clearKeys();
    ASSERT_TRUE(desktop::waylandKeys("Tab"));
    EXPECT_TRUE(waitUntil([&] { return editor->keys().contains("Tab 0"); }, 3000));
    pause(700);
    EXPECT_EQ(kdeShortcutsOfGlimmo(), "");
    delete glimmo;
    glimmo = new GlimmoRun(answer(kRewrite));
}

// A chat's empty message box gets three drafts: Down chooses the second, Tab puts it in, and
// the window sees neither key.
TEST_F(NativeRewrite, Gtk3ChatArrowsChooseAReply) {
    const QStringList drafts{QStringLiteral("Yes, I can present it on Monday."),
                             QStringLiteral("I can do it, send me the slides."),
                             QStringLiteral("Not this week, sorry.")};
    QByteArrayList quoted;
    for (const QString& d : drafts) quoted << '"' + d.toUtf8() + '"';
    glimmo->setScript("result [" + quoted.join(", ") + "]\n");
    // Started as the desktop starts Slack from its launcher: a native window names no
    // application, its launcher does.
    qputenv("GIO_LAUNCHED_DESKTOP_FILE", "/usr/share/applications/slack.desktop");
    editor = std::make_unique<GtkEditor>(QStringList{}, qEnvironmentVariable("GLIMMO_GTK_SLACK"));
    qunsetenv("GIO_LAUNCHED_DESKTOP_FILE");
    ASSERT_TRUE(editor->ready());
    field = desktop::focusedElement(*ax, editor->pid());
    ASSERT_TRUE(field) << "the message box has no accessible focus";
    ASSERT_TRUE(bubbleShown(true)) << "no drafts appeared\n" << glimmo->log().toStdString();
    pause(500);  // the list is complete
    keepShot(onKWin() ? "e2e-kwin-drafts.png" : "e2e-gnome-drafts.png");
    if (onKWin()) {
        // The list stands at the message box, inside the window, not where the box would be
        // were the window at the screen's corner.
        const auto window = desktop::kwinActiveWindow();
        ASSERT_TRUE(window);
        const QRect list = *glimmo->bubble();
        // The box starts near the window's edge, and the list a few points left of it.
        const QRect frame = inX(window->frame, *window).adjusted(-int(24 * xRatio()), 0, 0, 0);
        const int drawnLeft = list.left() + int(16 * xRatio());  // past the shadow
        EXPECT_TRUE(frame.contains(drawnLeft, list.bottom()) || frame.contains(drawnLeft, list.top()))
            << "list at " << list.x() << "," << list.y() << ", window at " << frame.x() << ","
            << frame.y();
    }
    editor->clearKeys();
    ASSERT_TRUE(desktop::waylandKeys("Down"));
    pause(300);
    ASSERT_TRUE(desktop::waylandKeys("Tab"));
    EXPECT_TRUE(waitUntil([&] { return value() == drafts[1]; })) << value().toStdString();
    const QStringList keys = editor->keys();
    EXPECT_FALSE(keys.contains("Down 0") || keys.contains("Tab 0")) << keys.join(',').toStdString();
    glimmo->setScript(answer(kRewrite));
}

}  // namespace
