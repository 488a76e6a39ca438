#include "shell/LauncherUpkeep.h"

#include "platform/Workspace.h"
#include "rules/AppRules.h"

namespace shell {

namespace {
constexpr int kRecheckMs = 30 * 60 * 1000;
}

LauncherUpkeep::LauncherUpkeep(platform::Workspace& workspace, rules::AppRules& rules)
    : workspace_(workspace), rules_(rules) {
    connect(&rules_, &rules::AppRules::changed, this, &LauncherUpkeep::prepare);
    timer_.setInterval(kRecheckMs);
    timer_.callOnTimeout(this, &LauncherUpkeep::prepare);
    timer_.start();
    prepare();
}

void LauncherUpkeep::prepare() {
    workspace_.prepareLaunchers([this](const QString& app) { return rules_.appState(app); });
}

}  // namespace shell
