#pragma once
// The line of the accessibility step about applications that must be started again before
// Glimmo can read them: the ones named when known, else the kinds that need it.

#include <QString>
#include <QStringList>

namespace setup {

QString restartHint(const QStringList& apps);

}  // namespace setup
