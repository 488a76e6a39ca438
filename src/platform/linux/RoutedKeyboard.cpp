#include "platform/linux/RoutedKeyboard.h"

#include "platform/linux/NativeEdit.h"
#include "platform/linux/NativeRoute.h"
#include "platform/linux/XTestKeyboard.h"

namespace linuxdesk {

void RoutedKeyboard::post(int code, quint64 flags) {
    if (route_.native())
        edit_.post(code, flags);
    else
        x11_.post(code, flags);
}

}  // namespace linuxdesk
