#pragma once
// Linux names of the applications Glimmo's catalogue knows under other identifiers: GTK
// application ids, Flatpak and Snap ids, desktop entry ids and WM_CLASS values, all compared
// without regard to case. One table, so every decision of that kind is in one place.

#include <QString>
#include <QStringList>

namespace linuxdesk {

// The catalogue's identifier for the first candidate the table knows; empty when none does.
QString catalogueId(const QStringList& candidates);
// The Linux names that map to a catalogue identifier (to find it installed or running).
QStringList linuxNamesOf(const QString& catalogueId);

}  // namespace linuxdesk
