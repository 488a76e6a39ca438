#pragma once
// "Try it now": a sample file in the temporary folder, opened in the user's text editor with
// the caret on the empty line under the instructions.

#include <QString>
#include <functional>

#include "platform/Ax.h"
#include "platform/Workspace.h"

namespace setup {

// The sample's text: the instructions and two line feeds.
QString trySample();
// Where the sample is written.
QString tryFile();

// Writes the sample, opens it, and places the caret once the editor shows it. done runs when
// there is nothing more to do (caret placed, or the editor never came). ax and workspace must
// outlive that.
void tryIt(platform::Ax& ax, platform::Workspace& workspace, std::function<void()> done = {});

}  // namespace setup
