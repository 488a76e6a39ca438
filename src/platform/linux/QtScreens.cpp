#include "platform/linux/QtScreens.h"

#include <QGuiApplication>
#include <QScreen>

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

}  // namespace linuxdesk
