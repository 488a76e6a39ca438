#pragma once

#include <QString>
#include <functional>

namespace setup {
class Setup;
}

namespace shell {

// Draws the setup window on a new Setup (built over the user's real settings, accessibility
// and claude), changed by configure, into a PNG at path; skipped without a word on failure.
void snapshotSetup(const QString& path, const std::function<void(setup::Setup&)>& configure);

// "-snapshotSetup": the apps window's images and the six setup states, into folder (which
// must exist). Returns the exit status, 0.
int runSnapshotSetup(const QString& folder);

}  // namespace shell
