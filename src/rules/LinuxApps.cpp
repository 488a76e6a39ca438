#include "rules/LinuxApps.h"

#include "platform/LinuxApps.h"
#include "rules/Catalogue.h"

namespace rules {

std::optional<QString> linuxKindId(const QString& app) {
    const platform::LinuxApp* row = platform::linuxAppNamed(app);
    if (!row) return std::nullopt;
    if (!row->kind.isEmpty()) return row->kind;
    for (const AppKind& kind : kinds()) {
        if (kind.apps.contains(row->app)) return kind.id;
    }
    return std::nullopt;
}

QStringList linuxApps(const QString& kindId) {
    QStringList out;
    for (const platform::LinuxApp& row : platform::linuxAppTable()) {
        if (row.kind == kindId) out << row.app;
    }
    return out;
}

bool linuxDraftsReplies(const QString& app) {
    const platform::LinuxApp* row = platform::linuxAppNamed(app);
    return row && row->draftsReplies;
}

}  // namespace rules
