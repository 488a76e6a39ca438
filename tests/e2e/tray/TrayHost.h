#pragma once
// A tray for the tests: a StatusNotifierWatcher on the session bus that takes the items that
// register, and a client of an item's menu (com.canonical.dbusmenu): open it, read its rows,
// click one.

#include <QImage>
#include <QObject>
#include <QStringList>
#include <optional>

struct TrayRow {
    int id = 0;
    QString label;  // empty for a separator
    bool separator = false;
    bool enabled = true;
    bool checked = false;
};

class TrayHost : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hostRegistered)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)
public:
    // Owns org.kde.StatusNotifierWatcher; false when the bus refuses.
    bool start();

    QStringList items() const { return items_; }
    bool hostRegistered() const { return true; }
    int protocolVersion() const { return 0; }

    // The menu of the item, after telling it that it is about to open; absent when it does not
    // answer.
    // The menu at `path`, or at the one the item names now when none is given.
    std::optional<QList<TrayRow>> openMenu(const QString& service, QString path = {});
    // Clicks the row with that label; false when there is none or the item did not answer.
    bool click(const QString& service, const QString& label);
    // How long a call to the item may take before it counts as unanswered (5 s at first).
    static void setTimeout(int ms);
    // The item's largest icon.
    QImage icon(const QString& service);

public slots:
    void RegisterStatusNotifierItem(const QString& service);
    void RegisterStatusNotifierHost(const QString& service);

signals:
    void StatusNotifierItemRegistered(const QString& service);
    void StatusNotifierItemUnregistered(const QString& service);
    void StatusNotifierHostRegistered();

private:
    QString menuPath(const QString& service);

    QStringList items_;
};
