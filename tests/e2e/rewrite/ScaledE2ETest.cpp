// The bubble under the caret on a doubled display. The GTK test editor draws at GDK_SCALE=2 and
// reports text positions in half the screen's pixels; Glimmo runs at its own size or, like the
// editor, at twice it. Either conversion missing puts the bubble far from the caret, while
// both missing would cancel out in the second case: hence the two.
#include <gtest/gtest.h>

#include <QProcess>
#include <cstdlib>
#include <iostream>

#include "DesktopHelpers.h"
#include "GlimmoRun.h"
#include "GtkEditor.h"
#include "TempHome.h"

using testsupport::waitUntil;

namespace {

struct Scaled : ::testing::TestWithParam<int> {
    void TearDown() override {
        if (HasFailure() && glimmo) std::cerr << "--- log.txt\n" << glimmo->log().toStdString();
        qunsetenv("QT_SCALE_FACTOR");
    }
    std::optional<GlimmoRun> glimmo;
};

}  // namespace

TEST_P(Scaled, BubbleSitsJustUnderTheCaret) {
    const int glimmoScale = GetParam();
    qputenv("GDK_SCALE", "2");
    GtkEditor editor({"--text", "A first paragraph.\n\n", "--title", "Scaled editor"});
    ASSERT_TRUE(editor.ready());
    if (glimmoScale != 1) qputenv("QT_SCALE_FACTOR", QByteArray::number(glimmoScale));
    glimmo.emplace("answer We need the deck before tomorrow.\n");
    ASSERT_TRUE(glimmo->started()) << glimmo->output().toStdString();

    desktop::xdotool({"key", "ctrl+End"});
    desktop::xdotool({"type", "--delay", "25", "--", "we need teh deck befor tomorow"});
    ASSERT_TRUE(waitUntil([&] { return glimmo->bubble().has_value(); }, 15000))
        << "no bubble appeared";
    const QRect frame = *glimmo->bubble();
    // The bubble is placed from the character just before the caret.
    const auto caret = editor.caret();
    ASSERT_TRUE(caret);

    const QString shot =
        QStringLiteral(GLIMMO_SHOT_DIR "/e2e-scaled-bubble-%1x.png").arg(glimmoScale);
    QProcess::execute("import", {"-window", "root", shot});
    std::cout << "screenshot: " << shot.toStdString() << std::endl;

    // 6 of Glimmo's points below the line and 12 left of that character, in the server's
    // pixels, give or take the rounding of each conversion.
    const int below = frame.top() - (caret->y() + caret->height());
    const int left = caret->x() - frame.left();
    EXPECT_LE(std::abs(below - 6 * glimmoScale), 2)
        << "bubble top " << frame.top() << ", caret line ends " << caret->y() + caret->height();
    EXPECT_LE(std::abs(left - 12 * glimmoScale), 2)
        << "bubble left " << frame.left() << ", caret " << caret->x();
}

INSTANTIATE_TEST_SUITE_P(Glimmo, Scaled, ::testing::Values(1, 2));
