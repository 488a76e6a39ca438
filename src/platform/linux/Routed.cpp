#include "platform/linux/Routed.h"

#include "platform/linux/AtspiAx.h"
#include "platform/linux/AtspiKeyTap.h"
#include "platform/linux/NativeEdit.h"
#include "platform/linux/NativePlace.h"
#include "platform/linux/NativeRoute.h"
#include "platform/linux/QtClipboard.h"
#include "platform/linux/X11Workspace.h"
#include "platform/linux/XGrabKeyTap.h"
#include "platform/linux/XTestKeyboard.h"

namespace linuxdesk {

namespace {

// What saving the clipboard gives for a native window: nothing of the user's was taken, so
// restoring it must put nothing back, whichever window is frontmost by then.
const QString kUntouched = QStringLiteral("application/x-glimmo-clipboard-untouched");

bool untouched(const platform::ClipContents& contents) {
    return contents.size() == 1 && contents[0].types.size() == 1 &&
           contents[0].types[0].first == kUntouched;
}

bool isTextRole(const std::optional<platform::Value>& role) {
    const auto* r = role ? std::get_if<QString>(&*role) : nullptr;
    return r && (*r == QLatin1String("AXTextField") || *r == QLatin1String("AXTextArea") ||
                 *r == QLatin1String("AXComboBox"));
}

}  // namespace

// --- Workspace: only the frontmost application depends on the window's kind.

std::optional<platform::RunningApp> RoutedWorkspace::frontmost() {
    return route_.frontmost();
}
qint64 RoutedWorkspace::ownPid() {
    return x11_.ownPid();
}
std::vector<platform::RunningApp> RoutedWorkspace::running(const QString& bundleId) {
    return x11_.running(bundleId);
}
bool RoutedWorkspace::openUrl(const QString& url) {
    return x11_.openUrl(url);
}
bool RoutedWorkspace::openFile(const QString& path, const QString& bundleId) {
    return x11_.openFile(path, bundleId);
}
std::optional<platform::InstalledApp> RoutedWorkspace::installed(const QString& bundleId) {
    return x11_.installed(bundleId);
}
std::optional<QString> RoutedWorkspace::textEditor() {
    return x11_.textEditor();
}
bool RoutedWorkspace::openAccessibilitySettings() {
    return x11_.openAccessibilitySettings();
}
bool RoutedWorkspace::loginItemEnabled() {
    return x11_.loginItemEnabled();
}
bool RoutedWorkspace::setLoginItem(bool enabled) {
    return x11_.setLoginItem(enabled);
}

// --- Ax

bool RoutedAx::native(const platform::Element& element) const {
    return route_.native() && route_.owns(element);
}

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
    return ax_.attribute(element, name);
}

std::optional<platform::Value> RoutedAx::parameterized(const platform::Element& element,
                                                       const QString& name,
                                                       const platform::Value& parameter) {
    if (!native(element) || name != QLatin1String("AXBoundsForRange"))
        return ax_.parameterized(element, name, parameter);
    const auto screen = screens_.main();
    if (!screen) return std::nullopt;
    return platform::Value(nativeCaret(*screen));
}

bool RoutedAx::setAttribute(const platform::Element& element, const QString& name,
                            const platform::Value& value) {
    if (native(element) && name == QLatin1String("AXSelectedTextRange")) {
        const auto* range = std::get_if<platform::Range>(&value);
        return range && edit_.select(element, *range);
    }
    return ax_.setAttribute(element, name, value);
}

// --- Keyboard, key tap, clipboard

void RoutedKeyboard::post(int code, quint64 flags) {
    if (route_.native())
        edit_.post(code, flags);
    else
        x11_.post(code, flags);
}

bool RoutedKeyTap::install(Handler handler) {
    const bool native = native_.install(handler);
    return x11_.install(std::move(handler)) || native;
}

void RoutedKeyTap::setWanted(bool wanted) {
    const bool native = route_.native();
    x11_.setWanted(wanted && !native);
    native_.setWanted(wanted && native);
}

void RoutedKeyTap::requestAccess() {
    x11_.requestAccess();
}

platform::ClipContents RoutedClipboard::save() {
    if (route_.native()) return {platform::ClipItem{{{kUntouched, QByteArray()}}}};
    return x11_.save();
}

void RoutedClipboard::restore(const platform::ClipContents& contents) {
    if (!untouched(contents)) x11_.restore(contents);
}

void RoutedClipboard::writeTransientText(const QString& text) {
    if (route_.native())
        edit_.hold(text);
    else
        x11_.writeTransientText(text);
}

void RoutedClipboard::writeText(const QString& text) {
    // The copy notice's text is meant for the user to paste, wherever they are.
    x11_.writeText(text);
}

}  // namespace linuxdesk
