#include "main/DebugTrace.h"

#include <QFileInfo>

#include "main/Log.h"
#include "main/Paths.h"

namespace glimmo {

void DebugTrace::why(const QString& note) {
    if (note == lastWhy_) return;
    // Checked on every new note so that creating or removing the flag works without a restart.
    if (!QFileInfo::exists(supportDir() + QStringLiteral("/debug.flag"))) return;
    lastWhy_ = note;
    log(QStringLiteral("debug: ") + note);
}

}  // namespace glimmo
