#include "platform/linux/kwin/KWinCompanion.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "main/Log.h"
#include "platform/linux/x11/DevicePixels.h"

namespace linuxdesk {

namespace {

const QString kKWin = QStringLiteral("org.kde.KWin");
const QString kScripting = QStringLiteral("org.kde.kwin.Scripting");
// The name KWin knows the script by; one Glimmo runs per session.
const QString kPluginName = QStringLiteral("glimmo");
constexpr int kTimeoutMs = 1000;
// KWin forgets an unloaded script a moment later; until then it refuses to load it again.
constexpr int kLoadAttempts = 10;
constexpr int kLoadRetryMs = 200;
// A script that has not spoken by then is started again by the way that starts every script.
constexpr int kFirstWordMs = 2000;

QDBusMessage scripting(const QString& method, const QVariantList& args) {
    QDBusMessage m = QDBusMessage::createMethodCall(kKWin, QStringLiteral("/Scripting"),
                                                    kScripting, method);
    m.setArguments(args);
    return QDBusConnection::sessionBus().call(m, QDBus::Block, kTimeoutMs);
}

platform::Rect rect(const QJsonObject& o) {
    return {o.value(QLatin1String("x")).toDouble(), o.value(QLatin1String("y")).toDouble(),
            o.value(QLatin1String("width")).toDouble(),
            o.value(QLatin1String("height")).toDouble()};
}

// How many of the X display's pixels make one of KWin's logical ones, from the two widths of
// the desktop: 1 where KWin scales X11 programs itself, the scale where they scale themselves
// (Plasma's choice for high-density screens).
double xPixelsPerLogical(double logicalWidth) {
    const double right = deviceRight();
    return right > 0 && logicalWidth > 0 ? right / logicalWidth : 1;
}

std::uint32_t keysym(const QString& key) {
    if (key == QLatin1String("Tab")) return XKB_KEY_Tab;
    if (key == QLatin1String("Escape")) return XKB_KEY_Escape;
    if (key == QLatin1String("Up")) return XKB_KEY_Up;
    return XKB_KEY_Down;
}

}  // namespace

bool KWinCompanion::running() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() && bus.interface()->isServiceRegistered(kKWin) &&
           (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
            qEnvironmentVariable("XDG_SESSION_TYPE") == QLatin1String("wayland"));
}

QString KWinCompanion::scriptPath(const QString& binDir) {
    // A script being worked on, tried without installing it.
    const QString chosen = qEnvironmentVariable("GLIMMO_KWIN_COMPANION");
    if (!chosen.isEmpty() && QFileInfo(chosen).isFile()) return QFileInfo(chosen).absoluteFilePath();
    for (const QString& folder :
         {QStringLiteral("../share/glimmo/companion"), QStringLiteral("companion")}) {
        const QFileInfo script(QDir(binDir).filePath(folder + QStringLiteral("/kwin/companion.js")));
        if (script.isFile()) return script.absoluteFilePath();
    }
    return {};
}

KWinCompanion::KWinCompanion(const QString& script, QObject* parent) : Companion(parent) {
    connect(&shortcuts_, &KdeShortcuts::pressed, this, &KWinCompanion::taken);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.registerObject(QStringLiteral("/io/glimmo/KWin"), this,
                            QDBusConnection::ExportScriptableSlots)) {
        glimmo::log(QStringLiteral("the KWin companion cannot be heard: %1")
                        .arg(bus.lastError().message()));
        return;
    }
    if (script.isEmpty()) {
        glimmo::log(QStringLiteral("the KWin companion is not installed beside Glimmo"));
        return;
    }
    if (!fakeInput_.available())
        glimmo::log(QStringLiteral("KWin does not let Glimmo press keys (fake input): keys "
                                   "Glimmo does not use are lost while the bubble shows"));
    // A script left by a Glimmo that did not quit goes first.
    scripting(QStringLiteral("unloadScript"), {kPluginName});
    load(script, 1);
}

KWinCompanion::~KWinCompanion() {
    shortcuts_.giveBackAll();
    unload();
}

