#include "platform/linux/atspi/KateText.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QScreen>

namespace linuxdesk::kate {

std::optional<platform::Rect> mended(const AtRef& element, const platform::Rect& r,
                                     at::Coords coords) {
    if (r.height > 0 || r.width <= 0) return std::nullopt;
    const auto area = at::extents(element, coords);
    const auto parent = area ? at::extents(at::parent(element), coords) : std::nullopt;
    if (!parent || parent->width <= 0) return std::nullopt;
    double line = 0;
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        const QScreen* screen = QGuiApplication::primaryScreen();
        line = QFontMetrics(QFontDatabase::systemFont(QFontDatabase::FixedFont)).height() *
               (screen ? screen->devicePixelRatio() : 1.0);
    }
    if (line <= 0) return std::nullopt;
    return platform::Rect{r.x - (area->x - parent->x), r.y, r.width, line};
}

}  // namespace linuxdesk::kate
