#include "platform/linux/identity/ReadableLaunchers.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLocale>
#include <QSaveFile>
#include <set>

#include "main/Log.h"
#include "platform/LinuxApps.h"
#include "platform/linux/identity/DesktopEntries.h"

namespace linuxdesk {

namespace {

// "basic" is the lightest of Chromium's modes that still exposes editable fields with their
// caret and selection (the cost of each mode is in BENCHMARKS.md).
const QString kFlag = QStringLiteral("--force-renderer-accessibility=basic");
const QString kJoin = QStringLiteral("ACCESSIBILITY_ENABLED=1");
const QByteArray kMark = "X-Glimmo-Prepared=";

// Products built on Chromium's renderer, by the table's identifiers.
bool pagesBehindFlag(const QString& app) {
    static const std::set<QString> apps{
        // The Chromium family.
        "com.google.Chrome", "com.google.Chrome.canary", "com.brave.Browser",
        "com.microsoft.edgemac", "com.vivaldi.Vivaldi", "com.operasoftware.Opera",
        // Electron applications people write in.
        "com.tinyspeck.slackmacgap", "com.microsoft.teams2", "com.hnc.Discord", "org.signal.Signal",
        "im.riot.Riot", "com.microsoft.Outlook", "com.getmailspring.Mailspring", "notion.id",
        "md.obsidian", "com.linear", "com.logseq.Logseq", "net.cozic.joplin_desktop",
        "com.anthropic.claudefordesktop", "com.microsoft.VSCode", "com.todesktop.230313mzl4w4u92"};
    return apps.contains(app);
}

// A command line cut where the desktop entry format cuts it (at blanks outside double quotes),
// each argument kept as written so that the line is put back together unchanged.
QStringList arguments(const QString& exec) {
    QStringList out;
    QString current;
    bool quoted = false, escaped = false;
    for (const QChar c : exec) {
        if (escaped) {
            current += c;
            escaped = false;
        } else if (c == u'\\') {
            current += c;
            escaped = true;
        } else if (c == u'"') {
            current += c;
            quoted = !quoted;
        } else if (c.isSpace() && !quoted) {
            if (!current.isEmpty()) out << current;
            current.clear();
        } else {
            current += c;
        }
    }
    if (!current.isEmpty()) out << current;
    return out;
}

QString baseName(QString argument) {
    argument.remove(u'"');
    return argument.section(u'/', -1);
}

bool isEnv(const QString& argument) {
    return baseName(argument) == QLatin1String("env");
}

// Where the program stands in a command line: after "env" and its assignments, if any.
qsizetype programAt(const QStringList& args) {
    qsizetype i = 0;
    if (!args.isEmpty() && isEnv(args[0]))
        for (++i; i < args.size() && args[i].contains(u'=') && !args[i].startsWith(u'-');) ++i;
    return i;
}

QString programOf(const QString& exec) {
    const QStringList args = arguments(exec);
    const qsizetype i = programAt(args);
    return i < args.size() ? baseName(args[i]) : QString();
}

bool isGlimmos(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) && f.readAll().contains(kMark);
}

// The entries in the user's own folder, each read once: Glimmo's copies (written at its top
// only), and the ids of the user's own entries.
struct UserEntries {
    std::set<QString> copies;  // paths
    std::set<QString> ownIds;
};

UserEntries userEntries(const QString& folder) {
    UserEntries out;
    const QString top = QDir(folder).absolutePath();
    QDirIterator it(folder, {"*.desktop"}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (!isGlimmos(path))
            out.ownIds.insert(DesktopEntries::idOf(folder, path));
        else if (it.fileInfo().absolutePath() == top)
            out.copies.insert(path);
    }
    return out;
}

// The ids of every installed application entry outside the user's own folder, the first of
// an id in the XDG order winning, with its file; the user's own entries hide the installed
// ones of their id.
std::vector<std::pair<QString, QString>> installedEntries(const UserEntries& user) {
    std::vector<std::pair<QString, QString>> out;
    std::set<QString> seen = user.ownIds;
    const QString userFolder = DesktopEntries::userFolder();
    for (const QString& folder : DesktopEntries::folders()) {
        if (QDir(folder) == QDir(userFolder)) continue;
        QDirIterator it(folder, {"*.desktop"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            const QString id = DesktopEntries::idOf(folder, path);
            if (seen.insert(id).second) out.emplace_back(id, path);
        }
    }
    return out;
}

// The rules' identifier of a Chromium-based product installed under this entry; empty for any
// other application.
QString productOf(const QString& id, const DesktopEntry& entry) {
    const QStringList names{id, id.section(u'_', 0, 0), entry.startupWmClass,
                            programOf(entry.exec)};
    for (const QString& name : names) {
        if (name.isEmpty()) continue;
        if (const platform::LinuxApp* app = platform::linuxAppNamed(name))
            return pagesBehindFlag(app->app) ? app->app : QString();
    }
    return {};
}

}  // namespace

std::optional<QString> readableExec(const QString& exec) {
    QStringList args = arguments(exec);
    for (const QString& a : args)
        if (a.startsWith(QLatin1String("--force-renderer-accessibility"))) return std::nullopt;
    const bool env = !args.isEmpty() && isEnv(args[0]);
    qsizetype i = programAt(args);
    if (i >= args.size()) return std::nullopt;
    // "flatpak run [options] APP": the flag is the application's, after its id.
    if (baseName(args[i]) == QLatin1String("flatpak")) {
        const qsizetype run = args.indexOf(QStringLiteral("run"), i + 1);
        if (run < 0) return std::nullopt;
        for (i = run + 1; i < args.size() && args[i].startsWith(u'-');) ++i;
        if (i >= args.size()) return std::nullopt;
    }
    args.insert(i + 1, kFlag);
    if (env)
        args.insert(1, kJoin);
    else
        args = QStringList{QStringLiteral("env"), kJoin} + args;
    return args.join(u' ');
}

std::optional<QByteArray> readableEntry(const QByteArray& original, const QString& originalPath) {
    QByteArrayList lines = original.split('\n');
    bool changed = false;
    qsizetype mainGroup = -1;
    for (qsizetype n = 0; n < lines.size(); ++n) {
        const QByteArray line = lines[n].trimmed();
        if (line == "[Desktop Entry]") mainGroup = n;
        if (!line.startsWith("Exec=")) continue;
        if (const auto exec = readableExec(QString::fromUtf8(line.mid(5)))) {
            lines[n] = "Exec=" + exec->toUtf8();
            changed = true;
        }
    }
    if (!changed || mainGroup < 0) return std::nullopt;
    // A launcher started over D-Bus would never run the command line.
    lines.removeIf([](const QByteArray& l) { return l.trimmed().startsWith("DBusActivatable="); });
    lines.insert(mainGroup + 1, kMark + originalPath.toUtf8());
    return lines.join('\n');
}

std::vector<QString> ReadableLaunchers::prepare(
    const std::function<bool(const QString& app)>& wanted) {
    const QString target = DesktopEntries::userFolder();
    const QString locale = QLocale::system().name();
    const UserEntries user = userEntries(target);
    std::set<QString> kept;
    std::set<QString> names;
    for (const auto& [id, path] : installedEntries(user)) {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly)) continue;
        const QByteArray original = f.read(256 * 1024);
        const auto entry = parseDesktopEntry(original, id, locale);
        if (!entry || entry->hidden) continue;
        const QString app = productOf(id, *entry);
        if (app.isEmpty() || !wanted(app)) continue;
        const auto readable = readableEntry(original, path);
        if (!readable) continue;
        const QString copy = target + u'/' + id + QStringLiteral(".desktop");
        kept.insert(copy);
        QFile current(copy);
        if (!current.open(QIODevice::ReadOnly) || current.readAll() != *readable) {
            QDir().mkpath(target);
            QSaveFile out(copy);
            if (!out.open(QIODevice::WriteOnly) || out.write(*readable) < 0 || !out.commit()) {
                glimmo::log(QStringLiteral("could not write %1").arg(copy));
                continue;
            }
        }
        names.insert(entry->name);
    }
    // Copies of applications switched off or uninstalled since.
    for (const QString& path : user.copies)
        if (!kept.contains(path)) QFile::remove(path);
    prepared_.assign(names.begin(), names.end());
    return prepared_;
}

}  // namespace linuxdesk
