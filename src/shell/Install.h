#pragma once

#include <QStringList>

#include "shell/Bundle.h"
#include "shell/InstallActions.h"

namespace shell {

// Keeps Glimmo where it belongs. A bundle started from anywhere but /usr/, /opt/ or
// ~/.local/opt/ (and without "-stay") copies itself to ~/.local/opt/Glimmo, relaunches the copy
// and quits. True when the caller must stop launching (the copy starts instead, or the copy
// failed and the program quits); false when it stays where it is.
bool moveToApplications(const QStringList& arguments, const BundlePaths& paths,
                        const InstallActions& actions);

}  // namespace shell
