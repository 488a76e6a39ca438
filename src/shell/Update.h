#pragma once

#include "shell/Bundle.h"
#include "shell/InstallActions.h"

namespace shell {

// On a reopen: when a mounted "Glimmo" volume holds a higher build than the running one, that
// build replaces ~/.local/opt/Glimmo, is relaunched and this process quits (true). False when
// there is nothing newer or the copy failed; the caller then opens the setup window.
bool updateFromDiskImage(const BundlePaths& paths, const InstallActions& actions);

// After a launch that finds the release volume still mounted: ejects it two seconds later,
// through gio; a failure is ignored.
void ejectVolumeLater(const BundlePaths& paths, const InstallActions& actions);

}  // namespace shell
