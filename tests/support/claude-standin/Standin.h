#pragma once
// Points Glimmo at the claude stand-in inside a TempHome and scripts it (see the comment at the
// top of claude-standin/main.cpp for the script commands and the files it records).

#include <QByteArray>
#include <QString>

#include "TempHome.h"
#include "main/Paths.h"

namespace testsupport {

inline QString standinPath() {
    return QStringLiteral(GLIMMO_STANDIN_PATH);
}

// Writes the stand-in's path into the "claude-path" file of the support folder.
inline void useStandin(const TempHome& home) {
    const QString support = glimmo::supportDir();
    const QString relative = support.mid(home.path().size() + 1) + QStringLiteral("/claude-path");
    home.write(relative, standinPath().toUtf8() + '\n');
}

// Replaces the script; an empty one plays the default answer.
inline void setStandinScript(const TempHome& home, const QByteArray& script) {
    home.write(QStringLiteral("standin/script"), script);
}

// A file the stand-in recorded ("args", "env", "stdin", "runs", "bad-args").
inline QByteArray standinRecord(const TempHome& home, const QString& name) {
    return home.read(QStringLiteral("standin/") + name);
}

}  // namespace testsupport
