#pragma once
// The one table of Linux applications. For each product: the names it shows up under on a
// Linux desktop (desktop entry ids, application ids, Flatpak ids, WM_CLASS values), and either
// the catalogue application it is or, for a product the catalogue does not list, the kind it
// belongs to. It sits beside the platform seams so that the desktop backend (which turns a
// window's names into one identifier) and the rules (which say what that identifier means) read
// the same table.
// Names are compared without regard to case, since window classes and desktop ids of one
// program differ in capitalisation.

#include <QString>
#include <QStringList>
#include <vector>

namespace platform {

// One product. app is the catalogue's identifier when kind is empty; otherwise the product's own
// identifier (its application id where it has one), and kind says where it belongs.
struct LinuxApp {
    QString app;
    QString kind;
    QStringList names;
    bool draftsReplies = false;  // a mail client whose replies are drafted as Mail's are
};

const std::vector<LinuxApp>& linuxAppTable();
// The product any of whose names (or identifier) is name; null when the table has none.
const LinuxApp* linuxAppNamed(const QString& name);

// The identifier the rules know an application by, from its names in order of preference: the
// catalogue's identifier, or a Linux-only product's own identifier, for the first name the
// table knows; else the first non-empty name; empty when every name is.
QString appIdFor(const QStringList& names);
// Every name of an application identifier on Linux: itself first, then the table's names of
// every product it stands for (to find it installed or running).
QStringList linuxNamesOf(const QString& app);

}  // namespace platform
