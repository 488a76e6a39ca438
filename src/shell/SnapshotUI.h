#pragma once

#include <QString>

namespace shell {

// Draws the suggestion bubble and the reply list, with fixed sample contents and the light
// palette, and the setup window, into "ui-bubble.png", "ui-replies.png" and "ui-setup.png" in
// folder (which must exist). An image that cannot be made or written is skipped without a word.
// Returns the exit status, 0.
int runSnapshotUI(const QString& folder);

}  // namespace shell
