#include "platform/linux/identity/DesktopEntries.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <set>

#include "main/Paths.h"

namespace linuxdesk {

namespace {

constexpr int kRescanMs = 60000;

QStringList dataDirs() {
    QStringList dirs;
    const QString home = qEnvironmentVariable("XDG_DATA_HOME");
    dirs << (home.isEmpty() ? glimmo::homeDir() + "/.local/share" : home);
    QString system = qEnvironmentVariable("XDG_DATA_DIRS");
    if (system.isEmpty()) system = QStringLiteral("/usr/local/share:/usr/share");
    dirs << system.split(':', Qt::SkipEmptyParts);
    return dirs;
}

}  // namespace

std::optional<DesktopEntry> parseDesktopEntry(const QByteArray& content, const QString& id,
                                              const QString& locale) {
    DesktopEntry e;
    e.id = id;
    bool inGroup = false, application = false;
    QString name, nameLang, nameFull;
    const QString lang = locale.section('_', 0, 0);
    for (const QByteArray& raw : content.split('\n')) {
        const QString line = QString::fromUtf8(raw).trimmed();
        if (line.isEmpty() || line.startsWith('#')) continue;
        if (line.startsWith('[')) {
            inGroup = line == QLatin1String("[Desktop Entry]");
            continue;
        }
        if (!inGroup) continue;
        const int eq = line.indexOf('=');
        if (eq <= 0) continue;
        const QString key = line.left(eq).trimmed();
        const QString value = line.mid(eq + 1).trimmed();
        if (key == QLatin1String("Type"))
            application = value == QLatin1String("Application");
        else if (key == QLatin1String("Name"))
            name = value;
        else if (!locale.isEmpty() && key == QStringLiteral("Name[%1]").arg(locale))
            nameFull = value;
        else if (!lang.isEmpty() && key == QStringLiteral("Name[%1]").arg(lang))
            nameLang = value;
        else if (key == QLatin1String("Icon"))
            e.icon = value;
        else if (key == QLatin1String("StartupWMClass"))
            e.startupWmClass = value;
        else if (key == QLatin1String("Exec"))
            e.exec = value;
        else if ((key == QLatin1String("NoDisplay") || key == QLatin1String("Hidden")) &&
                 value == QLatin1String("true"))
            e.hidden = true;
    }
    if (!application || name.isEmpty()) return std::nullopt;
    e.name = !nameFull.isEmpty() ? nameFull : !nameLang.isEmpty() ? nameLang : name;
    return e;
}

QString DesktopEntries::userFolder() {
    return dataDirs().first() + "/applications";
}

QString DesktopEntries::idOf(const QString& folder, const QString& path) {
    QString id = QDir(folder).relativeFilePath(path);
    id.chop(8);  // ".desktop"
    return id.replace('/', '-');
}

QStringList DesktopEntries::folders() {
    QStringList out;
    for (const QString& d : dataDirs()) out << d + "/applications";
    out << glimmo::homeDir() + "/.local/share/flatpak/exports/share/applications"
        << "/var/lib/flatpak/exports/share/applications"
        << "/var/lib/snapd/desktop/applications";
    out.removeDuplicates();
    return out;
}

void DesktopEntries::scan() {
    entries_.clear();
    std::set<QString> seen;
    const QString locale = QLocale::system().name();
    for (const QString& folder : folders()) {
        QDirIterator it(folder, {"*.desktop"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            const QString id = idOf(folder, path);
            if (!seen.insert(id).second) continue;
            QFile f(path);
            if (!f.open(QIODevice::ReadOnly)) continue;
            if (auto e = parseDesktopEntry(f.read(256 * 1024), id, locale)) {
                e->path = path;
                entries_.push_back(*e);
            }
        }
    }
    age_.start();
}

const std::vector<DesktopEntry>& DesktopEntries::all() {
    if (!age_.isValid() || age_.elapsed() > kRescanMs) scan();
    return entries_;
}

std::optional<DesktopEntry> DesktopEntries::byId(const QString& id) {
    if (id.isEmpty()) return std::nullopt;
    for (const auto& e : all())
        if (e.id.compare(id, Qt::CaseInsensitive) == 0) return e;
    return std::nullopt;
}

std::optional<DesktopEntry> DesktopEntries::byWmClass(const QStringList& classes) {
    for (const auto& e : all()) {
        if (e.startupWmClass.isEmpty()) continue;
        for (const QString& c : classes)
            if (!c.isEmpty() && e.startupWmClass.compare(c, Qt::CaseInsensitive) == 0) return e;
    }
    return std::nullopt;
}

QString DesktopEntries::iconPath(const QString& icon) {
    if (icon.isEmpty()) return {};
    if (QFileInfo(icon).isAbsolute()) return QFileInfo::exists(icon) ? icon : QString();
    static const char* sizes[] = {"256x256", "128x128", "96x96", "64x64", "48x48", "scalable"};
    for (const QString& d : dataDirs()) {
        for (const char* size : sizes) {
            for (const char* ext : {".png", ".svg"}) {
                const QString p = QStringLiteral("%1/icons/hicolor/%2/apps/%3%4")
                                      .arg(d, QLatin1String(size), icon, QLatin1String(ext));
                if (QFileInfo::exists(p)) return p;
            }
        }
    }
    for (const char* ext : {".png", ".svg", ".xpm"}) {
        const QString p = QStringLiteral("/usr/share/pixmaps/%1%2").arg(icon, QLatin1String(ext));
        if (QFileInfo::exists(p)) return p;
    }
    return {};
}

}  // namespace linuxdesk
