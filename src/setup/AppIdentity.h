#pragma once
// An installed application as the apps window shows it, and the lookup that finds them.

#include <QString>
#include <QStringList>
#include <vector>

#include "platform/Workspace.h"
#include "rules/AppKind.h"

namespace setup {

struct AppIdentity {
    QString id;        // the identifier the rules switch it by
    QString name;      // the desktop entry's localized name
    QString iconPath;  // the icon's file, empty when none was found
    QString iconName;  // the entry's icon name, for the desktop's icon theme

    bool operator==(const AppIdentity&) const = default;
};

// The installed applications among these identifiers, in their order; an identifier with no
// installed application is skipped, and of several with one name only the first is kept (two
// packagings of one product show once).
std::vector<AppIdentity> installedApps(platform::Workspace& workspace, const QStringList& ids);

// The identifiers a kind lists: the catalogue's applications, then the Linux-only ones.
QStringList kindApps(const rules::AppKind& kind);

}  // namespace setup
