#pragma once
// Tab, Esc, Up and Down taken from every window through KDE's global shortcuts (KGlobalAccel,
// served by KWin itself in Plasma's Wayland session): KWin runs a matching shortcut and the
// window never sees the key. They are session shortcuts ("_k_session:" names), which KDE never
// writes into the user's kglobalshortcutsrc, and are removed again as soon as they are not
// wanted, so nothing of Glimmo's stays in the user's shortcuts.

#include <QObject>
#include <QString>
#include <QStringList>

namespace linuxdesk {

class KdeShortcuts : public QObject {
    Q_OBJECT
public:
    // "Tab", "Escape", "Up", "Down".
    static const QStringList keys;

    explicit KdeShortcuts(QObject* parent = nullptr);
    ~KdeShortcuts() override;

    // Takes KEY (one of keys) until given back; false when KDE refused it (another shortcut
    // holds the key, or no KGlobalAccel answers).
    bool take(const QString& key);
    void giveBack(const QString& key);
    void giveBackAll();

signals:
    void pressed(const QString& key);

private slots:
    void onPressed(const QString& component, const QString& shortcut, qlonglong timestamp);

private:
    QStringList taken_;
};

}  // namespace linuxdesk
