#include "platform/linux/identity/DesktopSettings.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

#include "main/Paths.h"

namespace linuxdesk {

namespace {

QStringList currentDesktops() {
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").toLower().split(':', Qt::SkipEmptyParts);
}

QStringList split(const QString& variable, const QString& fallback) {
    const QString value = qEnvironmentVariable(variable.toLatin1().constData());
    return (value.isEmpty() ? fallback : value).split(':', Qt::SkipEmptyParts);
}

// The mimeapps.list files, most important first: per-desktop before plain in each folder, the
// user's config, then the system's config, then the data folders' applications/.
QStringList listFiles() {
    QStringList folders;
    QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (config.isEmpty()) config = glimmo::homeDir() + QStringLiteral("/.config");
    folders << config << split(QStringLiteral("XDG_CONFIG_DIRS"), QStringLiteral("/etc/xdg"));
    QString data = qEnvironmentVariable("XDG_DATA_HOME");
    if (data.isEmpty()) data = glimmo::homeDir() + QStringLiteral("/.local/share");
    for (const QString& d :
         QStringList{data} +
             split(QStringLiteral("XDG_DATA_DIRS"), QStringLiteral("/usr/local/share:/usr/share")))
        folders << d + QStringLiteral("/applications");
    QStringList files;
    for (const QString& folder : folders) {
        for (const QString& desktop : currentDesktops())
            files << folder + QLatin1Char('/') + desktop + QStringLiteral("-mimeapps.list");
        files << folder + QStringLiteral("/mimeapps.list");
    }
    return files;
}

std::optional<QString> defaultIn(const QString& path, const QString& mimeType) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) return std::nullopt;
    bool inDefaults = false;
    const QString key = mimeType + QLatin1Char('=');
    for (const QString& raw : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        const QString line = raw.trimmed();
        if (line.startsWith(QLatin1Char('['))) {
            inDefaults = line == QStringLiteral("[Default Applications]");
            continue;
        }
        if (!inDefaults || !line.startsWith(key)) continue;
        for (QString id : line.mid(key.size()).split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            id = id.trimmed();
            if (id.endsWith(QStringLiteral(".desktop"))) id.chop(8);
            if (!id.isEmpty()) return id;
        }
    }
    return std::nullopt;
}

bool startIfInstalled(const QString& program, const QStringList& args) {
    if (QStandardPaths::findExecutable(program).isEmpty()) return false;
    return QProcess::startDetached(program, args);
}

}  // namespace

std::optional<QString> defaultApplication(const QString& mimeType) {
    for (const QString& path : listFiles())
        if (auto id = defaultIn(path, mimeType)) return id;
    return std::nullopt;
}

bool openAccessibilitySettings() {
    const QStringList desktops = currentDesktops();
    const auto is = [&](const char* name) { return desktops.contains(QLatin1String(name)); };
    if (is("kde"))
        return startIfInstalled(QStringLiteral("systemsettings"), {QStringLiteral("kcm_access")}) ||
               startIfInstalled(QStringLiteral("systemsettings5"), {QStringLiteral("kcm_access")});
    if (is("gnome") || is("unity") || is("budgie"))
        return startIfInstalled(QStringLiteral("gnome-control-center"),
                                {QStringLiteral("universal-access")});
    return false;
}

}  // namespace linuxdesk
