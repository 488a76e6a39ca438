#pragma once
// platform::Clipboard over QClipboard (needs a QGuiApplication). X11's clipboard holds one
// item offered in any number of formats, so a saved clipboard is one item with every format.

#include "platform/Clipboard.h"

namespace linuxdesk {

class QtClipboard : public platform::Clipboard {
public:
    platform::ClipContents save() override;
    void restore(const platform::ClipContents& contents) override;
    void writeTransientText(const QString& text) override;
    void writeText(const QString& text) override;
};

}  // namespace linuxdesk
