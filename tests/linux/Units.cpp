// The backend's pure pieces: offset conversion, text runs.
#include <gtest/gtest.h>

#include "platform/linux/atspi/TextOffsets.h"
#include "platform/linux/atspi/TextRun.h"

using namespace linuxdesk;

TEST(TextOffsets, CodePointsAroundEmojiAndCjk) {
    // "a😀b你c": code points a0 😀1 b2 你3 c4; UTF-16 a0 😀1-2 b3 你4 c5.
    const QString text = QStringLiteral("a\U0001F600b\u4F60c");
    const qint64 points[] = {0, 1, 2, 3, 4, 5};
    const qint64 units[] = {0, 1, 3, 4, 5, 6};
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(toUtf16(text, points[i], OffsetUnit::CodePoint), units[i]) << i;
        EXPECT_EQ(fromUtf16(text, units[i], OffsetUnit::CodePoint), points[i]) << i;
    }
    // Between the halves of the emoji: the emoji counts as before.
    EXPECT_EQ(fromUtf16(text, 2, OffsetUnit::CodePoint), 2);
    // Out of range clamps.
    EXPECT_EQ(toUtf16(text, 99, OffsetUnit::CodePoint), text.size());
    EXPECT_EQ(toUtf16(text, -3, OffsetUnit::CodePoint), 0);
    EXPECT_EQ(fromUtf16(text, 99, OffsetUnit::CodePoint), 5);
}

TEST(TextOffsets, Utf16ToolkitsPassThroughAndClamp) {
    const QString text = QStringLiteral("\U0001F600\U0001F600x");
    EXPECT_EQ(toUtf16(text, 2, OffsetUnit::Utf16), 2);
    EXPECT_EQ(fromUtf16(text, 4, OffsetUnit::Utf16), 4);
    EXPECT_EQ(toUtf16(text, 9, OffsetUnit::Utf16), 5);
    EXPECT_EQ(offsetUnitFor("Qt"), OffsetUnit::Utf16);
    EXPECT_EQ(offsetUnitFor(""), OffsetUnit::CodePoint);  // unknown toolkits count code points
}

// Chromium's selection after "a😀\n\n": UTF-16 5 is character 4, which it reports as 3.
TEST(TextOffsets, ChromiumSelectionCountsOnceMoreAfterEachPair) {
    const QString text = QStringLiteral("a\U0001F600\n\nthe paragraph");
    EXPECT_EQ(toUtf16(text, 3, OffsetUnit::CodePointTwice), 5);
    EXPECT_EQ(fromUtf16(text, 5, OffsetUnit::CodePointTwice), 3);
    EXPECT_EQ(toUtf16(text, 1, OffsetUnit::CodePointTwice), 1);  // before the pair: as is
}

TEST(TextOffsets, LoneSurrogatesCountAsOneCharacter) {
    QString text = QStringLiteral("ab");
    text.insert(1, QChar(0xD83D));  // a high surrogate with nothing after it
    EXPECT_EQ(toUtf16(text, 2, OffsetUnit::CodePoint), 2);
    EXPECT_EQ(fromUtf16(text, 3, OffsetUnit::CodePoint), 3);
}

#include "platform/linux/identity/DesktopEntries.h"

TEST(DesktopEntry, LocalizedNameAndOnlyApplications) {
    const QByteArray text =
        "# comment\n[Desktop Entry]\nType=Application\nName=Text Editor\nName[de]=Texteditor\n"
        "Name[de_AT]=Texteditor (AT)\nIcon=org.gnome.gedit\nExec=gedit %U\n"
        "StartupWMClass=Gedit\n[Desktop Action new]\nName=New Window\nExec=gedit --new\n";
    auto e = parseDesktopEntry(text, "org.gnome.gedit", "de_DE");
    ASSERT_TRUE(e);
    EXPECT_EQ(e->name, "Texteditor");  // the action group's Name does not count
    EXPECT_EQ(e->exec, "gedit %U");
    EXPECT_EQ(e->startupWmClass, "Gedit");
    EXPECT_EQ(parseDesktopEntry(text, "x", "de_AT")->name, "Texteditor (AT)");
    EXPECT_EQ(parseDesktopEntry(text, "x", "fr_FR")->name, "Text Editor");
    EXPECT_FALSE(parseDesktopEntry("[Desktop Entry]\nType=Link\nName=Site\n", "x", ""));
    EXPECT_TRUE(
        parseDesktopEntry("[Desktop Entry]\nType=Application\nName=A\nNoDisplay=true\n", "x", "")
            ->hidden);
}

