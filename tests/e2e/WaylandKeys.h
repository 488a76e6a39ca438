#pragma once
// Keys for native windows on the Wayland desktop (wayland-desktop.sh), through its one
// remote-desktop keyboard. Each returns true once mutter has every event; the application may
// still be reading them, so wait for what they cause.

#include <QProcess>
#include <QString>

namespace desktop {

// Types text: ASCII by its keys, other characters through GTK's Ctrl+Shift+U code entry.
inline bool waylandType(const QString& text) {
    return QProcess::execute(qEnvironmentVariable("GLIMMO_WAYLAND_KEYS"), {"type", text}) == 0;
}

// Presses key combinations as xdotool writes them: "Tab", "shift+Tab", "ctrl+a Escape".
inline bool waylandKeys(const QString& keys) {
    return QProcess::execute(qEnvironmentVariable("GLIMMO_WAYLAND_KEYS"), {"key", keys}) == 0;
}

// Clicks the left button at a place on the screen.
inline bool waylandClick(int x, int y) {
    return QProcess::execute(qEnvironmentVariable("GLIMMO_WAYLAND_KEYS"),
                             {"click", QString::number(x), QString::number(y)}) == 0;
}

}  // namespace desktop
