#include "shell/Update.h"

#include <QTimer>

#include "main/Log.h"

namespace shell {

bool updateFromDiskImage(const BundlePaths& paths, const InstallActions& actions) {
    const auto source = paths.volumeBundle();
    if (!source) return false;
    const long long fresh = bundleVersion(*source);
    const long long current = bundleVersion(paths.runningBundle());
    if (current >= fresh) return false;

    glimmo::log(QStringLiteral("updating %1 -> %2").arg(current).arg(fresh));
    if (const auto error = placeCopy(*source, paths)) {
        glimmo::log(QStringLiteral("update: ") + *error);
        return false;
    }
    relaunch(actions, paths.destination());
    actions.quit();
    return true;
}

void ejectVolumeLater(const BundlePaths& paths, const InstallActions& actions) {
    const auto mount = paths.mountedVolume();
    if (!mount) return;
    QTimer::singleShot(2000, [mount = *mount, startDetached = actions.startDetached] {
        startDetached(QStringLiteral("gio"),
                      {QStringLiteral("mount"), QStringLiteral("--eject"), mount});
    });
}

}  // namespace shell
