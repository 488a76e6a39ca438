#pragma once
// An owned reference to one AT-SPI accessible object, so handles can be copied and kept
// without thinking about g_object_ref/unref.

#include <atspi/atspi.h>

#include <utility>

namespace linuxdesk {

class AtRef {
public:
    AtRef() = default;
    // Takes over a reference the caller owns (what libatspi's getters return).
    static AtRef adopt(AtspiAccessible* object) {
        AtRef ref;
        ref.object_ = object;
        return ref;
    }
    // Adds a reference of its own (for borrowed pointers such as an event's source).
    static AtRef retain(AtspiAccessible* object) {
        return adopt(object ? static_cast<AtspiAccessible*>(g_object_ref(object)) : nullptr);
    }

    AtRef(const AtRef& other) : object_(other.object_) {
        if (object_) g_object_ref(object_);
    }
    AtRef(AtRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    AtRef& operator=(AtRef other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~AtRef() {
        if (object_) g_object_unref(object_);
    }

    AtspiAccessible* get() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    AtspiAccessible* object_ = nullptr;
};

}  // namespace linuxdesk
