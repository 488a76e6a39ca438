#pragma once
// A Glimmo bundle is a folder laid out as an install prefix (bin/glimmo,
// share/applications/glimmo.desktop, share/icons/.../glimmo.svg, share/glimmo/build). These are
// the places the install and the update read and write, gathered so tests can point every one
// of them at a temporary folder.

#include <optional>

#include <QString>
#include <QStringList>

namespace shell {

struct BundlePaths {
    // The running executable, with symbolic links resolved.
    QString executable;
    // The user's home folder and $XDG_DATA_HOME (launcher entry, icon).
    QString home;
    QString dataHome;
    // Where file managers mount the release image's volume "Glimmo".
    QStringList volumeMounts;

    // The real places of this process and user.
    static BundlePaths standard();

    // The running bundle: the parent of the executable's folder.
    QString runningBundle() const;
    // The per-user install, ~/.local/opt/Glimmo.
    QString destination() const;
    // The bundle on the first mounted "Glimmo" volume that holds one.
    std::optional<QString> volumeBundle() const;
    // The mount point that holds volumeBundle().
    std::optional<QString> mountedVolume() const;
};

// The integer build number of a bundle (share/glimmo/build); 0 when unreadable or not a whole
// decimal number.
long long bundleVersion(const QString& bundle);
// A decimal integer with an optional sign and nothing else, within 64 bits.
std::optional<long long> parseBuild(const QString& text);

// Puts `source` at paths.destination(): the old copy to the Trash, the copy made, its program
// made executable, and the launcher entry, icon and ~/.local/bin/glimmo link written. Returns
// the reason when trashing or copying failed.
std::optional<QString> placeCopy(const QString& source, const BundlePaths& paths);

}  // namespace shell
