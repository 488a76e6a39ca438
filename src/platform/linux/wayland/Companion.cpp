#include "platform/linux/wayland/Companion.h"

#include "platform/linux/wayland/NativeRoute.h"

namespace linuxdesk {

bool pastesForReal(const NativeRoute& route, const Companion& companion) {
    return route.native() && route.web() && companion.present();
}

}  // namespace linuxdesk
