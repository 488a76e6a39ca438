#pragma once

#include <QStringList>

namespace shell {

// The normal launch on the real desktop: one instance per session, the tray item, the engine and,
// while setup is unfinished or "-setup" is given, the setup window; until the program is told
// to quit. Needs the QApplication to exist.
int runNormalLaunch(const QStringList& args);

}  // namespace shell
