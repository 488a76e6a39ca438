#pragma once
// One kind of application: the unit the user switches on or off as a whole.

#include <QString>
#include <QStringList>

namespace rules {

struct AppKind {
    QString id;      // stable key of the "kindOn" map
    QString title;   // shown in the menu and the apps window
    QString symbol;  // name of the symbol drawn beside the title
    bool defaultOn = false;
    bool locked = false;  // always off, cannot be switched on
    QStringList apps;     // application identifiers, in display order
    QStringList sites;    // bare host names, in display order

    bool operator==(const AppKind&) const = default;
};

}  // namespace rules
