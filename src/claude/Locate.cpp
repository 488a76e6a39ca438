#include "claude/Locate.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>

#include "claude/VersionOrder.h"
#include "main/Paths.h"

namespace claude {
namespace {

// Every entry of a folder, hidden ones included, in the order the listing gives them.
QStringList entries(const QString& folder) {
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
}

QStringList newestFirst(QStringList names) {
    std::stable_sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
        return compareNumericAware(a, b) > 0;
    });
    return names;
}

QString overridePath() {
    QFile file(glimmo::supportDir() + QStringLiteral("/claude-path"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(file.readAll()).trimmed();
}

QStringList candidates() {
    const QString home = glimmo::homeDir();
    QStringList out{overridePath(), home + QStringLiteral("/.local/bin/claude"),
                    home + QStringLiteral("/.claude/local/claude"),
                    QStringLiteral("/opt/homebrew/bin/claude"),
                    QStringLiteral("/usr/local/bin/claude")};

    const QString nvm = home + QStringLiteral("/.nvm/versions/node");
    for (const QString& version : newestFirst(entries(nvm)))
        out << nvm + QLatin1Char('/') + version + QStringLiteral("/bin/claude");

    // The copies the Claude desktop application keeps; absent on Linux, probed all the same.
    const QString base = home + QStringLiteral("/Library/Application Support/Claude/claude-code");
    for (const QString& version : newestFirst(entries(base))) {
        const QString folder = base + QLatin1Char('/') + version;
        for (const QString& build : entries(folder))
            out << folder + QLatin1Char('/') + build +
                       QStringLiteral("/claude.app/Contents/MacOS/claude");
    }
    return out;
}

// Symbolic links are followed; a folder is not a program even though it has the x bit.
bool isExecutableFile(const QString& path) {
    const QFileInfo info(path);
    return info.isFile() && info.isExecutable();
}

// The path with its last component removed: "/a/b/claude" gives "/a/b", "/claude" gives "/".
QString parentFolder(QString path) {
    while (path.size() > 1 && path.endsWith(QLatin1Char('/'))) path.chop(1);
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    if (slash < 0) return {};
    if (slash == 0) return QStringLiteral("/");
    return path.left(slash);
}

}  // namespace

std::optional<QString> claudePath() {
    for (const QString& candidate : candidates()) {
        if (!candidate.isEmpty() && isExecutableFile(candidate)) return candidate;
    }
    return std::nullopt;
}

QProcessEnvironment claudeEnv(const QString& path) {
    // Without the display and session bus variables claude cannot open a browser to sign in.
    static const char* const kept[] = {"HOME",
                                       "USER",
                                       "LOGNAME",
                                       "SHELL",
                                       "TMPDIR",
                                       "LANG",
                                       "__CF_USER_TEXT_ENCODING",
                                       "SSH_AUTH_SOCK",
                                       "DISPLAY",
                                       "WAYLAND_DISPLAY",
                                       "XDG_RUNTIME_DIR",
                                       "DBUS_SESSION_BUS_ADDRESS"};
    const QProcessEnvironment parent = QProcessEnvironment::systemEnvironment();
    QProcessEnvironment env;
    for (const char* name : kept) {
        const QString key = QLatin1String(name);
        if (parent.contains(key)) env.insert(key, parent.value(key));
    }
    env.insert(
        QStringLiteral("PATH"),
        parentFolder(path) + QStringLiteral(":/usr/local/bin:/opt/homebrew/bin:/usr/bin:/bin"));
    return env;
}

}  // namespace claude
