#include "setup/RestartHint.h"

namespace setup {

namespace {

const QString kFlag = QStringLiteral("--force-renderer-accessibility");

// "A", "A or B", "A, B or C".
QString either(const QStringList& names) {
    if (names.size() < 2) return names.value(0);
    return names.mid(0, names.size() - 1).join(QStringLiteral(", ")) + QStringLiteral(" or ") +
           names.last();
}

}  // namespace

QString restartHint(const QStringList& apps) {
    if (apps.isEmpty())
        return QStringLiteral(
                   "Chrome, Chromium and Electron apps can be read only when started "
                   "with %1. Restart the ones already open with it.")
            .arg(kFlag);
    return QStringLiteral("Glimmo can't read %1 yet: restart %2 with %3.")
        .arg(either(apps), apps.size() == 1 ? QStringLiteral("it") : QStringLiteral("them"), kFlag);
}

}  // namespace setup
