#include "platform/linux/wayland/RoutedAx.h"

#include "platform/linux/atspi/AtspiAx.h"
#include "platform/linux/wayland/AtspiKeyTap.h"
#include "platform/linux/wayland/Companion.h"
#include "platform/linux/wayland/NativeEdit.h"
#include "platform/linux/wayland/NativePlace.h"
#include "platform/linux/wayland/NativeRoute.h"
#include "platform/linux/x11/DevicePixels.h"

namespace linuxdesk {

namespace {

bool isTextRole(const std::optional<platform::Value>& role) {
    const auto* r = role ? std::get_if<QString>(&*role) : nullptr;
    return r && (*r == QLatin1String("AXTextField") || *r == QLatin1String("AXTextArea") ||
                 *r == QLatin1String("AXComboBox"));
}

}  // namespace

bool RoutedAx::native(const platform::Element& element) const {
    return route_.native() && route_.owns(element);
}

void RoutedAx::onChange(std::function<void()> changed) { ax_.onChange(std::move(changed)); }

bool RoutedAx::trusted() {
    return ax_.trusted();
}
void RoutedAx::requestTrust() {
    ax_.requestTrust();
}
platform::Element RoutedAx::application(qint64 pid) {
    return ax_.application(pid);
}
bool RoutedAx::same(const platform::Element& a, const platform::Element& b) {
    return ax_.same(a, b);
}

std::vector<QString> RoutedAx::restartNeeded() {
    return ax_.restartNeeded();
}

std::optional<platform::Value> RoutedAx::attribute(const platform::Element& element,
                                                   const QString& name) {
    if (!native(element)) return ax_.attribute(element, name);
    if (name == QLatin1String("AXValue")) {
        tap_.takeBackTab(element);
        if (isTextRole(ax_.attribute(element, QStringLiteral("AXRole"))) &&
            !ax_.editable(element)) {
            trace_.why(QStringLiteral("%1 is a native Wayland window whose text box offers no "
                                      "editable text: a rewrite could not be put in")
                           .arg(route_.name()));
            return std::nullopt;
        }
    }
    if (name == QLatin1String("AXSelectedTextRange"))
        if (const auto kept = edit_.selection(element)) return platform::Value(*kept);
    // Where an empty box stands (the replies' list goes under its first line): the toolkit
    // knows it only within its window, placed on the screen from the companion's report.
    if (name == QLatin1String("AXPosition"))
        if (const auto box = onScreen(element, ax_.windowFrame(element)))
            return platform::Value(platform::Point{box->x, box->y});
    return ax_.attribute(element, name);
}

std::optional<platform::Value> RoutedAx::parameterized(const platform::Element& element,
                                                       const QString& name,
                                                       const platform::Value& parameter) {
    if (!native(element) || name != QLatin1String("AXBoundsForRange"))
        return ax_.parameterized(element, name, parameter);
    const auto* range = std::get_if<platform::Range>(&parameter);
    if (!range) return std::nullopt;
    if (const auto exact = placed(element, *range)) return platform::Value(*exact);
    const auto screen = screens_.main();
    if (!screen) return std::nullopt;
    return platform::Value(nativeCaret(*screen));
}

std::optional<platform::Rect> RoutedAx::placed(const platform::Element& element,
                                               const platform::Range& range) {
    return onScreen(element, ax_.windowBounds(element, range));
}

std::optional<platform::Rect> RoutedAx::onScreen(const platform::Element& element,
                                                 const std::optional<platform::Rect>& inWindow) {
    const auto window = companion_.focusedWindow();
    if (!window) {
        trace_.why(companion_.present()
                       ? QStringLiteral("the compositor companion names no focused window: the "
                                        "bubble waits at the bottom of the screen")
                       : QStringLiteral("no compositor companion tells where %1's window is: the "
                                        "bubble waits at the bottom of the screen")
                             .arg(route_.name()));
        return std::nullopt;
    }
    const auto app = route_.frontmost();
    if (app && app->pid != window->pid) {
        trace_.why(QStringLiteral("the focused window is not %1's: the bubble waits at the "
                                  "bottom of the screen")
                       .arg(route_.name()));
        return std::nullopt;
    }
    // A zero origin is how toolkits say they do not know.
    if (!inWindow || (inWindow->x == 0 && inWindow->y == 0)) return std::nullopt;
    // Window coordinates start where the toolkit says its window starts: GTK 3 at its
    // surface, shadows included; GTK 4 at the window it draws, inside the compositor's title
    // bar (KWin draws one for GTK 4 too).
    const platform::Rect& origin = ax_.gtkVersion(element) == 4 ? window->frame : window->buffer;
    return fromDevicePixels(inCompositor(*inWindow, origin, window->scale));
}

bool RoutedAx::setAttribute(const platform::Element& element, const QString& name,
                            const platform::Value& value) {
    if (native(element) && name == QLatin1String("AXSelectedTextRange") &&
        !pastesForReal(route_, companion_)) {
        const auto* range = std::get_if<platform::Range>(&value);
        return range && edit_.select(element, *range);
    }
    return ax_.setAttribute(element, name, value);
}

}  // namespace linuxdesk
