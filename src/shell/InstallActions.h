#pragma once
// What the install and the update do to the world beyond files: other instances, the relaunch,
// the alert, quitting. Tests replace these to watch them.

#include <functional>

#include <QString>
#include <QStringList>

namespace shell {

struct InstallActions {
    // Asks every other running instance to quit.
    std::function<void()> quitOthers;
    // Starts a program detached; false when it could not be started.
    std::function<bool(const QString& program, const QStringList& arguments)> startDetached;
    // A modal message with one button; returns once it is dismissed.
    std::function<void(const QString& message, const QString& informative)> alert;
    // Asks the application to quit once control returns to the event loop.
    std::function<void()> quit;

    // The real ones; `quitOthers` does nothing until the launch supplies its own.
    static InstallActions standard();
};

// The relaunch of an installed copy: after a second (so this process is gone), with "-setup".
void relaunch(const InstallActions& actions, const QString& bundle);

}  // namespace shell
