#include "platform/linux/wayland/CompanionMenu.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

#include "platform/linux/wayland/Companion.h"

namespace linuxdesk {

CompanionMenu::CompanionMenu(Companion& companion) : companion_(companion) {
    connect(&companion_, &Companion::menuOpening, this, [this] {
        if (opening_) opening_();
    });
    connect(&companion_, &Companion::menuActivated, this, [this](int row) {
        if (chosen_) chosen_(row);
    });
    connect(&companion_, &Companion::presentChanged, this, [this](bool present) {
        // A shell that came back has no icon yet: the next show sends everything again.
        iconKey_ = 0;
        if (available_) available_(present && companion_.drawsMenu());
    });
}

CompanionMenu::~CompanionMenu() {
    if (shown_) companion_.hideMenu();
    if (!iconPath_.isEmpty()) QFile::remove(iconPath_);
}

bool CompanionMenu::available() const {
    return companion_.present() && companion_.drawsMenu();
}

QString CompanionMenu::rowsJson(const std::vector<platform::MenuItem>& items) {
    QJsonArray rows;
    for (const platform::MenuItem& item : items)
        rows.append(QJsonObject{{"title", item.title},
                                {"separator", item.separator},
                                {"checkable", item.checkable},
                                {"checked", item.checked},
                                {"enabled", item.enabled}});
    return QString::fromUtf8(QJsonDocument(rows).toJson(QJsonDocument::Compact));
}

void CompanionMenu::show(const QImage& icon, const std::vector<platform::MenuItem>& items) {
    if (!companion_.present()) return;
    // The shell reads the file when it shows it; a changed icon gets a new name, or the
    // shell's cache keeps showing the old one.
    if (icon.cacheKey() != iconKey_) {
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
        const QString path = QDir(folder).filePath(QStringLiteral("glimmo-icon-%1-%2.png")
                                                       .arg(QCoreApplication::applicationPid())
                                                       .arg(icon.cacheKey()));
        if (icon.save(path, "PNG")) {
            if (!iconPath_.isEmpty()) QFile::remove(iconPath_);
            iconPath_ = path;
            iconKey_ = icon.cacheKey();
        }
    }
    companion_.setMenu(iconPath_, rowsJson(items));
    shown_ = true;
}

void CompanionMenu::hide() {
    if (shown_) companion_.hideMenu();
    shown_ = false;
}

}  // namespace linuxdesk
