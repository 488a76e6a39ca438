#pragma once
// The companion inside GNOME Shell (the extension in companion/gnome-shell), over the session
// bus. Calls are short and answered by the compositor itself, which is never a stuck
// application; a compositor that does not answer in time counts as no companion for that call.

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QElapsedTimer>

#include "platform/linux/wayland/Companion.h"

namespace linuxdesk {

class GnomeCompanion : public Companion {
    Q_OBJECT
public:
    static const char* const serviceName;

    explicit GnomeCompanion(QObject* parent = nullptr);

    bool present() const override { return present_; }
    bool drawsMenu() const override { return true; }
    // Kept for a moment, since placing the bubble asks several times in a row.
    std::optional<Window> focusedWindow() override;
    void passKey(const QString& key) override;
    void pressShortcut(const QString& shortcut) override;
    void setMenu(const QString& iconPath, const QString& rowsJson) override;
    void hideMenu() override;

protected:
    void takeKeys(bool wanted) override;

private slots:
    void onKeyPressed(const QString& key);
    void onMenuOpening();
    void onMenuActivated(int row);

private:
    void appeared();
    void greeted(const QDBusMessage& answer);
    void call(const char* method, const QVariantList& args = {});

    QDBusServiceWatcher watcher_;
    bool present_ = false;
    std::optional<Window> window_;
    QElapsedTimer windowAge_;
};

}  // namespace linuxdesk
