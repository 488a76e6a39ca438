#pragma once
// Small helpers for the tests on the virtual desktop.

#include <QProcess>
#include <QStringList>

#include "TempHome.h"

namespace desktop {

// Runs xdotool with these arguments and waits for it.
inline int xdotool(const QStringList& args) { return QProcess::execute("xdotool", args); }

// Runs a program while this process's event loop keeps going (it may have to serve the
// clipboard to that very program); returns its standard output.
inline QString runServing(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    testsupport::waitUntil([&] { return p.state() == QProcess::NotRunning; }, 15000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

// What another application finds on the clipboard, as the GTK editor reports it.
inline QString foreignClipboard() {
    return runServing(qEnvironmentVariable("GLIMMO_GTK_EDITOR"), {"--print-clipboard"});
}

}  // namespace desktop
