#pragma once

namespace shell {

// The normal launch on the real desktop: the engine on the Linux backend, until the program is
// told to quit. Needs the QApplication to exist.
int runNormalLaunch();

}  // namespace shell
