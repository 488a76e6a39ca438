#include "platform/linux/x11/DevicePixels.h"

#include <algorithm>

#include <QGuiApplication>
#include <QScreen>

namespace linuxdesk {

namespace {

QRectF inDevicePixels(const QScreen* s) {
    return QRectF(s->geometry().topLeft(), QSizeF(s->geometry().size()) * s->devicePixelRatio());
}

bool haveScreens() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr;
}

}  // namespace

double deviceRight() {
    double right = 0;
    if (haveScreens())
        for (const QScreen* s : QGuiApplication::screens())
            right = std::max(right, inDevicePixels(s).right());
    return right;
}

platform::Rect fromDevicePixels(const platform::Rect& r) {
    if (!haveScreens()) return r;
    const QList<QScreen*> all = QGuiApplication::screens();
    const QScreen* owner = all.isEmpty() ? nullptr : QGuiApplication::primaryScreen();
    for (const QScreen* s : all)
        if (inDevicePixels(s).contains(r.x, r.y)) owner = s;
    if (!owner) return r;
    const double ratio = owner->devicePixelRatio();
    const QPoint origin = owner->geometry().topLeft();
    return {origin.x() + (r.x - origin.x()) / ratio, origin.y() + (r.y - origin.y()) / ratio,
            r.width / ratio, r.height / ratio};
}

}  // namespace linuxdesk
