#include "platform/linux/identity/AppIdentity.h"

#include <QFile>
#include <QRegularExpression>

#include "platform/LinuxApps.h"

namespace linuxdesk {

namespace {

QByteArray readProc(qint64 pid, const char* file) {
    if (pid <= 0) return {};
    QFile f(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(file)));
    return f.open(QIODevice::ReadOnly) ? f.read(64 * 1024) : QByteArray();
}

}  // namespace

QString AppIdentity::flatpakId(qint64 pid) {
    // Flatpak puts each application in a scope named after it.
    static const QRegularExpression scope(
        QStringLiteral("app-flatpak-([A-Za-z0-9_.]+)-\\d+\\.scope"));
    const auto m = scope.match(QString::fromUtf8(readProc(pid, "cgroup")));
    return m.hasMatch() ? m.captured(1) : QString();
}

QString AppIdentity::snapName(qint64 pid) {
    static const QRegularExpression scope(QStringLiteral("snap\\.([a-z0-9-]+)\\.[^/\\n]*"));
    const auto m = scope.match(QString::fromUtf8(readProc(pid, "cgroup")));
    return m.hasMatch() ? m.captured(1) : QString();
}

std::optional<DesktopEntry> AppIdentity::entryFor(const WindowFacts& facts, const QString& flatpak,
                                                  const QString& snap) {
    if (auto e = entries_.byId(facts.gtkAppId)) return e;
    if (auto e = entries_.byId(flatpak)) return e;
    if (!snap.isEmpty())
        if (auto e = entries_.byId(snap + "_" + snap)) return e;
    if (auto e = entries_.byWmClass({facts.wmClass, facts.wmInstance})) return e;
    for (const QString& name : {facts.wmInstance, facts.wmClass, facts.wmClass.toLower()})
        if (auto e = entries_.byId(name)) return e;
    return std::nullopt;
}

platform::RunningApp AppIdentity::resolve(const WindowFacts& facts) {
    const QString key = QStringLiteral("%1\n%2\n%3\n%4")
                            .arg(facts.pid)
                            .arg(facts.gtkAppId, facts.wmInstance, facts.wmClass);
    if (auto it = cache_.find(key); it != cache_.end()) return it->second;

    const QString flatpak = flatpakId(facts.pid);
    const QString snap = snapName(facts.pid);
    const auto entry = entryFor(facts, flatpak, snap);

    platform::RunningApp app;
    app.pid = facts.pid;
    // In order of preference; the rules' table says which application these names are.
    app.bundleId = platform::appIdFor({facts.gtkAppId, flatpak, snap, entry ? entry->id : QString(),
                                    facts.wmClass, facts.wmInstance});
    app.name = entry ? entry->name : facts.wmClass;
    cache_[key] = app;
    return app;
}

platform::RunningApp AppIdentity::resolve(qint64 pid, const ProcessNames& names) {
    const QString key =
        QStringLiteral("%1\n%2\n%3\n%4").arg(pid).arg(names.desktopId, names.scopeId, names.exe);
    if (auto it = cache_.find(key); it != cache_.end()) return it->second;

    const QString flatpak = flatpakId(pid);
    const QString snap = snapName(pid);
    std::optional<DesktopEntry> entry;
    for (const QString& id : {names.desktopId, names.scopeId, flatpak})
        if (!entry) entry = entries_.byId(id);
    if (!entry && !snap.isEmpty()) entry = entries_.byId(snap + "_" + snap);
    if (!entry) entry = entries_.byWmClass({names.exe});

    platform::RunningApp app;
    app.pid = pid;
    app.bundleId = platform::appIdFor({names.desktopId, names.scopeId, flatpak, snap,
                                    entry ? entry->id : QString(), names.exe});
    app.name = entry ? entry->name : names.exe;
    cache_[key] = app;
    return app;
}

}  // namespace linuxdesk
