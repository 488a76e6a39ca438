#pragma once
// What the user chose in the desktop's own settings: the default application for a file type,
// and where the desktop keeps its accessibility switches.

#include <QString>
#include <optional>

namespace linuxdesk {

// The desktop entry id (without ".desktop") of the default application for a MIME type, from
// the mimeapps.list files in their XDG order (the current desktop's own lists first).
std::optional<QString> defaultApplication(const QString& mimeType);

// Starts the current desktop's accessibility settings; false when none is known or installed.
bool openAccessibilitySettings();

}  // namespace linuxdesk
