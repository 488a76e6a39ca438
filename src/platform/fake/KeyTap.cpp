#include "platform/fake/KeyTap.h"

namespace fake {

bool KeyTap::press(int code, quint64 flags) {
    pressed_.push_back({code, flags});
    const bool consumed = handler_ && wanted_ && handler_(code, flags);
    if (!consumed) keyboard_.apply(code, flags);
    return consumed;
}

bool KeyTap::install(Handler handler) {
    if (refusing_) return false;
    handler_ = std::move(handler);
    ++installs_;
    return true;
}

}  // namespace fake
