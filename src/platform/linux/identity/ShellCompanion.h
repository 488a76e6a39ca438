#pragma once
// Puts Glimmo's GNOME Shell extension (companion/ in the source tree, installed with the
// program) in the user's extensions folder and switches it on, so that the shell places the
// bubble at the caret of native windows, takes the four keys while something is on screen and
// shows Glimmo's menu where there is no tray. GNOME reads a new or changed extension only when
// the user logs in again (on Wayland it cannot restart in place); until then it is awaited.

#include <QString>
#include <optional>

namespace linuxdesk {

class ShellCompanion {
public:
    static const char* const uuid;

    // Installs and enables it where GNOME Shell runs; does nothing elsewhere. Cheap when
    // nothing changed.
    void prepare();
    // Installed or changed since the shell started: it loads it at the next log-in.
    bool awaitsLogin() const { return awaitsLogin_; }

    // The variant of the extension for a shell version ("43.9", "46.0"), found beside the
    // program: in an install (share/glimmo/companion) or a build tree (companion).
    static std::optional<QString> sourceFor(const QString& shellVersion, const QString& programDir);
    // The enabled-extensions list, in gsettings' text, with the uuid added; absent when it is
    // already there.
    static std::optional<QString> withUuid(const QString& enabledList);

private:
    bool awaitsLogin_ = false;
    bool said_ = false;
};

}  // namespace linuxdesk
