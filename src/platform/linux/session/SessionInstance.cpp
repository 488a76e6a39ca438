#include "platform/linux/session/SessionInstance.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QTimer>

namespace linuxdesk {

const char* const SessionInstance::serviceName = "io.glimmo.Glimmo";
const char* const SessionInstance::objectPath = "/io/glimmo/Glimmo";

namespace {

constexpr int kFirstInstanceCallMs = 5000;

}  // namespace

SessionInstance::SessionInstance(QObject* parent) : QObject(parent) {}

SessionInstance::~SessionInstance() {
    if (!owner_) return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterObject(QLatin1String(objectPath));
    bus.unregisterService(QLatin1String(serviceName));
}

platform::SingleInstance::Claim SessionInstance::claim(std::function<void()> onReopen) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return Claim::Unknown;
    onReopen_ = std::move(onReopen);
    // The object first, so a start that sees the name can call it at once.
    if (!bus.registerObject(QLatin1String(objectPath), this, QDBusConnection::ExportAllSlots))
        return Claim::Unknown;
    if (bus.registerService(QLatin1String(serviceName))) {
        owner_ = true;
        return Claim::First;
    }
    bus.unregisterObject(QLatin1String(objectPath));
    return bus.interface() &&
                   bus.interface()->isServiceRegistered(QLatin1String(serviceName)).value()
               ? Claim::Running
               : Claim::Unknown;
}

namespace {

bool callRunning(const QString& method, const QVariantList& arguments) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return false;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QLatin1String(SessionInstance::serviceName), QLatin1String(SessionInstance::objectPath),
        QStringLiteral("org.freedesktop.Application"), method);
    call.setArguments(arguments);
    const QDBusMessage reply = bus.call(call, QDBus::Block, kFirstInstanceCallMs);
    return reply.type() == QDBusMessage::ReplyMessage;
}

}  // namespace

bool SessionInstance::reopenRunning() {
    return callRunning(QStringLiteral("Activate"), {QVariantMap()});
}

bool SessionInstance::quitRunning() {
    return callRunning(
        QStringLiteral("ActivateAction"),
        {QStringLiteral("quit"), QVariant::fromValue(QVariantList()), QVariantMap()});
}

void SessionInstance::Activate(const QVariantMap&) {
    // Answered first; the windows open in the next turn of the event loop.
    if (onReopen_) QTimer::singleShot(0, this, [this] { onReopen_(); });
}

void SessionInstance::Open(const QStringList&, const QVariantMap& platformData) {
    Activate(platformData);
}

void SessionInstance::ActivateAction(const QString& name, const QVariantList&,
                                     const QVariantMap& platformData) {
    // Answered first; the quit happens in the next turn of the event loop.
    if (name == QStringLiteral("quit")) {
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        return;
    }
    Activate(platformData);
}

}  // namespace linuxdesk
