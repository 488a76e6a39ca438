#pragma once

#include <QString>

namespace glimmo {

// Appends "<UTC time, second precision> <message>\n" to the log file with a single write, so
// lines from several threads stay whole. Creates the file on first use; never fails visibly.
void log(const QString& message);

// The time stamp format of the log: 2026-11-16T21:04:09Z.
QString logTimestamp();

}  // namespace glimmo
