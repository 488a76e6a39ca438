#pragma once
// Finding the user's claude program, and the environment every claude child gets.

#include <QProcessEnvironment>
#include <QString>
#include <optional>

namespace claude {

// The first executable candidate, probed afresh on every call.
std::optional<QString> claudePath();

// Only the listed variables of our own environment, and PATH starting with the program's folder.
QProcessEnvironment claudeEnv(const QString& path);

}  // namespace claude
