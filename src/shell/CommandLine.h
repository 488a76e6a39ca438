#pragma once
// The double-dash options (--help, --version) and the check that a launch has a display. The
// single-dash flags are the program's modes and launch flags and are left to them.

#include <QStringList>
#include <optional>

namespace shell {

// The usage text: every mode and flag with one line each.
QString usage();

// Answers --help, -h, --version and an unknown --option (exit status 0, 0 and 2); absent when
// none is given.
std::optional<int> answerOptions(const QStringList& args);

// Whether these arguments only draw images, which needs no display.
bool drawsOnly(const QStringList& args);

// Absent when a display is there or not needed; otherwise prints what is missing and returns
// the exit status 1.
std::optional<int> checkDisplay(const QStringList& args);

}  // namespace shell
