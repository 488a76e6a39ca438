#include "shell/Windows.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include "main/Log.h"

namespace shell {

namespace {

constexpr int kFloatMs = 20000;

void setFloating(QWidget* window, bool on) {
    // Through the native window, so the window manager gets the new state without the widget
    // being hidden and shown again.
    if (QWindow* handle = window->windowHandle()) handle->setFlag(Qt::WindowStaysOnTopHint, on);
}

// Ends the floating state the first time the window is activated.
class FloatUntilActive : public QObject {
public:
    explicit FloatUntilActive(QWidget* window) : QObject(window), window_(window) {
        window->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == window_ && event->type() == QEvent::WindowActivate) {
            setFloating(window_, false);
            deleteLater();
        }
        return false;
    }

private:
    QWidget* window_;
};

}  // namespace

Windows::Windows(QObject* parent) : QObject(parent) {}

QWidget* Windows::open(const Factory& factory, const QString& what) {
    QWidget* window = factory ? factory() : nullptr;
    if (!window) {
        glimmo::log(what + QStringLiteral(" is missing from this build"));
        return nullptr;
    }
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowFlag(Qt::Window);
    window->adjustSize();
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        QRect frame = window->frameGeometry();
        frame.moveCenter(screen->availableGeometry().center());
        window->move(frame.topLeft());
    }
    window->show();
    return window;
}

void Windows::showSetup() {
    if (setup_) {
        bringToFront(setup_);
        raise(setup_);
        return;
    }
    setup_ = open(setupFactory_, QStringLiteral("setup window"));
    if (!setup_) return;
    bringToFront(setup_);
    raise(setup_);
}

void Windows::showApps() {
    if (!apps_) apps_ = open(appsFactory_, QStringLiteral("apps window"));
    if (apps_) bringToFront(apps_);
}

void Windows::bringToFront(QWidget* window) {
    if (!window) return;
    window->show();
    window->raise();
    window->activateWindow();
}

void Windows::raise(QWidget* window) {
    if (!window) return;
    setFloating(window, true);
    window->raise();
    new FloatUntilActive(window);
    QPointer<QWidget> weak(window);
    QTimer::singleShot(kFloatMs, window, [weak] {
        if (weak) setFloating(weak, false);
    });
}

}  // namespace shell
