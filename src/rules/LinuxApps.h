#pragma once
// What the table of Linux applications (platform/LinuxApps.h) means to the rules: the kind of
// each product, the products of each kind, and which mail clients draft replies.

#include <QString>
#include <QStringList>
#include <optional>

namespace rules {

// The kind id of a Linux-only product, or of any name the table lists.
std::optional<QString> linuxKindId(const QString& app);
// The identifiers of the Linux-only products of a kind, in table order.
QStringList linuxApps(const QString& kindId);
// A Linux mail client that drafts replies as Mail does (by any of its names).
bool linuxDraftsReplies(const QString& app);

}  // namespace rules
