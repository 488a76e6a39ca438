#include "setup/RestartHint.h"

#include <algorithm>

namespace setup {

namespace {

const QString kFlag = QStringLiteral("--force-renderer-accessibility");

// "A", "A or B", "A, B or C"; with "and" as the last word, "A and B".
QString listed(const QStringList& names, const QString& last = QStringLiteral("or")) {
    if (names.size() < 2) return names.value(0);
    return names.mid(0, names.size() - 1).join(QStringLiteral(", ")) + u' ' + last + u' ' +
           names.last();
}

}  // namespace

QString restartHint(const QStringList& apps, const QStringList& prepared, bool logOut) {
    const QString logOutLine =
        logOut ? QStringLiteral(
                     "Log out and back in once so that GNOME shows suggestions at "
                     "the caret and Glimmo in the top bar. ")
               : QString();
    if (apps.isEmpty() && prepared.isEmpty())
        return logOutLine + QStringLiteral(
                                "Chrome, Chromium and Electron apps can be read only when started "
                                "with %1. Restart the ones already open with it.")
                                .arg(kFlag);
    QStringList lines;
    if (!prepared.isEmpty())
        lines << (prepared.size() == 1
                      ? QStringLiteral("%1 now starts readable from its launcher.")
                      : QStringLiteral("%1 now start readable from their launchers."))
                     .arg(listed(prepared, QStringLiteral("and")));
    // A running application is named by its process, a prepared one by its launcher, which
    // may say more ("Chromium", "Chromium Web Browser").
    const auto isPrepared = [&prepared](const QString& app) {
        return std::any_of(prepared.begin(), prepared.end(), [&app](const QString& name) {
            return name.compare(app, Qt::CaseInsensitive) == 0 ||
                   name.startsWith(app + u' ', Qt::CaseInsensitive);
        });
    };
    QStringList reopen, flagged;
    for (const QString& app : apps) (isPrepared(app) ? reopen : flagged) << app;
    const auto them = [](const QStringList& l) {
        return l.size() == 1 ? QStringLiteral("it") : QStringLiteral("them");
    };
    if (!reopen.isEmpty())
        lines << QStringLiteral("Glimmo can't read %1 yet: quit %2 and open %2 again.")
                     .arg(listed(reopen), them(reopen));
    if (!flagged.isEmpty())
        lines << QStringLiteral("Glimmo can't read %1 yet: restart %2 with %3.")
                     .arg(listed(flagged), them(flagged), kFlag);
    return logOutLine + lines.join(u' ');
}

}  // namespace setup
