// Saving, marking and restoring the clipboard of another application (the GTK editor owns a
// text and an image item; a second GTK process reads what others would see).
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "DesktopHelpers.h"
#include "GtkEditor.h"
#include "TempHome.h"
#include "platform/linux/session/QtClipboard.h"

using testsupport::waitUntil;

namespace {

QByteArray typeData(const platform::ClipContents& c, const QString& type) {
    for (const auto& item : c)
        for (const auto& [t, data] : item.types)
            if (t == type) return data;
    return {};
}

// Whether the clipboard holds text (as its owner put it there), waited for.
bool holds(const QString& text) {
    return waitUntil([&] { return QGuiApplication::clipboard()->text() == text; });
}

}  // namespace

TEST(Clipboard, ForeignTextAndImageSurviveATransientWrite) {
    GtkEditor owner({"--own-clipboard", "kept text \U0001F600", "--title", "Owner"});
    ASSERT_TRUE(owner.ready() && holds(QStringLiteral("kept text \U0001F600")));
    linuxdesk::QtClipboard clipboard;

    const platform::ClipContents saved = clipboard.save();
    ASSERT_EQ(saved.size(), 1u);
    EXPECT_EQ(QString::fromUtf8(typeData(saved, "text/plain;charset=utf-8")),
              QStringLiteral("kept text \U0001F600"));
    EXPECT_TRUE(typeData(saved, "image/png").startsWith("\x89PNG"));

    clipboard.writeTransientText("the rewrite");
    QString seen = desktop::foreignClipboard();
    EXPECT_TRUE(seen.contains("text the rewrite\n")) << seen.toStdString();
    EXPECT_TRUE(seen.contains(" x-kde-passwordManagerHint")) << seen.toStdString();
    EXPECT_TRUE(seen.contains(" org.nspasteboard.TransientType")) << seen.toStdString();
    EXPECT_FALSE(seen.contains("image "));

    clipboard.restore(saved);
    seen = desktop::foreignClipboard();
    EXPECT_TRUE(seen.contains(QStringLiteral("text kept text \U0001F600\n"))) << seen.toStdString();
    EXPECT_TRUE(seen.contains("image 24x16")) << seen.toStdString();
    EXPECT_FALSE(seen.contains("x-kde-passwordManagerHint"));
    EXPECT_EQ(clipboard.save(), saved);

    // Nothing saved leaves the clipboard empty.
    clipboard.restore({});
    seen = desktop::foreignClipboard();
    EXPECT_TRUE(seen.contains("text \n")) << seen.toStdString();
    EXPECT_FALSE(seen.contains("image "));
    EXPECT_TRUE(clipboard.save().empty());
}

// The application may ask for the paste after the restore was due: it still gets the rewrite,
// and the user's clipboard comes back once it has.
TEST(Clipboard, RestoreWaitsForThePasteToBeFetched) {
    GtkEditor owner({"--own-clipboard", "kept text", "--title", "Owner"});
    ASSERT_TRUE(owner.ready() && holds("kept text"));
    linuxdesk::QtClipboard clipboard;
    const platform::ClipContents saved = clipboard.save();

    clipboard.writeTransientText("the rewrite");
    clipboard.restore(saved);
    EXPECT_EQ(clipboard.save(), saved);
    EXPECT_TRUE(desktop::foreignClipboard().contains("text the rewrite\n"));
    EXPECT_TRUE(holds("kept text"));
    EXPECT_TRUE(desktop::foreignClipboard().contains("text kept text\n"));
}

TEST(Clipboard, PlainWriteIsNotMarkedTransient) {
    linuxdesk::QtClipboard clipboard;
    clipboard.writeText("for the user");
    const QString seen = desktop::foreignClipboard();
    EXPECT_TRUE(seen.contains("text for the user\n")) << seen.toStdString();
    EXPECT_FALSE(seen.contains("TransientType"));
}
