#include "platform/fake/KeyTap.h"

#include <utility>

namespace fake {

bool KeyTap::press(int code, quint64 flags) {
    const bool consumed = handler_ && wanted_ && handler_(code, flags);
    if (!consumed) keyboard_.apply(code, flags);
    return consumed;
}

void KeyTap::deliverPending() {
    const auto keys = std::exchange(pending_, {});
    for (const auto& k : keys) press(k.code, k.flags);
}

bool KeyTap::install(Handler handler) {
    handler_ = std::move(handler);
    ++installs_;
    return true;
}

}  // namespace fake
