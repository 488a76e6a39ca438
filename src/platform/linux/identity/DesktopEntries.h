#pragma once
// The installed applications' desktop entries (XDG "*.desktop" files): what names, icons and
// launches an application, and what its windows' WM_CLASS is expected to be.

#include <QByteArray>
#include <QElapsedTimer>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace linuxdesk {

struct DesktopEntry {
    QString id;  // file name without ".desktop", subfolders joined by '-'
    QString path;
    QString name;  // localized
    QString icon;
    QString startupWmClass;
    QString exec;
    bool hidden = false;  // NoDisplay or Hidden
};

// One [Desktop Entry] group read from text; absent when it is not an application entry.
// locale is "de_DE" style; Name[de_DE], then Name[de], then Name.
std::optional<DesktopEntry> parseDesktopEntry(const QByteArray& content, const QString& id,
                                              const QString& locale);

class DesktopEntries {
public:
    // Every entry, the first of one id in the XDG order winning. Scanned again at most once
    // a minute, since applications are installed while Glimmo runs.
    const std::vector<DesktopEntry>& all();
    std::optional<DesktopEntry> byId(const QString& id);
    // The entry whose StartupWMClass is one of these (case-insensitive).
    std::optional<DesktopEntry> byWmClass(const QStringList& classes);

    // The folders searched, most important first; the first is the user's own.
    static QStringList folders();
    // The user's own folder: $XDG_DATA_HOME/applications.
    static QString userFolder();
    // The desktop id of an entry file found under folder: its path below it without
    // ".desktop", subfolders joined by '-'.
    static QString idOf(const QString& folder, const QString& path);
    // An icon name resolved to a file, or the path itself when it is one; empty if none.
    static QString iconPath(const QString& icon);

private:
    void scan();

    std::vector<DesktopEntry> entries_;
    QElapsedTimer age_;
};

}  // namespace linuxdesk
