#pragma once
// The one table of Linux applications. For each product: the names it shows up under on a
// Linux desktop (desktop entry ids, application ids, Flatpak ids, WM_CLASS values), and either
// the catalogue application it is or, for a product the catalogue does not list, the kind it
// belongs to. The desktop backend only reports a window's names; this table says what they mean.
// Names are compared without regard to case, since window classes and desktop ids of one
// program differ in capitalisation.

#include <QString>
#include <QStringList>
#include <optional>

namespace rules {

// The identifier the rules know an application by, from its names in order of preference: the
// catalogue's identifier, or a Linux-only product's own identifier, for the first name the
// table knows; else the first non-empty name; empty when every name is.
QString appIdFor(const QStringList& names);
// Every name of an application identifier on Linux: itself first, then the table's names of
// every product it stands for (to find it installed or running).
QStringList linuxNamesOf(const QString& app);
// The kind id of a Linux-only product, or of any name the table lists.
std::optional<QString> linuxKindId(const QString& app);
// The identifiers of the Linux-only products of a kind, in table order.
QStringList linuxApps(const QString& kindId);
// A Linux mail client that drafts replies as Mail does (by any of its names).
bool linuxDraftsReplies(const QString& app);

}  // namespace rules
