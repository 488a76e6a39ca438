#pragma once
// Small helpers for the tests on the virtual desktop.

#include <QProcess>
#include <QStringList>

namespace desktop {

// Runs xdotool with these arguments and waits for it.
inline int xdotool(const QStringList& args) { return QProcess::execute("xdotool", args); }

}  // namespace desktop