#include "platform/linux/atspi/WindowMapping.h"

// What an application reports for its window, fitted onto the X server's frames of it.
TEST(WindowMapping, ReportedWindowsFitOntoTheirTrueFrames) {
    using linuxdesk::fitFrame;
    const platform::Rect frame{319, 177, 642, 445}, client{320, 197, 640, 420};
    // True positions (GTK 3 reports the manager's frame): nothing moves.
    auto same = fitFrame({319, 177, 642, 445}, {frame, client});
    ASSERT_TRUE(same);
    EXPECT_TRUE(same->identity());
    // Window-relative positions (GTK 4): shifted to where the window is.
    auto relative = fitFrame({0, 0, 640, 420}, {frame, client});
    ASSERT_TRUE(relative);
    const platform::Rect caret = relative->apply({309, 61, 9, 17});
    EXPECT_EQ(caret.x, 629);
    EXPECT_EQ(caret.y, 258);
    // A scale of 2 in the application's own units, rounded there.
    auto scaled = fitFrame({160, 98, 320, 210}, {client});
    ASSERT_TRUE(scaled);
    EXPECT_EQ(scaled->scale, 2);
    EXPECT_EQ(scaled->apply({200, 150, 4, 8}).y, 300);
    // Nothing of that shape: no guess.
    EXPECT_FALSE(fitFrame({0, 0, 300, 500}, {frame, client}));
}

TEST(TextRun, TextAroundChildObjectsBecomesRunsInReadingOrder) {
    // Two child objects that could not be read still hold their places in the text.
    const auto list = TextRun::interleave(
        AtRef(), QStringLiteral("Hi \uFFFC, see\n\uFFFC \uFFFC the deck "), {AtRef(), AtRef()});
    QStringList runs;
    for (const auto& e : list) {
        auto* run = dynamic_cast<const TextRun*>(e.get());
        ASSERT_TRUE(run);
        EXPECT_EQ(run->index(), runs.size());
        runs << run->text();
    }
    EXPECT_EQ(runs, (QStringList{"Hi", ", see", "the deck"}));
}

#include "platform/linux/atspi/FlatText.h"

