#include "platform/linux/Desktop.h"

#include "platform/linux/AtspiAx.h"
#include "platform/linux/LinuxInputSource.h"
#include "platform/linux/QtClipboard.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/X11Workspace.h"
#include "platform/linux/XGrabKeyTap.h"
#include "platform/linux/XTestKeyboard.h"

namespace linuxdesk {

struct Desktop::Parts {
    AtspiAx ax;
    X11Workspace workspace;
    XTestKeyboard keyboard;
    XGrabKeyTap keyTap{&keyboard};
    QtClipboard clipboard;
    QtScreens screens;
    LinuxInputSource inputSource;
};

Desktop::Desktop() : parts_(std::make_unique<Parts>()) {}

Desktop::~Desktop() = default;

platform::Platform Desktop::platform(platform::Defaults& defaults, platform::Clock& clock) {
    Parts& p = *parts_;
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

}  // namespace linuxdesk