void KWinCompanion::load(const QString& script, int attempt) {
    const QDBusMessage loaded = scripting(QStringLiteral("loadScript"), {script, kPluginName});
    const int id = loaded.arguments().value(0, -1).toInt();
    if (loaded.type() != QDBusMessage::ReplyMessage || id < 0) {
        if (loaded.type() == QDBusMessage::ReplyMessage && attempt < kLoadAttempts) {
            QTimer::singleShot(kLoadRetryMs, this, [this, script, attempt] {
                load(script, attempt + 1);
            });
            return;
        }
        glimmo::log(QStringLiteral("KWin did not load the companion: %1")
                        .arg(loaded.errorMessage().isEmpty() ? QStringLiteral("refused")
                                                             : loaded.errorMessage()));
        return;
    }
    loaded_ = true;
    // KWin 6 names a script's object /Scripting/Script<id>, KWin 5 /<id>. KWin numbers scripts
    // by how many it holds, so the object may be another script's when one was unloaded before:
    // a script that stays silent is started with all the others.
    for (const QString& path : {QStringLiteral("/Scripting/Script%1").arg(id),
                                QStringLiteral("/%1").arg(id)}) {
        QDBusMessage run = QDBusMessage::createMethodCall(kKWin, path,
                                                          QStringLiteral("org.kde.kwin.Script"),
                                                          QStringLiteral("run"));
        if (QDBusConnection::sessionBus().call(run, QDBus::Block, kTimeoutMs).type() ==
            QDBusMessage::ReplyMessage)
            break;
    }
    QTimer::singleShot(kFirstWordMs, this, [this] {
        if (present_) return;
        scripting(QStringLiteral("start"), {});
        QTimer::singleShot(kFirstWordMs, this, [this] {
            if (!present_)
                glimmo::log(QStringLiteral("KWin loaded the companion but did not run it"));
        });
    });
}

void KWinCompanion::unload() {
    if (loaded_) scripting(QStringLiteral("unloadScript"), {kPluginName});
    loaded_ = false;
}

void KWinCompanion::ActiveWindow(const QString& json) {
    // Only KWin itself speaks for the script.
    if (calledFromDBus()) {
        const QString kwin = connection().interface()->serviceOwner(kKWin);
        if (message().service() != kwin) {
            sendErrorReply(QDBusError::AccessDenied, QStringLiteral("Only KWin may call this"));
            return;
        }
    }
    const QJsonObject w = QJsonDocument::fromJson(json.toUtf8()).object();
    if (!present_) {
        present_ = true;
        glimmo::log(QStringLiteral("the compositor companion answers (KWin)"));
        // Keys wanted before the script spoke are taken now.
        if (keysWanted()) takeKeys(true);
        emit presentChanged(true);
    }
    if (w.isEmpty()) {
        window_.reset();
        return;
    }
    // KWin counts in logical pixels, as do the toolkits within their windows; Glimmo's X11
    // windows count in the X display's.
    const double f =
        xPixelsPerLogical(w.value(QLatin1String("desktop")).toObject().value(u"width").toDouble());
    const auto scaled = [f](const platform::Rect& r) {
        return platform::Rect{r.x * f, r.y * f, r.width * f, r.height * f};
    };
    window_ = Window{static_cast<qint64>(w.value(QLatin1String("pid")).toDouble()),
                     w.value(QLatin1String("wayland")).toBool(),
                     // Inside the title bar KWin draws for most windows.
                     scaled(rect(w.value(QLatin1String("client")).toObject())),
                     scaled(rect(w.value(QLatin1String("buffer")).toObject())), f};
}

void KWinCompanion::takeKeys(bool wanted) {
    if (!present_) return;
    if (wanted)
        for (const QString& key : KdeShortcuts::keys) shortcuts_.take(key);
    else
        shortcuts_.giveBackAll();
}

void KWinCompanion::passKey(const QString& key) {
    // KWin would run the shortcut again for the pressed key: it goes while the key passes.
    shortcuts_.giveBack(key);
    fakeInput_.press({keysym(key)});
    if (keysWanted()) shortcuts_.take(key);
}

void KWinCompanion::pressShortcut(const QString& shortcut) {
    const std::uint32_t letter = shortcut == QLatin1String("ctrl+a") ? XKB_KEY_a : XKB_KEY_v;
    fakeInput_.press({XKB_KEY_Control_L, letter});
}

}  // namespace linuxdesk
