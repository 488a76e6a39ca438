#include "setup/AppIdentity.h"

#include <QSet>

#include "rules/LinuxApps.h"

namespace setup {

std::vector<AppIdentity> installedApps(platform::Workspace& workspace, const QStringList& ids) {
    std::vector<AppIdentity> out;
    QSet<QString> seen;
    for (const QString& id : ids) {
        const std::optional<platform::InstalledApp> app = workspace.installed(id);
        if (!app || app->name.isEmpty() || seen.contains(app->name)) continue;
        seen.insert(app->name);
        out.push_back({id, app->name, app->iconPath, app->iconName});
    }
    return out;
}

QStringList kindApps(const rules::AppKind& kind) {
    return kind.apps + rules::linuxApps(kind.id);
}

}  // namespace setup
