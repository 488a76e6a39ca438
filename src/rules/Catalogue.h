#pragma once
// The fixed catalogue of application kinds, and the lookups every rule starts from.

#include <QString>
#include <optional>
#include <vector>

#include "rules/AppKind.h"

namespace rules {

// The seven kinds, in display order.
const std::vector<AppKind>& kinds();
// The kind with this id, if any.
std::optional<AppKind> kindWithId(const QString& id);

// True when host is site or a subdomain of it ("mail.google.com" matches "google.com").
bool match(const QString& host, const QString& site);

// The first kind listing the application; Linux identifiers of common applications are
// consulted after the catalogue's own lists.
std::optional<AppKind> kindOf(const QString& app);
// The first kind with a site that the host matches.
std::optional<AppKind> kindOfSite(const QString& host);

// A browser: one of glimmo::browsers(), or a browser known by its Linux identifier.
bool isBrowser(const QString& id);
// An application whose empty reply box gets drafts: one of glimmo::replyApps(), or a Linux mail
// client that takes Mail's place.
bool isReplyApp(const QString& id);

}  // namespace rules
