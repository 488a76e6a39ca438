#include "platform/linux/session/Desktop.h"

#include "main/Log.h"
#include <QCoreApplication>

#include "platform/linux/atspi/AtspiAx.h"
#include "platform/linux/kwin/KWinCompanion.h"
#include "platform/linux/session/LinuxInputSource.h"
#include "platform/linux/session/QtClipboard.h"
#include "platform/linux/session/QtScreens.h"
#include "platform/linux/wayland/AtspiKeyTap.h"
#include "platform/linux/wayland/Companion.h"
#include "platform/linux/wayland/CompanionKeyTap.h"
#include "platform/linux/wayland/CompanionMenu.h"
#include "platform/linux/wayland/GnomeCompanion.h"
#include "platform/linux/wayland/NativeEdit.h"
#include "platform/linux/wayland/NativeRoute.h"
#include "platform/linux/wayland/RoutedAx.h"
#include "platform/linux/wayland/RoutedClipboard.h"
#include "platform/linux/wayland/RoutedKeyTap.h"
#include "platform/linux/wayland/RoutedKeyboard.h"
#include "platform/linux/wayland/RoutedWorkspace.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/linux/x11/XGrabKeyTap.h"
#include "platform/linux/x11/XTestKeyboard.h"

namespace linuxdesk {

namespace {

// A paste made without the clipboard: the focused text box's selection is replaced through its
// EditableText interface; said in the log when that cannot be done.
void pasteWithoutClipboard(AtspiAx& ax, X11Workspace& workspace, const QString& text) {
    const auto front = workspace.frontmost();
    const platform::Element element = front ? ax.focusedIn(front->pid) : nullptr;
    const auto selected =
        element ? ax.attribute(element, QStringLiteral("AXSelectedTextRange")) : std::nullopt;
    const auto* range = selected ? std::get_if<platform::Range>(&*selected) : nullptr;
    if (range && ax.replace(element, *range, text)) return;
    glimmo::log(
        QStringLiteral("the rewrite could not go in without the clipboard; "
                       "the paragraph stays as it was"));
}

// KWin runs a script of Glimmo's; any other compositor may have GNOME Shell's extension.
std::unique_ptr<Companion> companionForSession() {
    if (KWinCompanion::running())
        return std::make_unique<KWinCompanion>(
            KWinCompanion::scriptPath(QCoreApplication::applicationDirPath()));
    return std::make_unique<GnomeCompanion>();
}

}  // namespace

struct Desktop::Parts {
    AtspiAx ax;
    X11Workspace workspace;
    XTestKeyboard keyboard;
    XGrabKeyTap keyTap{&keyboard};
    QtClipboard clipboard;
    QtScreens screens;
    LinuxInputSource inputSource;

    // A Wayland session also has native windows; these hand each call to the part that serves
    // the frontmost application.
    std::unique_ptr<Companion> companionPart = companionForSession();
    Companion& companion = *companionPart;
    CompanionKeyTap companionTap{companion};
    CompanionMenu topBar{companion};
    NativeRoute route{workspace, ax};
    NativeEdit edit{ax, route};
    AtspiKeyTap nativeTap{ax, route};
    RoutedWorkspace routedWorkspace{route, workspace};
    RoutedAx routedAx{route, ax, edit, nativeTap, screens, companion};
    RoutedKeyboard routedKeyboard{route, keyboard, edit, companion};
    RoutedKeyTap routedKeyTap{route, keyTap, nativeTap, companion, companionTap};
    RoutedClipboard routedClipboard{route, clipboard, edit, companion};
};

Desktop::Desktop() : parts_(std::make_unique<Parts>()) {
    const auto pasted = [this] { parts_->clipboard.pastePressed(); };
    parts_->keyboard.onPaste(pasted);
    parts_->keyboard.insteadOfPaste([this] {
        Parts& p = *parts_;
        const auto held = p.clipboard.takeHeld();
        if (held) pasteWithoutClipboard(p.ax, p.workspace, *held);
        return held.has_value();
    });
    parts_->routedKeyboard.onPaste(pasted);
}

Desktop::~Desktop() = default;

bool Desktop::waylandSession() {
    return qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
           qEnvironmentVariable("XDG_SESSION_TYPE") == QLatin1String("wayland");
}

platform::Platform Desktop::platform(platform::Defaults& defaults, platform::Clock& clock) {
    Parts& p = *parts_;
    if (waylandSession())
        return platform::Platform{p.routedAx,     p.routedWorkspace, p.routedKeyboard,
                                  p.routedKeyTap, p.routedClipboard, p.screens,
                                  p.inputSource,  defaults,          clock};
    return platform::Platform{p.ax,      p.workspace,   p.keyboard, p.keyTap, p.clipboard,
                              p.screens, p.inputSource, defaults,   clock};
}

bool Desktop::hasDisplay() const {
    return parts_->keyboard.available();
}
AtspiAx& Desktop::ax() {
    return parts_->ax;
}
X11Workspace& Desktop::workspace() {
    return parts_->workspace;
}
XTestKeyboard& Desktop::keyboard() {
    return parts_->keyboard;
}
XGrabKeyTap& Desktop::keyTap() {
    return parts_->keyTap;
}
platform::TopBarMenu& Desktop::topBarMenu() {
    return parts_->topBar;
}

}  // namespace linuxdesk