TEST(FlatText, NestedBlocksJoinAsLinesAndOffsetsMapBothWays) {
    // A reply paragraph, a cite line, a quote holding a section with a link in its sentence.
    const QChar p(0xFFFC);
    Block link{QStringLiteral("deck"), true, {}};
    Block section{QStringLiteral("The ") + p + QStringLiteral(" is late.\nAna\n"), false, {link}};
    Block quote{QString(p), false, {section}};
    Block reply{QStringLiteral("Sure"), false, {}};
    Block cite{QStringLiteral("Ana wrote:\n"), false, {}};
    const FlatText flat(Block{QString(p) + p + p, false, {reply, cite, quote}});
    // Blocks: 0 body, 1 reply, 2 cite, 3 quote, 4 section, 5 link.
    EXPECT_EQ(flat.text(), QStringLiteral("Sure\nAna wrote:\nThe deck is late.\nAna\n"));
    using Place = FlatText::Place;
    EXPECT_EQ(flat.toFlat({1, 4}), 4);
    EXPECT_EQ(flat.toFlat({4, 5}), 24);  // after the link, in the sentence
    EXPECT_EQ(flat.toFlat({5, 2}), 22);
    EXPECT_EQ(flat.childAt(3, 0), 4);
    // The break the join added belongs to neither block: a start there opens the next line.
    EXPECT_EQ(flat.fromFlat(4), (Place{1, 4}));
    EXPECT_EQ(flat.fromFlat(5), (Place{2, 0}));
    // Where the sentence meets the link, a start goes into the link and an end stays out.
    EXPECT_EQ(flat.fromFlat(20), (Place{5, 0}));
    EXPECT_EQ(flat.fromFlat(20, true), (Place{4, 4}));
    EXPECT_EQ(flat.fromFlat(24, true), (Place{5, 4}));
    for (qint64 i = 0; i <= flat.text().size(); ++i)
        EXPECT_EQ(flat.toFlat(flat.fromFlat(i)), i) << i;
    // A range from the sentence into the link, seen from the section, covers the link whole.
    EXPECT_EQ(flat.common(5, 4), 4);
    EXPECT_EQ(flat.lift({5, 2}, 4, true), (Place{4, 5}));
    EXPECT_EQ(flat.lift({5, 2}, 0, false), (Place{0, 2}));
    EXPECT_EQ(flat.common(1, 5), 0);
}

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/linux/identity/ProcessNames.h"
#include "platform/linux/wayland/TypedTab.h"

TEST(ProcessNames, LauncherEntryScopeAndExecutableFromAProcFolder) {
    QTemporaryDir proc;
    const QString dir = proc.path() + "/321";
    QDir().mkpath(dir);
    QFile environ(dir + "/environ");
    ASSERT_TRUE(environ.open(QIODevice::WriteOnly));
    for (const char* entry : {"HOME=/home/u",
                              "GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/"
                              "org.gnome.TextEditor.desktop",
                              "LANG=C"})
        environ.write(QByteArray(entry) + '\0');
    environ.close();
    QFile cgroup(dir + "/cgroup");
    ASSERT_TRUE(cgroup.open(QIODevice::WriteOnly));
    cgroup.write(
        "0::/user.slice/user-1000.slice/user@1000.service/app.slice/"
        "app-gnome-org.gnome.TextEditor-4242.scope\n");
    cgroup.close();
    ASSERT_TRUE(QFile::link("/usr/bin/gnome-text-editor", dir + "/exe"));

    const auto names = processNames(321, proc.path());
    EXPECT_EQ(names.desktopId, "org.gnome.TextEditor");
    EXPECT_EQ(names.scopeId, "org.gnome.TextEditor");
    EXPECT_EQ(names.exe, "gnome-text-editor");
    EXPECT_EQ(processNames(999, proc.path()).exe, "");  // a process that is gone
}

TEST(ProcessNames, ScopeNamesWithAndWithoutLauncher) {
    EXPECT_EQ(scopeAppId("0::/app.slice/app-org.gnome.Terminal-12.scope"), "org.gnome.Terminal");
    EXPECT_EQ(scopeAppId("0::/app.slice/app-gnome-firefox\\x2desr-77.scope"), "firefox-esr");
    EXPECT_EQ(scopeAppId("0::/app.slice/app-flatpak-org.gnome.Maps-9.scope"), "org.gnome.Maps");
    EXPECT_EQ(scopeAppId("0::/app.slice/app-kde-org.kde.kate@a1b2.service"), "org.kde.kate");
    // A terminal's shell runs in a scope of its own, which names no application.
    EXPECT_EQ(scopeAppId("0::/app.slice/app-org.gnome.Terminal.slice/vte-spawn-1.scope"), "");
    EXPECT_EQ(scopeAppId("0::/user.slice/session-2.scope"), "");
}

