#pragma once
// The conversation on screen above an empty reply box, for reply drafts.

#include <QString>
#include <optional>

#include "main/Graphemes.h"
#include "platform/Ax.h"
#include "platform/Clock.h"
#include "platform/Workspace.h"

namespace ax {

// The reply services' web apps by host ("mail.google.com": "Gmail", "app.slack.com": "Slack",
// Outlook, Teams, WhatsApp, Discord): their compose boxes get drafts in any browser, as their
// own applications do. Absent for any other host.
std::optional<QString> replySite(const QString& host);

struct CaptureRoot {
    platform::Element root;  // never null
    QString site;            // the reply site's name in a browser, else empty
};

// Where the conversation lies: the focused window of a reply application, or the web area of
// a reply site's page in a browser. Absent elsewhere or when the root cannot be read.
std::optional<CaptureRoot> captureRoot(platform::Ax& ax, const platform::RunningApp& app,
                                       const platform::Element& appElement,
                                       const platform::Element& box);

// The visible static texts under root up to box, in document order, joined by single spaces.
// Bounded by depth 60, 6000 elements and 0.6 seconds on clock.
QString conversation(platform::Ax& ax, const platform::Clock& clock, const platform::Element& root,
                     const platform::Element& box);

struct ReplyContext {
    QString conversation;  // last 3500 characters
    QString quoted;        // first 3000 characters of the box's text after the caret, trimmed
    QString site;          // as in CaptureRoot
};

std::optional<ReplyContext> replyContext(platform::Ax& ax, const platform::Clock& clock,
                                         const platform::RunningApp& app,
                                         const platform::Element& appElement,
                                         const platform::Element& box, const QString& text,
                                         qint64 caret);

using glimmo::firstGraphemes;
using glimmo::graphemeCount;
using glimmo::lastGraphemes;

}  // namespace ax
