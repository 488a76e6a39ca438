#pragma once
// Keeps the launchers of the applications that show their pages only with a flag (Chromium's
// family, Electron) readable for the applications Glimmo is on in, and plain for the others:
// at start, whenever a switch changes, and every half hour, since updates replace the installed
// launchers.

#include <QObject>
#include <QTimer>

namespace platform {
class Workspace;
}
namespace rules {
class AppRules;
}

namespace shell {

class LauncherUpkeep : public QObject {
public:
    LauncherUpkeep(platform::Workspace& workspace, rules::AppRules& rules);

private:
    void prepare();

    platform::Workspace& workspace_;
    rules::AppRules& rules_;
    QTimer timer_;
};

}  // namespace shell
