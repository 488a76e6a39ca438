#include "platform/linux/wayland/GnomeCompanion.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusReply>

#include "main/Log.h"

namespace linuxdesk {

namespace {

constexpr char kPath[] = "/io/glimmo/Companion";
constexpr char kInterface[] = "io.glimmo.Companion";
// The compositor answers from its own main loop; longer than this and the bubble is better
// placed without it than late.
constexpr int kCallTimeoutMs = 250;
constexpr int kWindowKeepMs = 100;

double number(const QVariantMap& map, const char* key) {
    return map.value(QLatin1String(key)).toDouble();
}

}  // namespace

const char* const GnomeCompanion::serviceName = "io.glimmo.Companion";

GnomeCompanion::GnomeCompanion(QObject* parent)
    : Companion(parent),
      watcher_(
          QString::fromLatin1(serviceName), QDBusConnection::sessionBus(),
          QDBusServiceWatcher::WatchForRegistration | QDBusServiceWatcher::WatchForUnregistration) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    const QString service = QString::fromLatin1(serviceName);
    bus.connect(service, kPath, kInterface, QStringLiteral("KeyPressed"), this,
                SLOT(onKeyPressed(QString)));
    bus.connect(service, kPath, kInterface, QStringLiteral("MenuOpening"), this,
                SLOT(onMenuOpening()));
    bus.connect(service, kPath, kInterface, QStringLiteral("MenuActivated"), this,
                SLOT(onMenuActivated(int)));
    connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this, [this] { appeared(); });
    connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this, [this] {
        present_ = false;
        window_.reset();
        glimmo::log(QStringLiteral("the compositor companion left"));
        emit presentChanged(false);
    });
    // One already there is asked at once, so that the tray knows at start whether the top bar
    // can stand in for it.
    if (bus.interface()->isServiceRegistered(service)) {
        QDBusMessage hello =
            QDBusMessage::createMethodCall(service, kPath, kInterface, QStringLiteral("Hello"));
        greeted(bus.call(hello, QDBus::Block, kCallTimeoutMs * 4));
    }
}

void GnomeCompanion::greeted(const QDBusMessage& answer) {
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().size() < 3) {
        glimmo::log(QStringLiteral("the compositor companion does not answer: %1")
                        .arg(answer.errorMessage()));
        return;
    }
    const QVariantList a = answer.arguments();
    glimmo::log(QStringLiteral("the compositor companion answers (%1 %2)")
                    .arg(a[1].toString(), a[2].toString()));
    present_ = true;
    // A shell restarted while keys were wanted has forgotten it.
    if (keysWanted()) call("WantKeys", {true});
    emit presentChanged(true);
}

void GnomeCompanion::appeared() {
    QDBusMessage hello = QDBusMessage::createMethodCall(QString::fromLatin1(serviceName), kPath,
                                                        kInterface, QStringLiteral("Hello"));
    auto* pending = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(hello, kCallTimeoutMs * 4), this);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending] {
        pending->deleteLater();
        greeted(pending->reply());
    });
}

void GnomeCompanion::call(const char* method, const QVariantList& args) {
    if (!present_) return;
    QDBusMessage m = QDBusMessage::createMethodCall(QString::fromLatin1(serviceName), kPath,
                                                    kInterface, QLatin1String(method));
    m.setArguments(args);
    // Nothing waits for these: the compositor applies them in order.
    QDBusConnection::sessionBus().asyncCall(m, kCallTimeoutMs * 4);
}

std::optional<Companion::Window> GnomeCompanion::focusedWindow() {
    if (!present_) return std::nullopt;
    if (windowAge_.isValid() && windowAge_.elapsed() < kWindowKeepMs) return window_;
    QDBusMessage m = QDBusMessage::createMethodCall(QString::fromLatin1(serviceName), kPath,
                                                    kInterface, QStringLiteral("FocusedWindow"));
    const QDBusReply<QVariantMap> reply =
        QDBusConnection::sessionBus().call(m, QDBus::Block, kCallTimeoutMs);
    windowAge_.start();
    window_.reset();
    if (!reply.isValid() || reply.value().isEmpty()) return window_;
    const QVariantMap w = reply.value();
    window_ = Window{w.value(QStringLiteral("pid")).toLongLong(),
                     w.value(QStringLiteral("wayland")).toBool(),
                     {number(w, "x"), number(w, "y"), number(w, "width"), number(w, "height")},
                     {number(w, "bufferX"), number(w, "bufferY"), number(w, "bufferWidth"),
                      number(w, "bufferHeight")},
                     w.contains(QStringLiteral("scale")) ? number(w, "scale") : 1.0};
    return window_;
}

void GnomeCompanion::takeKeys(bool wanted) {
    call("WantKeys", {wanted});
}

void GnomeCompanion::passKey(const QString& key) {
    call("PassKey", {key});
}

void GnomeCompanion::pressShortcut(const QString& shortcut) {
    call("PressShortcut", {shortcut});
}

void GnomeCompanion::setMenu(const QString& iconPath, const QString& rowsJson) {
    call("SetMenu", {iconPath, rowsJson});
}

void GnomeCompanion::hideMenu() {
    call("HideMenu");
}

void GnomeCompanion::onKeyPressed(const QString& key) {
    taken(key);
}

void GnomeCompanion::onMenuOpening() {
    emit menuOpening();
}

void GnomeCompanion::onMenuActivated(int row) {
    emit menuActivated(row);
}

}  // namespace linuxdesk
