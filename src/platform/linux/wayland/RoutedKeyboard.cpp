#include "platform/linux/wayland/RoutedKeyboard.h"

#include "platform/linux/wayland/NativeEdit.h"
#include "platform/linux/wayland/NativeRoute.h"
#include "platform/linux/x11/XTestKeyboard.h"

namespace linuxdesk {

void RoutedKeyboard::post(int code, quint64 flags) {
    if (route_.native())
        edit_.post(code, flags);
    else
        x11_.post(code, flags);
}

}  // namespace linuxdesk
