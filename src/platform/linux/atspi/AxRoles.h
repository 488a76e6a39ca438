#pragma once
// AT-SPI roles and states told in the engine's vocabulary ("AXTextField", "AXTextArea", ...).
// Only a field the user can type in gets a text field role: a read-only or non-editable one
// reads as static text, so the engine never offers to rewrite it.

#include <QString>
#include <map>
#include <optional>

#include "platform/linux/atspi/Atspi.h"

namespace linuxdesk {

// states: absent when they could not be read (then no text field role is given).
QString axRole(AtspiRole role, const std::optional<at::States>& states, bool hasText);
// "AXSearchField" for search entries, "AXSecureTextField" for password entries; else absent.
std::optional<QString> axSubrole(AtspiRole role,
                                 const std::optional<std::map<QString, QString>>& attributes);
// Whether the subrole depends on the object attributes (so they are worth reading).
bool isTextRole(AtspiRole role);
// Frames, windows and dialogs: what "AXFocusedWindow" can answer.
bool isWindowRole(AtspiRole role);

}  // namespace linuxdesk
