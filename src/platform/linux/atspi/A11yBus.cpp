#include "platform/linux/atspi/A11yBus.h"

#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

#include "platform/linux/x11/AccessibilityBusAtom.h"

namespace linuxdesk {

namespace {

const QString kService = QStringLiteral("org.a11y.Bus");
const QString kPath = QStringLiteral("/org/a11y/bus");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kStatus = QStringLiteral("org.a11y.Status");
constexpr int kBusKeepMs = 2000;
constexpr int kCallTimeoutMs = 1000;

}  // namespace

bool A11yBus::enabled() {
    if (!age_.isValid() || age_.elapsed() > kBusKeepMs) {
        last_ = query();
        age_.start();
    }
    return last_;
}

bool A11yBus::query() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return false;
    QDBusMessage address = QDBusMessage::createMethodCall(
        kService, kPath, QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    QDBusReply<QString> where = bus.call(address, QDBus::Block, kCallTimeoutMs);
    if (!where.isValid() || where.value().isEmpty()) return false;
    QDBusMessage get =
        QDBusMessage::createMethodCall(kService, kPath, kProperties, QStringLiteral("Get"));
    get << kStatus << QStringLiteral("IsEnabled");
    QDBusReply<QVariant> on = bus.call(get, QDBus::Block, kCallTimeoutMs);
    const bool enabled = on.isValid() && on.value().toBool();
    // Once for each bus: Qt 5 applications started from now on find it (see x11's
    // AccessibilityBusAtom).
    if (enabled && where.value() != published_ && x11::publishAccessibilityBus(where.value()))
        published_ = where.value();
    return enabled;
}

void A11yBus::enable() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    QDBusMessage set =
        QDBusMessage::createMethodCall(kService, kPath, kProperties, QStringLiteral("Set"));
    set << kStatus << QStringLiteral("IsEnabled") << QVariant::fromValue(QDBusVariant(true));
    bus.call(set, QDBus::Block, kCallTimeoutMs);
    age_.invalidate();
}

}  // namespace linuxdesk
