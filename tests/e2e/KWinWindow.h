#pragma once
// The active window's rectangles as KWin has them, for tests on the KWin desktop
// (kwin-desktop.sh): a one-line script of the test's own prints them into KWin's log
// ($GLIMMO_KWIN_LOG), and is unloaded again: KWin numbers a new script by how many it holds, so
// one left behind would take the number Glimmo's script gets when Glimmo starts again.
#include <QDBusInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QRect>
#include <QTemporaryFile>
#include <optional>

#include "DesktopHelpers.h"

namespace desktop {

struct KWinWindow {
    QRect frame, client, buffer;
};

inline std::optional<KWinWindow> kwinActiveWindow() {
    static int calls = 0;
    const QString tag = QStringLiteral("glimmo-test-window-%1").arg(++calls);
    QTemporaryFile script(QDir::tempPath() + QStringLiteral("/kwin-XXXXXX.js"));
    if (!script.open()) return std::nullopt;
    script.write(QStringLiteral(
                     "const w = workspace.activeWindow || workspace.activeClient;\n"
                     "const r = g => g ? [g.x, g.y, g.width, g.height].map(Math.round).join(',') "
                     ": '0,0,0,0';\n"
                     "print('%1 ' + (w ? [r(w.frameGeometry), r(w.clientGeometry || w.bufferGeometry), "
                     "r(w.bufferGeometry)].join(' ') : 'none'));\n")
                     .arg(tag)
                     .toUtf8());
    script.close();
    QDBusInterface scripting(QStringLiteral("org.kde.KWin"), QStringLiteral("/Scripting"),
                             QStringLiteral("org.kde.kwin.Scripting"));
    const QDBusReply<int> id = scripting.call(QStringLiteral("loadScript"), script.fileName(), tag);
    if (!id.isValid() || id.value() < 0) return std::nullopt;
    // KWin 6 names the script's object /Scripting/Script<id>, KWin 5 /<id>.
    for (const QString& path : {QStringLiteral("/Scripting/Script%1").arg(id.value()),
                                QStringLiteral("/%1").arg(id.value())}) {
        QDBusInterface run(QStringLiteral("org.kde.KWin"), path,
                           QStringLiteral("org.kde.kwin.Script"));
        if (run.call(QStringLiteral("run")).type() == QDBusMessage::ReplyMessage) break;
    }
    const auto rect = [](const QString& s) {
        const QStringList v = s.split(u',');
        return v.size() == 4 ? QRect(v[0].toInt(), v[1].toInt(), v[2].toInt(), v[3].toInt())
                             : QRect();
    };
    std::optional<KWinWindow> found;
    testsupport::waitUntil(
        [&] {
            QFile log(qEnvironmentVariable("GLIMMO_KWIN_LOG"));
            if (!log.open(QIODevice::ReadOnly)) return false;
            for (const QString& line : QString::fromUtf8(log.readAll()).split(u'\n')) {
                const int at = line.indexOf(tag + u' ');
                if (at < 0) continue;
                const QStringList parts = line.mid(at + tag.size() + 1).split(u' ');
                if (parts.size() == 3) found = KWinWindow{rect(parts[0]), rect(parts[1]), rect(parts[2])};
                return true;
            }
            return false;
        },
        3000);
    scripting.call(QStringLiteral("unloadScript"), tag);
    testsupport::waitUntil([] { return false; }, 300);  // KWin forgets it a moment later
    return found;
}

}  // namespace desktop
