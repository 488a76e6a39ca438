// glimmo-wayland-keys: types into the focused window of a headless mutter or KWin session
// (tests/e2e/wayland-desktop.sh, kwin-desktop.sh), where no keyboard exists but a remote-desktop
// one (mutter) or KWin's fake input.
//
//   glimmo-wayland-keys --serve        creates and starts ONE org.gnome.Mutter.RemoteDesktop
//                                      session (under KWin: one fake-input connection),
//                                      prints "ready" and then serves
//                                      org.glimmo.TestKeyboard on the session bus until mutter
//                                      closes the session or it is terminated
//   glimmo-wayland-keys type TEXT      types TEXT through that service (see KeyPlan.h)
//   glimmo-wayland-keys key KEYS...    presses key combinations: Tab, shift+Tab, ctrl+a, Escape
//   glimmo-wayland-keys click X Y      clicks the left button at X, Y (on a 1280x800 screen)
//
// One long-lived session because mutter adds the keyboard to the seat when a session starts,
// and a key sent before the applications have seen that keyboard is lost: a session per key
// would lose the first key of every call. The client calls return once mutter has every event.
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QThread>
#include <cstdio>
#include <memory>

#include "KeyPlan.h"
#include "platform/linux/kwin/FakeInput.h"

namespace {

const QString kService = QStringLiteral("org.glimmo.TestKeyboard");
const QString kMutter = QStringLiteral("org.gnome.Mutter.RemoteDesktop");

class Keyboard : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.glimmo.TestKeyboard")

public:
    explicit Keyboard(std::unique_ptr<QDBusInterface> session) : session_(std::move(session)) {}
    explicit Keyboard(std::unique_ptr<linuxdesk::FakeInput> fake) : fake_(std::move(fake)) {}

public slots:
    QString Type(const QString& text) { return send(waylandkeys::eventsForText(text)); }
    QString Key(const QString& keys) {
        const auto events = waylandkeys::eventsForKeys(keys);
        return events ? send(*events) : QStringLiteral("unknown key in \"%1\"").arg(keys);
    }

    // The pointer has no absolute motion without a screen cast: it is pushed into the
    // bottom-right corner (the top-left one opens the overview) and moved from there.
    QString Click(int x, int y) {
        if (fake_) {
            const bool ok = fake_->moveBy(5000, 5000) && fake_->moveBy(x - 1279.0, y - 799.0) &&
                            fake_->click();
            return ok ? QString() : QStringLiteral("KWin took no click");
        }
        const QDBusMessage moves[] = {
            session_->call(QStringLiteral("NotifyPointerMotionRelative"), 5000.0, 5000.0),
            session_->call(QStringLiteral("NotifyPointerMotionRelative"), x - 1279.0, y - 799.0),
        };
        for (const QDBusMessage& m : moves)
            if (m.type() == QDBusMessage::ErrorMessage) return m.errorMessage();
        QThread::msleep(50);
        for (const bool pressed : {true, false}) {
            const QDBusMessage m =
                session_->call(QStringLiteral("NotifyPointerButton"), 0x110, pressed);
            if (m.type() == QDBusMessage::ErrorMessage) return m.errorMessage();
            QThread::msleep(20);
        }
        return {};
    }

public:
    // An empty answer when mutter took every event, else its error.
    QString send(const waylandkeys::KeyEvents& events) {
        for (const auto& e : events) {
            if (fake_) {
                if (!fake_->key(e.keysym, e.pressed))
                    return QStringLiteral("KWin took no key 0x%1").arg(e.keysym, 0, 16);
                QThread::msleep(4);
                continue;
            }
            const QDBusMessage reply =
                session_->call(QStringLiteral("NotifyKeyboardKeysym"), e.keysym, e.pressed);
            if (reply.type() == QDBusMessage::ErrorMessage) return reply.errorMessage();
            // Applications read key events in batches; a short gap keeps a release from
            // arriving in the same batch as its press, which some handle as a no-op.
            QThread::msleep(4);
        }
        return {};
    }

private:
    std::unique_ptr<QDBusInterface> session_;
    std::unique_ptr<linuxdesk::FakeInput> fake_;
};

int fail(const QString& why) {
    std::fprintf(stderr, "glimmo-wayland-keys: %s\n", qPrintable(why));
    return 1;
}

int ready(QCoreApplication& app, Keyboard& keyboard) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.registerObject("/", &keyboard, QDBusConnection::ExportAllSlots) ||
        !bus.registerService(kService))
        return fail("cannot serve " + kService + ": " + bus.lastError().message());
    std::printf("ready\n");
    std::fflush(stdout);
    return app.exec();
}

int serveKWin(QCoreApplication& app) {
    auto fake = std::make_unique<linuxdesk::FakeInput>();
    if (!fake->available()) return fail("KWin offers no fake input");
    Keyboard keyboard(std::move(fake));
    return ready(app, keyboard);
}

int serve(QCoreApplication& app) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.interface()->isServiceRegistered(QStringLiteral("org.kde.KWin"))) return serveKWin(app);
    QDBusInterface remote(kMutter, "/org/gnome/Mutter/RemoteDesktop", kMutter, bus);
    const QDBusReply<QDBusObjectPath> path = remote.call("CreateSession");
    if (!path.isValid()) return fail("no remote-desktop session: " + path.error().message());
    auto session =
        std::make_unique<QDBusInterface>(kMutter, path.value().path(), kMutter + ".Session", bus);
    const QDBusMessage started = session->call("Start");
    if (started.type() == QDBusMessage::ErrorMessage)
        return fail("the session did not start: " + started.errorMessage());
    Keyboard keyboard(std::move(session));
    // Mutter drops the session, and with it the keyboard, when it stops.
    bus.connect(kMutter, path.value().path(), kMutter + ".Session", "Closed", &app, SLOT(quit()));
    // Give the seat's new keyboard a moment to reach the applications, and spend a first key
    // that nothing may see.
    QThread::msleep(300);
    keyboard.send({{0xffe1, true}, {0xffe1, false}});
    return ready(app, keyboard);
}

int client(const QString& method, const QVariant& argument, const QVariant& more = {}) {
    QDBusInterface keyboard(kService, "/", kService, QDBusConnection::sessionBus());
    const QDBusReply<QString> reply =
        more.isValid() ? keyboard.call(method, argument, more) : keyboard.call(method, argument);
    if (!reply.isValid()) return fail(kService + " does not answer: " + reply.error().message());
    return reply.value().isEmpty() ? 0 : fail(reply.value());
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args == QStringList{"--serve"}) return serve(app);
    if (args.size() == 2 && args[0] == "type") return client("Type", args[1]);
    if (args.size() >= 2 && args[0] == "key") return client("Key", args.mid(1).join(' '));
    if (args.size() == 3 && args[0] == "click")
        return client("Click", args[1].toInt(), args[2].toInt());
    std::fprintf(stderr,
                 "usage: glimmo-wayland-keys --serve | type TEXT | key KEYS... | click X Y\n");
    return 2;
}

#include "main.moc"
