#pragma once
// The active window's rectangles as KWin has them, for tests on the KWin desktop
// (kwin-desktop.sh): a one-line script of the test's own prints them into KWin's log
// ($GLIMMO_KWIN_LOG), and is unloaded again: KWin numbers a new script by how many it holds, so
// one left behind would take the number Glimmo's script gets when Glimmo starts again. And
// KWin's own picture of its screen, where it has one.
#include <fcntl.h>
#include <unistd.h>

#include <QDBusInterface>
#include <QDBusReply>
#include <QDBusUnixFileDescriptor>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QRect>
#include <QTemporaryFile>
#include <optional>

#include "DesktopHelpers.h"

namespace desktop {

struct KWinWindow {
    QRect frame, client, buffer;
    QSize desktop;  // the whole desktop, in the same logical pixels
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
                     "const d = workspace.virtualScreenSize;\n"
                     "print('%1 ' + (w ? [r(w.frameGeometry), r(w.clientGeometry || w.bufferGeometry), "
                     "r(w.bufferGeometry), d.width + ',' + d.height].join(' ') : 'none'));\n")
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
                if (parts.size() == 4)
                    found = KWinWindow{rect(parts[0]), rect(parts[1]), rect(parts[2]),
                                       QSize(parts[3].section(u',', 0, 0).toInt(),
                                             parts[3].section(u',', 1, 1).toInt())};
                return true;
            }
            return false;
        },
        3000);
    scripting.call(QStringLiteral("unloadScript"), tag);
    testsupport::waitUntil([] { return false; }, 300);  // KWin forgets it a moment later
    return found;
}

// The X display's size in its own pixels, as the X server has it; it stays for a test program.
inline QSize xDisplaySize() {
    static const QString root = output("xwininfo", {"-root"});
    const auto size = [&](const char* name) {
        return QRegularExpression(QStringLiteral("%1: *([0-9]+)").arg(QLatin1String(name)))
            .match(root)
            .captured(1)
            .toInt();
    };
    return QSize(size("Width"), size("Height"));
}

// The whole screen as KWin draws it, native windows included (ScreenShot2, the tests' desktop
// lets any caller use it). Null where KWin has no screenshot interface: it needs OpenGL, which
// KWin 5.27 gets from Mesa's software renderer but KWin 6 only with a render node.
inline QImage kwinScreenshot() {
    int fds[2];
    if (pipe2(fds, O_CLOEXEC) != 0) return {};
    QDBusInterface shots(QStringLiteral("org.kde.KWin"), QStringLiteral("/org/kde/KWin/ScreenShot2"),
                         QStringLiteral("org.kde.KWin.ScreenShot2"));
    const QDBusMessage reply =
        shots.call(QStringLiteral("CaptureActiveScreen"),
                   QVariantMap{{QStringLiteral("include-cursor"), false},
                               {QStringLiteral("native-resolution"), true}},
                   QVariant::fromValue(QDBusUnixFileDescriptor(fds[1])));
    close(fds[1]);
    // KWin writes the pixels after its answer and closes the pipe when done.
    QByteArray data;
    char chunk[65536];
    for (ssize_t n; reply.type() == QDBusMessage::ReplyMessage &&
                    (n = read(fds[0], chunk, sizeof chunk)) > 0;)
        data.append(chunk, n);
    close(fds[0]);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return {};
    const QVariantMap r = qdbus_cast<QVariantMap>(reply.arguments().first());
    const int w = r.value(QStringLiteral("width")).toInt();
    const int h = r.value(QStringLiteral("height")).toInt();
    const int stride = r.value(QStringLiteral("stride")).toInt();
    const auto format = QImage::Format(r.value(QStringLiteral("format")).toInt());
    if (w <= 0 || h <= 0 || data.size() < qsizetype(stride) * h) return {};
    // copy(): the pixels must outlive data, whichever format KWin sent.
    QImage shot = QImage(reinterpret_cast<const uchar*>(data.constData()), w, h, stride, format)
                      .copy()
                      .convertToFormat(QImage::Format_RGB32);
    // In the X display's pixels, which Glimmo's windows are placed in (KWin's scale may differ).
    const QSize x = xDisplaySize();
    return x.isEmpty() || x == shot.size()
               ? shot
               : shot.scaled(x, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace desktop
