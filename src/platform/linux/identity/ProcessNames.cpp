#include "platform/linux/identity/ProcessNames.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace linuxdesk {

namespace {

QByteArray readFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.read(256 * 1024) : QByteArray();
}

QString environmentValue(const QByteArray& environ, const QByteArray& name) {
    const QByteArray prefix = name + '=';
    for (const QByteArray& entry : environ.split('\0'))
        if (entry.startsWith(prefix)) return QString::fromUtf8(entry.mid(prefix.size()));
    return {};
}

}  // namespace

QString scopeAppId(const QString& cgroup) {
    // Launchers that name a scope after the application: app-gnome-org.gnome.Foo-1234.scope,
    // app-org.kde.foo@1a2b.service, app-flatpak-org.foo.Bar-99.scope.
    static const QRegularExpression unit(QStringLiteral(
        "/app-([^/\\n]+?)(?:-[0-9A-Za-z]+\\.scope|@[^/\\n]*\\.service|\\.service)(?:/|$)"));
    QString last;
    auto it = unit.globalMatch(cgroup);
    while (it.hasNext()) last = it.next().captured(1);
    if (last.isEmpty()) return {};
    // Real dashes inside the id are escaped, so the first plain dash ends the launcher's name.
    const qsizetype dash = last.indexOf(u'-');
    if (dash >= 0) last = last.mid(dash + 1);
    return last.replace(QStringLiteral("\\x2d"), QStringLiteral("-"));
}

ProcessNames processNames(qint64 pid, const QString& procRoot) {
    ProcessNames names;
    if (pid <= 0) return names;
    const QString dir = procRoot + u'/' + QString::number(pid);
    const QString launched =
        environmentValue(readFile(dir + QStringLiteral("/environ")), "GIO_LAUNCHED_DESKTOP_FILE");
    if (!launched.isEmpty()) {
        names.desktopId = QFileInfo(launched).fileName();
        if (names.desktopId.endsWith(QLatin1String(".desktop")))
            names.desktopId.chop(int(qstrlen(".desktop")));
    }
    names.scopeId = scopeAppId(QString::fromUtf8(readFile(dir + QStringLiteral("/cgroup"))));
    names.exe = QFileInfo(QFileInfo(dir + QStringLiteral("/exe")).symLinkTarget()).fileName();
    return names;
}

}  // namespace linuxdesk
