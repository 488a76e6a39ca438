#include "platform/linux/kwin/KdeShortcuts.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusReply>

#include "main/Log.h"

namespace {

// A key sequence as KGlobalAccel sends it: up to four keys, unused ones 0.
struct KeySequence {
    QList<int> keys;
};

}  // namespace

Q_DECLARE_METATYPE(KeySequence)

namespace {

QDBusArgument& operator<<(QDBusArgument& argument, const KeySequence& sequence) {
    argument.beginStructure();
    argument << sequence.keys;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, KeySequence& sequence) {
    argument.beginStructure();
    argument >> sequence.keys;
    argument.endStructure();
    return argument;
}

const QString kService = QStringLiteral("org.kde.kglobalaccel");
const QString kInterface = QStringLiteral("org.kde.KGlobalAccel");
const QString kComponent = QStringLiteral("glimmo");
// KGlobalAccel's flags: grab the key now, and take these keys rather than any stored ones.
constexpr uint kSetPresent = 2;
constexpr uint kNoAutoloading = 4;
// KWin answers from its own main loop; a shortcut not set by then is better left.
constexpr int kTimeoutMs = 500;

// Qt's key codes, which KGlobalAccel speaks.
int qtKey(const QString& key) {
    if (key == QLatin1String("Tab")) return 0x01000001;
    if (key == QLatin1String("Escape")) return 0x01000000;
    if (key == QLatin1String("Up")) return 0x01000013;
    if (key == QLatin1String("Down")) return 0x01000015;
    return 0;
}

QString actionName(const QString& key) {
    return QStringLiteral("_k_session:") + key.toLower();
}

QString friendlyName(const QString& key) {
    if (key == QLatin1String("Tab")) return QStringLiteral("Accept the suggestion");
    if (key == QLatin1String("Escape")) return QStringLiteral("Dismiss the suggestion");
    if (key == QLatin1String("Up")) return QStringLiteral("Previous reply");
    return QStringLiteral("Next reply");
}

QStringList actionId(const QString& key) {
    return {kComponent, actionName(key), QStringLiteral("Glimmo"), friendlyName(key)};
}

QDBusMessage call(const QString& method, const QVariantList& args) {
    QDBusMessage m =
        QDBusMessage::createMethodCall(kService, QStringLiteral("/kglobalaccel"), kInterface, method);
    m.setArguments(args);
    return QDBusConnection::sessionBus().call(m, QDBus::Block, kTimeoutMs);
}

}  // namespace

namespace linuxdesk {

const QStringList KdeShortcuts::keys = {QStringLiteral("Tab"), QStringLiteral("Escape"),
                                        QStringLiteral("Up"), QStringLiteral("Down")};

KdeShortcuts::KdeShortcuts(QObject* parent) : QObject(parent) {
    qDBusRegisterMetaType<KeySequence>();
    qDBusRegisterMetaType<QList<KeySequence>>();
    // The component's object exists once a shortcut is registered; the match does not need it.
    QDBusConnection::sessionBus().connect(
        kService, QStringLiteral("/component/") + kComponent,
        QStringLiteral("org.kde.kglobalaccel.Component"), QStringLiteral("globalShortcutPressed"),
        this, SLOT(onPressed(QString, QString, qlonglong)));
}

KdeShortcuts::~KdeShortcuts() {
    giveBackAll();
}

bool KdeShortcuts::take(const QString& key) {
    const int code = qtKey(key);
    if (!code) return false;
    if (taken_.contains(key)) return true;
    if (call(QStringLiteral("doRegister"), {actionId(key)}).type() != QDBusMessage::ReplyMessage)
        return false;
    const QList<KeySequence> sequences{KeySequence{{code, 0, 0, 0}}};
    const QDBusMessage answer =
        call(QStringLiteral("setShortcutKeys"),
             {actionId(key), QVariant::fromValue(sequences), kSetPresent | kNoAutoloading});
    taken_ << key;  // registered either way: given back with the others
    // KGlobalAccel quietly sets no key when another shortcut holds it.
    const QList<KeySequence> set =
        answer.arguments().isEmpty()
            ? QList<KeySequence>{}
            : qdbus_cast<QList<KeySequence>>(answer.arguments().constFirst());
    if (set.isEmpty() || set.constFirst().keys.value(0) != code) {
        glimmo::log(QStringLiteral("KDE's global shortcuts did not give Glimmo %1: %2")
                        .arg(key, answer.type() == QDBusMessage::ErrorMessage
                                      ? answer.errorMessage()
                                      : QStringLiteral("another shortcut holds it")));
        return false;
    }
    return true;
}

void KdeShortcuts::giveBack(const QString& key) {
    if (!taken_.removeOne(key)) return;
    call(QStringLiteral("unregister"), {kComponent, actionName(key)});
}

void KdeShortcuts::giveBackAll() {
    for (const QString& key : QStringList(taken_)) giveBack(key);
}

void KdeShortcuts::onPressed(const QString& component, const QString& shortcut, qlonglong) {
    if (component != kComponent) return;
    for (const QString& key : keys)
        if (shortcut == actionName(key) && taken_.contains(key)) emit pressed(key);
}

}  // namespace linuxdesk
