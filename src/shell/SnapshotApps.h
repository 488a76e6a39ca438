#pragma once
// Images of the apps window for the snapshot modes, drawn over the user's own rules and the
// applications installed on this computer.

#include <QSet>
#include <QString>

namespace shell {

// "apps" (520 × 600, every kind closed) and "apps-open" (520 × 900, browsers and AI chats open).
void snapshotAppsSetup(const QString& folder);
// "ui-apps": the window's fitting width and 700 high, AI chats open.
void snapshotAppsUI(const QString& folder);

}  // namespace shell
