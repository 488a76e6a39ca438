#include "platform/linux/QtScreens.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QScreen>

#include "platform/linux/XDisplay.h"  // last: Xlib's macros

namespace linuxdesk {

namespace {

platform::Rect rectOf(const QRect& r) {
    return {double(r.x()), double(r.y()), double(r.width()), double(r.height())};
}

platform::Screen screenOf(const QScreen* s) {
    return {rectOf(s->geometry()), rectOf(s->availableGeometry())};
}

}  // namespace

std::vector<platform::Screen> QtScreens::screens() {
    std::vector<platform::Screen> out;
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return out;
    const QScreen* primary = QGuiApplication::primaryScreen();
    if (primary) out.push_back(screenOf(primary));
    for (const QScreen* s : QGuiApplication::screens())
        if (s != primary) out.push_back(screenOf(s));
    return out;
}

std::optional<platform::Screen> QtScreens::main() {
    auto all = screens();
    if (all.empty()) return std::nullopt;
    return all.front();
}

platform::Rect QtScreens::fromDevicePixels(const platform::Rect& r) {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return r;
    const QList<QScreen*> all = QGuiApplication::screens();
    const QScreen* owner = all.isEmpty() ? nullptr : QGuiApplication::primaryScreen();
    for (const QScreen* s : all) {
        const QRectF device(s->geometry().topLeft(),
                            QSizeF(s->geometry().size()) * s->devicePixelRatio());
        if (device.contains(r.x, r.y)) owner = s;
    }
    if (!owner) return r;
    const double ratio = owner->devicePixelRatio();
    const QPoint origin = owner->geometry().topLeft();
    return {origin.x() + (r.x - origin.x()) / ratio, origin.y() + (r.y - origin.y()) / ratio,
            r.width / ratio, r.height / ratio};
}

bool QtScreens::composited() {
    const auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    const auto* x11 = app ? app->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    Display* display = x11 ? x11->display() : nullptr;
    if (!display) return true;
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(DefaultScreen(display));
    // Without the atom no compositor has ever run on this server.
    const Atom selection = XInternAtom(display, name.constData(), True);
    return selection != 0 && XGetSelectionOwner(display, selection) != 0;
}

}  // namespace linuxdesk
