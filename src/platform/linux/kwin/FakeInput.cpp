#include "platform/linux/kwin/FakeInput.h"

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdlib>
#include <cstring>
#include <optional>

#include "fake-input-client-protocol.h"

namespace linuxdesk {

namespace {

// Linux input codes of the keys Glimmo presses, for a layout that cannot be read.
std::optional<std::uint32_t> usCode(std::uint32_t keysym) {
    switch (keysym) {
    case XKB_KEY_Tab: return 15;
    case XKB_KEY_Escape: return 1;
    case XKB_KEY_Up: return 103;
    case XKB_KEY_Down: return 108;
    case XKB_KEY_Control_L: return 29;
    case XKB_KEY_Shift_L: return 42;
    case XKB_KEY_Return: return 28;
    case XKB_KEY_a: return 30;
    case XKB_KEY_v: return 47;
    default: return std::nullopt;
    }
}

// xkb key codes are Linux input codes plus 8.
constexpr std::uint32_t kEvdevOffset = 8;

}  // namespace

struct FakeInput::State {
    wl_display* display = nullptr;
    wl_registry* registry = nullptr;
    org_kde_kwin_fake_input* fake = nullptr;
    wl_seat* seat = nullptr;
    wl_keyboard* keyboard = nullptr;
    xkb_context* context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    xkb_keymap* keymap = nullptr;

    ~State() {
        if (keymap) xkb_keymap_unref(keymap);
        if (context) xkb_context_unref(context);
        if (keyboard) wl_keyboard_destroy(keyboard);
        if (seat) wl_seat_destroy(seat);
        if (fake) org_kde_kwin_fake_input_destroy(fake);
        if (registry) wl_registry_destroy(registry);
        if (display) wl_display_disconnect(display);
    }

    struct Key {
        std::uint32_t code;
        bool shifted;
    };
    // The first key giving KEYSYM in the first layout, plain or with Shift.
    std::optional<Key> find(std::uint32_t keysym) const {
        if (!keymap) {
            const auto code = usCode(keysym);
            return code ? std::optional<Key>(Key{*code, false}) : std::nullopt;
        }
        for (const xkb_level_index_t level : {0u, 1u}) {
            for (xkb_keycode_t k = xkb_keymap_min_keycode(keymap);
                 k <= xkb_keymap_max_keycode(keymap); ++k) {
                const xkb_keysym_t* syms = nullptr;
                const int n = xkb_keymap_key_get_syms_by_level(keymap, k, 0, level, &syms);
                for (int i = 0; i < n; ++i)
                    if (syms[i] == keysym && k >= kEvdevOffset)
                        return Key{k - kEvdevOffset, level == 1};
            }
        }
        return std::nullopt;
    }

    void send(std::uint32_t code, bool pressed) {
        org_kde_kwin_fake_input_keyboard_key(
            fake, code, pressed ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED);
    }

    static void global(void* data, wl_registry* registry, std::uint32_t name,
                       const char* interface, std::uint32_t version) {
        auto* s = static_cast<State*>(data);
        if (std::strcmp(interface, org_kde_kwin_fake_input_interface.name) == 0 && version >= 4) {
            s->fake = static_cast<org_kde_kwin_fake_input*>(
                wl_registry_bind(registry, name, &org_kde_kwin_fake_input_interface, 4));
        } else if (std::strcmp(interface, wl_seat_interface.name) == 0 && !s->seat) {
            s->seat = static_cast<wl_seat*>(wl_registry_bind(registry, name, &wl_seat_interface, 1));
        }
    }
    static void globalRemove(void*, wl_registry*, std::uint32_t) {}

    static void keymapEvent(void* data, wl_keyboard*, std::uint32_t format, std::int32_t fd,
                            std::uint32_t size) {
        auto* s = static_cast<State*>(data);
        if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1) {
            void* map = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, fd, 0);
            if (map != MAP_FAILED) {
                if (s->keymap) xkb_keymap_unref(s->keymap);
                s->keymap = xkb_keymap_new_from_string(s->context, static_cast<const char*>(map),
                                                       XKB_KEYMAP_FORMAT_TEXT_V1,
                                                       XKB_KEYMAP_COMPILE_NO_FLAGS);
                munmap(map, size);
            }
        }
        close(fd);
    }
    static void enter(void*, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {}
    static void leave(void*, wl_keyboard*, std::uint32_t, wl_surface*) {}
    static void key(void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t,
                    std::uint32_t) {}
    static void modifiers(void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t,
                          std::uint32_t, std::uint32_t) {}
    static void repeat(void*, wl_keyboard*, std::int32_t, std::int32_t) {}

    static constexpr wl_registry_listener registryListener = {&global, &globalRemove};
    static constexpr wl_keyboard_listener keyboardListener = {&keymapEvent, &enter, &leave,
                                                              &key,         &modifiers, &repeat};

    bool roundtrip() { return wl_display_roundtrip(display) >= 0; }

};

FakeInput::FakeInput() : s_(std::make_unique<State>()) {
    // Only in a Wayland session: WAYLAND_DISPLAY names KWin's socket.
    if (!std::getenv("WAYLAND_DISPLAY")) return;
    s_->display = wl_display_connect(nullptr);
    if (!s_->display) return;
    s_->registry = wl_display_get_registry(s_->display);
    wl_registry_add_listener(s_->registry, &State::registryListener, s_.get());
    s_->roundtrip();
    if (!s_->fake) return;
    org_kde_kwin_fake_input_authenticate(s_->fake, "Glimmo",
                                         "pastes the rewrite and hands back keys it does not use");
    if (s_->seat) {
        s_->keyboard = wl_seat_get_keyboard(s_->seat);
        wl_keyboard_add_listener(s_->keyboard, &State::keyboardListener, s_.get());
    }
    s_->roundtrip();  // the keymap
}

FakeInput::~FakeInput() = default;

bool FakeInput::available() const {
    return s_->fake != nullptr;
}

bool FakeInput::key(std::uint32_t keysym, bool pressed) {
    if (!s_->fake) return false;
    const auto key = s_->find(keysym);
    if (!key) return false;
    const auto shift = usCode(XKB_KEY_Shift_L);
    if (key->shifted && pressed) s_->send(*shift, true);
    s_->send(key->code, pressed);
    if (key->shifted && !pressed) s_->send(*shift, false);
    return s_->roundtrip();
}

bool FakeInput::press(const std::vector<std::uint32_t>& keysyms) {
    for (const std::uint32_t keysym : keysyms)
        if (!key(keysym, true)) return false;
    for (auto it = keysyms.rbegin(); it != keysyms.rend(); ++it)
        if (!key(*it, false)) return false;
    return true;
}

bool FakeInput::moveBy(double dx, double dy) {
    if (!s_->fake) return false;
    org_kde_kwin_fake_input_pointer_motion(s_->fake, wl_fixed_from_double(dx),
                                           wl_fixed_from_double(dy));
    return s_->roundtrip();
}

bool FakeInput::click() {
    if (!s_->fake) return false;
    constexpr std::uint32_t kLeft = 0x110;
    org_kde_kwin_fake_input_button(s_->fake, kLeft, WL_POINTER_BUTTON_STATE_PRESSED);
    s_->roundtrip();
    org_kde_kwin_fake_input_button(s_->fake, kLeft, WL_POINTER_BUTTON_STATE_RELEASED);
    return s_->roundtrip();
}

}  // namespace linuxdesk
