#pragma once
// The line of the accessibility step about applications that must be started again before
// Glimmo can read them (the ones named when known, else the kinds that need it), and about the
// ones whose launchers Glimmo prepared so that they start readable; and, when the desktop's
// shell loads Glimmo's companion only at the next log-in, that a log-out is due.

#include <QString>
#include <QStringList>

namespace setup {

QString restartHint(const QStringList& apps, const QStringList& prepared = {}, bool logOut = false);

}  // namespace setup
