#pragma once
// Chromium's family and the Electron applications show their pages to assistive technology only
// when started with a flag, and a user should not have to edit launchers. For each such
// application installed (system, Flatpak and Snap entries alike) the user's applications folder
// gets an entry of the same id, copied from the installed one with the flag added to every
// launch: the desktop then starts the application through it. Each copy is marked as Glimmo's,
// rewritten when the installed entry changes, and removed when the application is switched off
// or uninstalled. An entry the user made there himself is never touched.

#include <QByteArray>
#include <QString>
#include <functional>
#include <optional>
#include <vector>

namespace linuxdesk {

// What an application's command line becomes: the flag after the program (after the
// application's id for "flatpak run"), and the environment asking it to join the
// accessibility bus even when started before Glimmo turned it on. Absent when the line
// already carries the flag or names no program.
std::optional<QString> readableExec(const QString& exec);

// The installed entry's text with every Exec line made readable and Glimmo's mark naming the
// original; absent when no line changes.
std::optional<QByteArray> readableEntry(const QByteArray& original, const QString& originalPath);

class ReadableLaunchers {
public:
    // Makes the copies agree with wanted (by the rules' application identifier): written or
    // brought up to date for the wanted ones, removed for the others and for applications no
    // longer installed. Returns the prepared applications' names.
    std::vector<QString> prepare(const std::function<bool(const QString& app)>& wanted);
    const std::vector<QString>& prepared() const { return prepared_; }

private:
    std::vector<QString> prepared_;
};

}  // namespace linuxdesk
