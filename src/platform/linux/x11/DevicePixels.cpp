#include "platform/linux/x11/DevicePixels.h"

#include <QGuiApplication>
#include <QScreen>

namespace linuxdesk {

platform::Rect fromDevicePixels(const platform::Rect& r) {
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

}  // namespace linuxdesk
