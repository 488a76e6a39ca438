#pragma once
// AT-SPI roles and states told in the engine's vocabulary ("AXTextField", "AXTextArea", ...).
// Only a field the user can type in gets a text field role: a read-only or non-editable one
// reads as static text, so the engine never offers to rewrite it.

#include <QString>
#include <optional>

#include "platform/linux/AtRef.h"

namespace linuxdesk {

std::optional<QString> axRole(const AtRef& element);
// "AXSearchField" for search entries, "AXSecureTextField" for password entries; else absent.
std::optional<QString> axSubrole(const AtRef& element);
// Frames, windows and dialogs: what "AXFocusedWindow" can answer.
bool isWindowRole(AtspiRole role);

}  // namespace linuxdesk
