#include "platform/linux/session/ReadableLaunchers.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>
#include <set>

#include "main/Log.h"
#include "main/Paths.h"
#include "platform/LinuxApps.h"
#include "platform/linux/session/DesktopEntries.h"

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

QString programOf(const QString& exec) {
    const QStringList args = arguments(exec);
    qsizetype i = 0;
    if (i < args.size() && baseName(args[i]) == QLatin1String("env"))
        for (++i; i < args.size() && args[i].contains(u'=') && !args[i].startsWith(u'-');) ++i;
    return i < args.size() ? baseName(args[i]) : QString();
}

// The ids of every installed application entry outside the user's own folder, the first of
// an id in the XDG order winning, with its file.
std::vector<std::pair<QString, QString>> installedEntries(const QString& userFolder) {
    std::vector<std::pair<QString, QString>> out;
    std::set<QString> seen;
    for (const QString& folder : DesktopEntries::folders()) {
        const bool own = QDir(folder) == QDir(userFolder);
        QDirIterator it(folder, {"*.desktop"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            QString id = QDir(folder).relativeFilePath(path);
            id.chop(8);  // ".desktop"
            id.replace(u'/', u'-');
            // The user's own entries hide the installed ones of their id; Glimmo's copies don't.
            if (own) {
                QFile f(path);
                if (f.open(QIODevice::ReadOnly) && !f.readAll().contains(kMark)) seen.insert(id);
                continue;
            }
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

bool isGlimmos(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) && f.readAll().contains(kMark);
}

}  // namespace

std::optional<QString> readableExec(const QString& exec) {
    QStringList args = arguments(exec);
    for (const QString& a : args)
        if (a.startsWith(QLatin1String("--force-renderer-accessibility"))) return std::nullopt;
    qsizetype i = 0;
    const bool env = !args.isEmpty() && baseName(args[0]) == QLatin1String("env");
    if (env)
        for (++i; i < args.size() && args[i].contains(u'=') && !args[i].startsWith(u'-');) ++i;
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

QString ReadableLaunchers::folder() {
    const QString data = qEnvironmentVariable("XDG_DATA_HOME");
    return (data.isEmpty() ? glimmo::homeDir() + QStringLiteral("/.local/share") : data) +
           QStringLiteral("/applications");
}

std::vector<QString> ReadableLaunchers::prepare(
    const std::function<bool(const QString& app)>& wanted) {
    const QString target = folder();
    const QString locale = QLocale::system().name();
    std::set<QString> kept;
    std::set<QString> names;
    for (const auto& [id, path] : installedEntries(target)) {
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
        if (QFileInfo::exists(copy) && !isGlimmos(copy)) continue;
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
    QDirIterator it(target, {"*.desktop"}, QDir::Files);
    while (it.hasNext()) {
        const QString path = it.next();
        if (!kept.contains(path) && isGlimmos(path)) QFile::remove(path);
    }
    prepared_.assign(names.begin(), names.end());
    return prepared_;
}

}  // namespace linuxdesk
