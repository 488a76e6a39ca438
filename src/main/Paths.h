#pragma once
// Where Glimmo keeps its files. Read from the environment on each call, so tests can point
// HOME and the XDG variables at a temporary folder.

#include <QString>

namespace glimmo {

// $XDG_DATA_HOME, default ~/.local/share: where the launcher entry and the icon go.
QString dataHome();
// $XDG_DATA_HOME/Glimmo, default ~/.local/share/Glimmo: log, debug flag, claude-path.
QString supportDir();
// supportDir + "/log.txt".
QString logFile();
// $XDG_CONFIG_HOME/Glimmo, default ~/.config/Glimmo: the settings file.
QString configDir();
// The user's home folder, without a trailing slash.
QString homeDir();

}  // namespace glimmo
