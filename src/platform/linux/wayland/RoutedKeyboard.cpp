#include "platform/linux/wayland/RoutedKeyboard.h"

#include "platform/Keys.h"
#include "platform/linux/wayland/Companion.h"
#include "platform/linux/wayland/NativeEdit.h"
#include "platform/linux/wayland/NativeRoute.h"
#include "platform/linux/x11/XTestKeyboard.h"

namespace linuxdesk {

void RoutedKeyboard::post(int code, quint64 flags) {
    using namespace platform;
    if (pastesForReal(route_, companion_)) {
        if (flags == flag::Command && (code == key::V || code == key::A))
            companion_.pressShortcut(code == key::V ? QStringLiteral("ctrl+v")
                                                    : QStringLiteral("ctrl+a"));
        if (pasted_ && code == key::V) pasted_();
    } else if (route_.native()) {
        edit_.post(code, flags);
    } else {
        x11_.post(code, flags);
    }
}

}  // namespace linuxdesk
