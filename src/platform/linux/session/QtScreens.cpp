#include "platform/linux/session/QtScreens.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QScreen>

#include "platform/linux/x11/Compositor.h"

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

bool QtScreens::composited() {
    return x11::compositorRunning().value_or(true);
}

}  // namespace linuxdesk
