#include "shell/Install.h"

#include <QDir>
#include <QFileInfo>

#include "main/Log.h"
#include "main/Paths.h"

namespace shell {
namespace {

bool installed(const BundlePaths& paths) {
    QStringList places = {QStringLiteral("/usr/"), QStringLiteral("/opt/"),
                          paths.home + QStringLiteral("/.local/opt/")};
    // The executable's path has its links resolved; the home folder may be a link.
    const QString realHome = QFileInfo(paths.home).canonicalFilePath();
    if (!realHome.isEmpty() && realHome != paths.home)
        places << realHome + QStringLiteral("/.local/opt/");
    for (const QString& place : places)
        if (paths.executable.startsWith(place)) return true;
    return false;
}

}  // namespace

bool moveToApplications(const QStringList& arguments, const BundlePaths& paths,
                        const InstallActions& actions) {
    if (installed(paths)) return false;
    // Only a bundle moves: a program run from its build folder has no build number beside it.
    if (!QFileInfo::exists(paths.runningBundle() + QStringLiteral("/share/glimmo/build")))
        return false;
    if (arguments.contains(QStringLiteral("-stay"))) return false;

    actions.quitOthers();
    // A first start in a new home: nothing has made the data folder yet, and these lines
    // are the only trace of the move.
    QDir().mkpath(glimmo::supportDir());
    if (const auto error = placeCopy(paths.runningBundle(), paths)) {
        glimmo::log(QStringLiteral("move to Applications: ") + *error);
        actions.alert(QStringLiteral("Install Glimmo"),
                      QStringLiteral("Glimmo could not copy itself to ~/.local/opt/Glimmo. Copy "
                                     "the Glimmo folder there yourself, then open it from there."));
        actions.quit();
        return true;
    }
    glimmo::log(QStringLiteral("moved into Applications"));
    relaunch(actions, paths.destination());
    actions.quit();
    return true;
}

}  // namespace shell
