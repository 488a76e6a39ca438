// Glimmo on a GNOME desktop without a tray: its icon stands in the top bar, through the
// companion, and its menu there holds the tray's rows and acts on them. The shell's own
// accessibility tree says what the top bar and the open menu show.
#include <atspi/atspi.h>
#include <gtest/gtest.h>

#include "GlimmoRun.h"
#include "WaylandKeys.h"

using testsupport::waitUntil;

namespace {

struct Shown {
    QString name;
    QRect frame;
};

// Every named element of the shell that is on screen, in the tree's order.
void collect(AtspiAccessible* element, int depth, std::vector<Shown>& out) {
    if (!element || depth > 30) return;
    gchar* name = atspi_accessible_get_name(element, nullptr);
    AtspiStateSet* states = atspi_accessible_get_state_set(element);
    const bool showing = states && atspi_state_set_contains(states, ATSPI_STATE_SHOWING);
    if (states) g_object_unref(states);
    if (name && *name && showing) {
        AtspiRect* r =
            atspi_component_get_extents(ATSPI_COMPONENT(element), ATSPI_COORD_TYPE_SCREEN, nullptr);
        out.push_back(
            {QString::fromUtf8(name), r ? QRect(r->x, r->y, r->width, r->height) : QRect()});
        if (r) g_free(r);
    }
    g_free(name);
    const int count = atspi_accessible_get_child_count(element, nullptr);
    for (int i = 0; i < count; ++i) {
        AtspiAccessible* child = atspi_accessible_get_child_at_index(element, i, nullptr);
        collect(child, depth + 1, out);
        if (child) g_object_unref(child);
    }
}

std::vector<Shown> shellShows() {
    std::vector<Shown> out;
    AtspiAccessible* desktop = atspi_get_desktop(0);
    const int count = atspi_accessible_get_child_count(desktop, nullptr);
    for (int i = 0; i < count; ++i) {
        AtspiAccessible* app = atspi_accessible_get_child_at_index(desktop, i, nullptr);
        gchar* name = app ? atspi_accessible_get_name(app, nullptr) : nullptr;
        if (name && QString::fromUtf8(name) == QLatin1String("gnome-shell")) collect(app, 0, out);
        g_free(name);
        if (app) g_object_unref(app);
    }
    g_object_unref(desktop);
    return out;
}

std::optional<Shown> find(const std::vector<Shown>& shown, const QString& name) {
    for (const Shown& s : shown)
        if (s.name == name) return s;
    return std::nullopt;
}

TEST(TopBar, HoldsGlimmosMenuWithTheTraysRows) {
    ASSERT_EQ(atspi_init(), 0);
    GlimmoRun glimmo(answer("unused"));
    ASSERT_TRUE(glimmo.started());
    std::optional<Shown> icon;
    ASSERT_TRUE(waitUntil([&] { return (icon = find(shellShows(), "Glimmo")).has_value(); }, 10000))
        << "no Glimmo in the top bar\n"
        << glimmo.log().toStdString();
    EXPECT_LT(icon->frame.bottom(), 40) << "not in the top bar";
    EXPECT_FALSE(glimmo.log().contains("no system tray"));

    // The rows every state shows (the ones of the frontmost application come and go).
    const QStringList rows = {"Suggestions on", "Choose apps…", "About you…", "Open at login",
                              "Quit Glimmo"};
    // The icon is in the tree before the panel has settled where it stands (GNOME Shell 48 lays
    // the bar out again a frame or two later): it is clicked once its place holds still.
    ASSERT_TRUE(waitUntil(
        [&] {
            const QRect before = icon ? icon->frame : QRect();
            waitUntil([] { return false; }, 300);
            icon = find(shellShows(), "Glimmo");
            return icon && !before.isNull() && icon->frame == before;
        },
        5000))
        << "the icon did not hold still";
    ASSERT_TRUE(desktop::waylandClick(icon->frame.center().x(), icon->frame.center().y()));
    std::vector<Shown> shown;
    ASSERT_TRUE(
        waitUntil([&] { return find(shown = shellShows(), rows.last()).has_value(); }, 5000))
        << "the menu did not open";
    QStringList seen;
    for (const Shown& s : shown)
        if (rows.contains(s.name)) seen << s.name;
    EXPECT_EQ(seen, rows);

    // A row acts as the tray's does.
    const QRect quit = find(shown, "Quit Glimmo")->frame;
    ASSERT_TRUE(desktop::waylandClick(quit.center().x(), quit.center().y()));
    EXPECT_TRUE(waitUntil([&] { return !glimmo.running(); }, 5000)) << "Glimmo did not quit";
}

}  // namespace
