#include "platform/linux/wayland/RoutedClipboard.h"

#include "platform/linux/wayland/Companion.h"
#include "platform/linux/wayland/NativeEdit.h"
#include "platform/linux/wayland/NativeRoute.h"

namespace linuxdesk {

platform::ClipContents RoutedClipboard::save() {
    if (route_.native() && !pastesForReal(route_, companion_))
        return platform::untouchedClipboard();
    return x11_.save();
}

void RoutedClipboard::restore(const platform::ClipContents& contents) {
    if (!platform::untouched(contents)) x11_.restore(contents);
}

bool RoutedClipboard::restoreWaiting() const {
    return x11_.restoreWaiting();
}

void RoutedClipboard::writeTransientText(const QString& text) {
    if (route_.native() && !pastesForReal(route_, companion_))
        edit_.hold(text);
    else
        x11_.writeTransientText(text);
}

void RoutedClipboard::writeText(const QString& text) {
    // The copy notice's text is meant for the user to paste, wherever they are.
    x11_.writeText(text);
}

}  // namespace linuxdesk