TEST(TypedTab, OnlyOneTabAtTheCaretCounts) {
    const QString before = "One.\nTwo words";
    EXPECT_TRUE(tabTypedAt(before, 14, "One.\nTwo words\t"));
    EXPECT_TRUE(tabTypedAt(before, 4, "One.\t\nTwo words"));
    EXPECT_FALSE(tabTypedAt(before, 14, "One.\nTwo words "));     // another key
    EXPECT_FALSE(tabTypedAt(before, 4, "One.\nTwo words\t"));     // not at the caret
    EXPECT_FALSE(tabTypedAt(before, 14, "One.\nTwo words\t\t"));  // more than one key
    EXPECT_FALSE(tabTypedAt(before, 14, "One.\nTwo Words\t"));    // the text changed as well
}

#include "TempHome.h"
#include "platform/linux/identity/ReadableLaunchers.h"

TEST(ReadableLaunchers, TheFlagGoesAfterTheProgramOrTheFlatpakId) {
    using linuxdesk::readableExec;
    EXPECT_EQ(readableExec("/usr/bin/chromium %U"),
              "env ACCESSIBILITY_ENABLED=1 /usr/bin/chromium "
              "--force-renderer-accessibility=basic %U");
    EXPECT_EQ(
        readableExec("/usr/bin/flatpak run --branch=stable --arch=x86_64 "
                     "--command=signal-desktop --file-forwarding org.signal.Signal @@u %U @@"),
        "env ACCESSIBILITY_ENABLED=1 /usr/bin/flatpak run --branch=stable --arch=x86_64 "
        "--command=signal-desktop --file-forwarding org.signal.Signal "
        "--force-renderer-accessibility=basic @@u %U @@");
    EXPECT_EQ(readableExec("env BAMF_DESKTOP_FILE_HINT=/x/chromium_chromium.desktop "
                           "/snap/bin/chromium %U"),
              "env ACCESSIBILITY_ENABLED=1 BAMF_DESKTOP_FILE_HINT=/x/chromium_chromium.desktop "
              "/snap/bin/chromium --force-renderer-accessibility=basic %U");
    EXPECT_EQ(readableExec("\"/opt/My Notes/notes\" --no-sandbox %U"),
              "env ACCESSIBILITY_ENABLED=1 \"/opt/My Notes/notes\" "
              "--force-renderer-accessibility=basic --no-sandbox %U");
    EXPECT_EQ(readableExec("/usr/bin/chromium --force-renderer-accessibility %U"), std::nullopt);
    EXPECT_EQ(readableExec("flatpak install x"), std::nullopt);
}

