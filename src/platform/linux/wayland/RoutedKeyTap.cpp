#include "platform/linux/wayland/RoutedKeyTap.h"

#include "platform/linux/wayland/AtspiKeyTap.h"
#include "platform/linux/wayland/Companion.h"
#include "platform/linux/wayland/CompanionKeyTap.h"
#include "platform/linux/wayland/NativeRoute.h"
#include "platform/linux/x11/XGrabKeyTap.h"

namespace linuxdesk {

bool RoutedKeyTap::install(Handler handler) {
    const bool native = native_.install(handler);
    companionTap_.install(handler);
    return x11_.install(std::move(handler)) || native;
}

void RoutedKeyTap::setWanted(bool wanted) {
    const bool native = route_.native();
    const bool companion = native && companion_.present();
    x11_.setWanted(wanted && !native);
    companionTap_.setWanted(wanted && companion);
    native_.setWanted(wanted && native && !companion);
}

void RoutedKeyTap::requestAccess() {
    x11_.requestAccess();
}

}  // namespace linuxdesk
