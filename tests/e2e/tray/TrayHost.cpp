#include "TrayHost.h"

#include "TempHome.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDateTime>

namespace {

const QString kItemPath = QStringLiteral("/StatusNotifierItem");
const QString kItemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString kMenuInterface = QStringLiteral("com.canonical.dbusmenu");

QDBusConnection bus() {
    return QDBusConnection::sessionBus();
}

int timeoutMs = 5000;  // see TrayHost::setTimeout

// A call that keeps this process answering while it waits: the program may be asking this
// process something itself (its accessibility bridge) at that very moment.
QDBusMessage call(const QDBusMessage& message) {
    QDBusPendingCall pending = bus().asyncCall(message, timeoutMs);
    testsupport::waitUntil([&] { return pending.isFinished(); }, timeoutMs + 1000);
    return pending.reply();
}

QVariant remoteProperty(const QString& service, const QString& path, const QString& interface,
                        const QString& name) {
    QDBusMessage get = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    get << interface << name;
    const QDBusMessage reply = call(get);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return {};
    return reply.arguments().first().value<QDBusVariant>().variant();
}

// One layout node: (id, properties, children as variants of nodes), flattened in order.
void readNode(const QDBusArgument& arg, QList<TrayRow>& rows, bool top) {
    int id = 0;
    QVariantMap props;
    arg.beginStructure();
    arg >> id >> props;
    if (!top && props.value(QStringLiteral("visible"), true).toBool()) {
        TrayRow row;
        row.id = id;
        row.separator = props.value(QStringLiteral("type")).toString() == "separator";
        row.label = props.value(QStringLiteral("label")).toString();
        row.enabled = props.value(QStringLiteral("enabled"), true).toBool();
        row.checked = props.value(QStringLiteral("toggle-state"), 0).toInt() == 1;
        rows << row;
    }
    arg.beginArray();
    while (!arg.atEnd()) {
        QDBusVariant child;
        arg >> child;
        readNode(child.variant().value<QDBusArgument>(), rows, false);
    }
    arg.endArray();
    arg.endStructure();
}

}  // namespace

bool TrayHost::start() {
    if (!bus().registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                              QDBusConnection::ExportAllContents))
        return false;
    return bus().registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
}

void TrayHost::RegisterStatusNotifierItem(const QString& service) {
    if (!items_.contains(service)) items_ << service;
    emit StatusNotifierItemRegistered(service);
}

void TrayHost::RegisterStatusNotifierHost(const QString&) {}

QString TrayHost::menuPath(const QString& service) {
    return remoteProperty(service, kItemPath, kItemInterface, QStringLiteral("Menu"))
        .value<QDBusObjectPath>()
        .path();
}

std::optional<QList<TrayRow>> TrayHost::openMenu(const QString& service, QString path) {
    if (path.isEmpty()) path = menuPath(service);
    if (path.isEmpty()) return std::nullopt;
    QDBusMessage show = QDBusMessage::createMethodCall(service, path, kMenuInterface,
                                                       QStringLiteral("AboutToShow"));
    show << 0;
    call(show);

    QDBusMessage layout =
        QDBusMessage::createMethodCall(service, path, kMenuInterface, QStringLiteral("GetLayout"));
    layout << 0 << -1 << QStringList();
    const QDBusMessage reply = call(layout);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() < 2)
        return std::nullopt;
    QList<TrayRow> rows;
    readNode(reply.arguments().at(1).value<QDBusArgument>(), rows, true);
    return rows;
}

bool TrayHost::click(const QString& service, const QString& label) {
    // The menu's path read once, as a tray does: a second read can come back empty while the
    // menu is being rebuilt after AboutToShow.
    const QString path = menuPath(service);
    const auto rows = openMenu(service, path);
    if (!rows) return false;
    for (const TrayRow& row : *rows) {
        if (row.label != label) continue;
        QDBusMessage event =
            QDBusMessage::createMethodCall(service, path, kMenuInterface, QStringLiteral("Event"));
        event << row.id << QStringLiteral("clicked")
              << QVariant::fromValue(QDBusVariant(QVariant(0)))
              << uint(QDateTime::currentSecsSinceEpoch());
        return call(event).type() == QDBusMessage::ReplyMessage;
    }
    return false;
}

QImage TrayHost::icon(const QString& service) {
    const QVariant value =
        remoteProperty(service, kItemPath, kItemInterface, QStringLiteral("IconPixmap"));
    const QDBusArgument arg = value.value<QDBusArgument>();
    QImage best;
    arg.beginArray();
    while (!arg.atEnd()) {
        int width = 0, height = 0;
        QByteArray bytes;
        arg.beginStructure();
        arg >> width >> height >> bytes;
        arg.endStructure();
        if (width <= best.width() || bytes.size() < width * height * 4) continue;
        // ARGB32 in network byte order.
        QImage image(width, height, QImage::Format_ARGB32);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const auto* p =
                    reinterpret_cast<const uchar*>(bytes.constData()) + (y * width + x) * 4;
                image.setPixel(x, y, qRgba(p[1], p[2], p[3], p[0]));
            }
        best = image;
    }
    arg.endArray();
    return best;
}

void TrayHost::setTimeout(int ms) {
    timeoutMs = ms;
}