// Installed entries in a system folder and a Flatpak export; the user's folder receives
// Glimmo's copies, keeps the user's own entries, and follows switches, updates and removals.
TEST(ReadableLaunchers, CopiesFollowTheSwitchesAndTheInstalledEntries) {
    testsupport::TempHome home;
    const QString system = home.path() + "/system";
    testsupport::ScopedEnv env({{"XDG_DATA_DIRS", system.toLocal8Bit()}});
    const QByteArray chromium =
        "[Desktop Entry]\nType=Application\nName=Chromium\nExec=/usr/bin/chromium %U\n"
        "DBusActivatable=true\nActions=new-window;\n\n[Desktop Action new-window]\n"
        "Name=New Window\nExec=/usr/bin/chromium --new-window\n";
    home.write("system/applications/chromium.desktop", chromium);
    home.write(".local/share/flatpak/exports/share/applications/com.slack.Slack.desktop",
               "[Desktop Entry]\nType=Application\nName=Slack\n"
               "Exec=/usr/bin/flatpak run --branch=stable com.slack.Slack %U\n");
    home.write("system/applications/discord.desktop",
               "[Desktop Entry]\nType=Application\nName=Discord\nExec=/usr/bin/discord\n");
    home.write("system/applications/org.gnome.gedit.desktop",
               "[Desktop Entry]\nType=Application\nName=Text Editor\nExec=gedit %U\n");
    const QByteArray usersOwn =
        "[Desktop Entry]\nType=Application\nName=Discord\nExec=/usr/bin/discord --mine\n";
    home.write(".local/share/applications/discord.desktop", usersOwn);

    linuxdesk::ReadableLaunchers launchers;
    bool slackOn = false;
    auto prepare = [&] {
        return launchers.prepare([&](const QString& app) {
            return slackOn || app != QLatin1String("com.tinyspeck.slackmacgap");
        });
    };
    EXPECT_EQ(prepare(), std::vector<QString>{"Chromium"});
    const QString copy = ".local/share/applications/chromium.desktop";
    EXPECT_EQ(home.read(copy),
              "[Desktop Entry]\nX-Glimmo-Prepared=" + system.toUtf8() +
                  "/applications/chromium.desktop\nType=Application\nName=Chromium\n"
                  "Exec=env ACCESSIBILITY_ENABLED=1 /usr/bin/chromium "
                  "--force-renderer-accessibility=basic %U\nActions=new-window;\n\n"
                  "[Desktop Action new-window]\nName=New Window\nExec=env "
                  "ACCESSIBILITY_ENABLED=1 /usr/bin/chromium "
                  "--force-renderer-accessibility=basic --new-window\n");
    EXPECT_EQ(home.read(".local/share/applications/discord.desktop"), usersOwn);
    EXPECT_FALSE(QFile::exists(home.path() + "/.local/share/applications/com.slack.Slack.desktop"));

    slackOn = true;
    EXPECT_EQ(prepare(), (std::vector<QString>{"Chromium", "Slack"}));
    EXPECT_TRUE(home.read(".local/share/applications/com.slack.Slack.desktop")
                    .contains("com.slack.Slack --force-renderer-accessibility=basic %U"));

    // An update of the installed entry reaches the copy; an uninstalled one takes it along.
    home.write("system/applications/chromium.desktop",
               QByteArray(chromium).replace("%U", "--enable-features=X %U"));
    prepare();
    EXPECT_TRUE(home.read(copy).contains("basic --enable-features=X %U"));
    QFile::remove(system + "/applications/chromium.desktop");
    EXPECT_EQ(prepare(), std::vector<QString>{"Slack"});
    EXPECT_FALSE(QFile::exists(home.path() + "/" + copy));
    slackOn = false;
    EXPECT_TRUE(prepare().empty());
    EXPECT_EQ(QDir(home.path() + "/.local/share/applications").entryList(QDir::Files),
              QStringList{"discord.desktop"});
}

#include "platform/linux/identity/ShellCompanion.h"

TEST(ShellCompanion, VariantByShellVersionAndTheUuidAddedOnce) {
    using linuxdesk::ShellCompanion;
    QTemporaryDir root;
    const QString installed = root.filePath("usr/share/glimmo/companion");
    for (const char* variant : {"gnome-shell-43", "gnome-shell-45"}) {
        const QString dir = installed + '/' + variant + "/glimmo@glimmo.io";
        QDir().mkpath(dir);
        QFile metadata(dir + "/metadata.json");
        ASSERT_TRUE(metadata.open(QIODevice::WriteOnly));
    }
    const QString bin = root.filePath("usr/bin");
    EXPECT_EQ(ShellCompanion::sourceFor("43.9", bin),
              installed + "/gnome-shell-43/glimmo@glimmo.io");
    EXPECT_EQ(ShellCompanion::sourceFor("46.0", bin),
              installed + "/gnome-shell-45/glimmo@glimmo.io");
    EXPECT_EQ(ShellCompanion::sourceFor("42.5", bin), std::nullopt);
    EXPECT_EQ(ShellCompanion::sourceFor("46.0", root.filePath("elsewhere")), std::nullopt);

    EXPECT_EQ(ShellCompanion::withUuid("@as []"), "['glimmo@glimmo.io']");
    EXPECT_EQ(ShellCompanion::withUuid("['ubuntu-dock@ubuntu.com']"),
              "['ubuntu-dock@ubuntu.com', 'glimmo@glimmo.io']");
    EXPECT_EQ(ShellCompanion::withUuid("['glimmo@glimmo.io', 'x@y']"), std::nullopt);
}
