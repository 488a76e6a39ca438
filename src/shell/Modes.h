#pragma once
// The one-shot command-line modes. The first flag that applies wins; a flag that needs a value
// but is the last argument counts as absent.

#include <QString>
#include <QStringList>
#include <optional>

namespace shell {

enum class Mode { PrintPrompt, RulesTest };

// The mode that needs no display, if the arguments ask for one before any drawing mode.
std::optional<Mode> headlessMode(const QStringList& args);
int runHeadlessMode(Mode mode, const QStringList& args);

// Modes that draw (run inside a QApplication); the exit status, or absent for a normal launch.
std::optional<int> runGuiMode(const QStringList& args);

// The value after the first occurrence of flag, if any.
std::optional<QString> flagValue(const QStringList& args, const QString& flag);

}  // namespace shell
