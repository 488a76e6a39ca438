#include "platform/linux/identity/ShellCompanion.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include "main/Log.h"

namespace linuxdesk {

namespace {

constexpr int kGsettingsMs = 3000;

std::optional<QString> shellVersion() {
    QDBusInterface shell(QStringLiteral("org.gnome.Shell"), QStringLiteral("/org/gnome/Shell"),
                         QStringLiteral("org.gnome.Shell"), QDBusConnection::sessionBus());
    if (!shell.isValid()) return std::nullopt;
    const QString version = shell.property("ShellVersion").toString();
    return version.isEmpty() ? std::nullopt : std::optional(version);
}

std::optional<QString> gsettings(const QStringList& args) {
    QProcess p;
    p.start(QStringLiteral("gsettings"), args);
    if (!p.waitForFinished(kGsettingsMs) || p.exitStatus() != QProcess::NormalExit ||
        p.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
}

// Copies the folder's files over, leaving the same ones alone; true when any changed.
bool copyChanged(const QDir& from, const QDir& to, bool& failed) {
    bool changed = false;
    if (!QDir().mkpath(to.path())) {
        failed = true;
        return false;
    }
    for (const QString& name : from.entryList(QDir::Files)) {
        QFile source(from.filePath(name));
        QFile target(to.filePath(name));
        if (!source.open(QIODevice::ReadOnly)) continue;
        const QByteArray bytes = source.readAll();
        if (target.open(QIODevice::ReadOnly) && target.readAll() == bytes) continue;
        target.close();
        if (!target.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
            target.write(bytes) != bytes.size()) {
            failed = true;
            continue;
        }
        changed = true;
    }
    return changed;
}

}  // namespace

const char* const ShellCompanion::uuid = "glimmo@glimmo.io";

std::optional<QString> ShellCompanion::sourceFor(const QString& shellVersion,
                                                 const QString& programDir) {
    // Shells from 45 on load extensions as modules, the ones before as scripts.
    const int major = shellVersion.section(u'.', 0, 0).toInt();
    if (major < 43) return std::nullopt;
    const QString variant =
        major >= 45 ? QStringLiteral("gnome-shell-45") : QStringLiteral("gnome-shell-43");
    const QDir dir(programDir);
    for (const QString& base :
         {QStringLiteral("../share/glimmo/companion"), QStringLiteral("companion")}) {
        const QString path =
            QDir::cleanPath(dir.filePath(base + u'/' + variant + u'/' + QLatin1String(uuid)));
        if (QFile::exists(path + QStringLiteral("/metadata.json"))) return path;
    }
    return std::nullopt;
}

std::optional<QString> ShellCompanion::withUuid(const QString& enabledList) {
    QStringList ids;
    static const QRegularExpression quoted(QStringLiteral("'([^']*)'"));
    for (auto it = quoted.globalMatch(enabledList); it.hasNext();) ids << it.next().captured(1);
    if (ids.contains(QLatin1String(uuid))) return std::nullopt;
    ids << QLatin1String(uuid);
    QStringList items;
    for (const QString& id : ids) items << u'\'' + id + u'\'';
    return u'[' + items.join(QStringLiteral(", ")) + u']';
}

void ShellCompanion::prepare() {
    const auto version = shellVersion();
    if (!version) return;
    const auto source = sourceFor(*version, QCoreApplication::applicationDirPath());
    if (!source) {
        if (!said_)
            glimmo::log(
                QStringLiteral("no GNOME Shell companion for GNOME Shell %1").arg(*version));
        said_ = true;
        return;
    }
    const QString target =
        QDir(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation))
            .filePath(QStringLiteral("gnome-shell/extensions/") + QLatin1String(uuid));
    bool failed = false;
    const bool changed = copyChanged(QDir(*source), QDir(target), failed);
    const auto enabled = gsettings({"get", "org.gnome.shell", "enabled-extensions"});
    const auto list = enabled ? withUuid(*enabled) : std::nullopt;
    if (list && !gsettings({"set", "org.gnome.shell", "enabled-extensions", *list})) failed = true;
    if (gsettings({"get", "org.gnome.shell", "disable-user-extensions"}) == QLatin1String("true") &&
        !said_)
        glimmo::log(
            QStringLiteral("GNOME's extensions are switched off: the bubble stays at "
                           "the bottom of the screen for native windows"));
    if (failed && !said_)
        glimmo::log(QStringLiteral("the GNOME Shell companion could not be set up"));
    said_ = true;
    // A companion already running (an older copy, or one installed elsewhere) serves until the
    // next log-in loads this one.
    const bool running = QDBusConnection::sessionBus().interface()->isServiceRegistered(
        QStringLiteral("io.glimmo.Companion"));
    if ((changed || list) && !running) {
        // A shell that knows the extension already switches it on at once; a new or changed
        // one is read at the next log-in.
        QDBusInterface extensions(QStringLiteral("org.gnome.Shell.Extensions"),
                                  QStringLiteral("/org/gnome/Shell/Extensions"),
                                  QStringLiteral("org.gnome.Shell.Extensions"),
                                  QDBusConnection::sessionBus());
        const QDBusReply<bool> on =
            changed ? QDBusReply<bool>()
                    : extensions.call(QStringLiteral("EnableExtension"), QLatin1String(uuid));
        if (changed || !on.isValid() || !on.value()) {
            awaitsLogin_ = true;
            glimmo::log(QStringLiteral(
                "the GNOME Shell companion is installed: GNOME loads it at the next log-in"));
        }
    }
}

}  // namespace linuxdesk
