#pragma once
// Identifiers under which common Linux applications show up (desktop entry ids, Flatpak ids,
// window classes), by kind. Kept apart from the catalogue so its own lists stay as they are.

#include <QString>
#include <QStringList>
#include <optional>

namespace rules {

// The kind id of a Linux application, compared without regard to case, since window classes
// and desktop ids of the same program differ in capitalisation.
std::optional<QString> linuxKindId(const QString& app);
// Every Linux identifier listed for a kind id, in table order.
QStringList linuxApps(const QString& kindId);

}  // namespace rules
