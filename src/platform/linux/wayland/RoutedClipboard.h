#pragma once
// platform::Clipboard of a Wayland session. A native window gets the rewrite through
// EditableText (NativeEdit holds the text to put in), so the user's clipboard is left alone:
// saving gives a marker that restoring recognises and puts nothing back for. A web browser's
// window with the compositor companion takes a real paste, through the clipboard as on X11.

#include "platform/Clipboard.h"

namespace linuxdesk {

class Companion;
class NativeEdit;
class NativeRoute;

class RoutedClipboard : public platform::Clipboard {
public:
    RoutedClipboard(NativeRoute& route, platform::Clipboard& x11, NativeEdit& edit,
                    Companion& companion)
        : route_(route), x11_(x11), edit_(edit), companion_(companion) {}
    platform::ClipContents save() override;
    void restore(const platform::ClipContents& contents) override;
    bool restoreWaiting() const override;
    void writeTransientText(const QString& text) override;
    void writeText(const QString& text) override;

private:
    NativeRoute& route_;
    platform::Clipboard& x11_;
    NativeEdit& edit_;
    Companion& companion_;
};

}  // namespace linuxdesk
