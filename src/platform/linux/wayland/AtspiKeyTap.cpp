#include "platform/linux/wayland/AtspiKeyTap.h"

#include <QTimer>

#include "platform/Keys.h"
#include "platform/linux/atspi/AtElement.h"
#include "platform/linux/atspi/Atspi.h"
#include "platform/linux/atspi/AtspiAx.h"
#include "platform/linux/wayland/NativeRoute.h"
#include "platform/linux/wayland/TypedTab.h"

namespace linuxdesk {

namespace {

constexpr unsigned kPressed = 1u << ATSPI_KEY_PRESSED_EVENT;
// The registry hands a listener only keys whose modifiers equal its mask. An unmodified key
// still carries Caps Lock (Lock) or Num Lock (Mod2) when they are on, so each is registered.
constexpr unsigned kLockMasks[] = {0, 2, 16, 18};
constexpr char kInsert[] = "object:text-changed:insert";

std::optional<int> codeOf(unsigned keysym) {
    switch (keysym) {
        case 0xff09:
            return platform::key::Tab;
        case 0xff1b:
            return platform::key::Esc;
        case 0xff52:
            return platform::key::Up;
        case 0xff54:
            return platform::key::Down;
        default:
            return std::nullopt;
    }
}

}  // namespace

AtspiKeyTap::~AtspiKeyTap() {
    listen(false);
    if (keys_) g_object_unref(keys_);
    if (inserts_) g_object_unref(inserts_);
}

bool AtspiKeyTap::install(Handler handler) {
    if (!at::init()) return false;
    handler_ = std::move(handler);
    if (!keys_) keys_ = atspi_device_listener_new(&AtspiKeyTap::onKey, this, nullptr);
    if (!inserts_) inserts_ = atspi_event_listener_new(&AtspiKeyTap::onInsert, this, nullptr);
    return keys_ && inserts_;
}

void AtspiKeyTap::setWanted(bool wanted) {
    wanted_ = wanted && route_.native();
    before_.reset();
    if (wanted_) {
        const platform::Element element = route_.focused();
        if (element && ax_.gtkVersion(element) == 4) {
            const auto text = ax_.value(element);
            const auto sel = ax_.attribute(element, QStringLiteral("AXSelectedTextRange"));
            const auto* range = sel ? std::get_if<platform::Range>(&*sel) : nullptr;
            if (text && range) before_ = Before{element, *text, range->end()};
        }
        listen(true);
        return;
    }
    // Letting go may be asked from inside the key callback, while the registry waits for its
    // answer: the registry is told once that answer is out.
    QTimer::singleShot(0, this, [this] {
        if (!wanted_) listen(false);
    });
}

void AtspiKeyTap::listen(bool on) {
    if (on == listening_ || !keys_ || !inserts_) return;
    listening_ = on;
    for (unsigned mask : kLockMasks) {
        GError* error = nullptr;
        if (on)
            atspi_register_keystroke_listener(
                keys_, nullptr, mask, kPressed,
                AtspiKeyListenerSyncType(ATSPI_KEYLISTENER_SYNCHRONOUS |
                                         ATSPI_KEYLISTENER_CANCONSUME),
                &error);
        else
            atspi_deregister_keystroke_listener(keys_, nullptr, mask, kPressed, &error);
        if (error) g_error_free(error);
    }
    GError* error = nullptr;
    if (on)
        atspi_event_listener_register(inserts_, kInsert, &error);
    else
        atspi_event_listener_deregister(inserts_, kInsert, &error);
    if (error) g_error_free(error);
}

int AtspiKeyTap::onKey(AtspiDeviceEvent* stroke, void* self) {
    if (!stroke) return false;
    const bool consumed = static_cast<AtspiKeyTap*>(self)->key(stroke->id, stroke->modifiers);
    g_boxed_free(ATSPI_TYPE_DEVICE_EVENT, stroke);
    return consumed;
}

bool AtspiKeyTap::key(unsigned keysym, unsigned modifiers) {
    Q_UNUSED(modifiers);  // only unmodified keys are registered for
    const auto code = codeOf(keysym);
    if (!code || !wanted_ || !handler_) return false;
    return handler_(*code, 0);
}

void AtspiKeyTap::onInsert(AtspiEvent* event, void* self) {
    if (event && event->source)
        static_cast<AtspiKeyTap*>(self)->takeBackTab(AtElement::wrap(AtRef::retain(event->source)));
    if (event) g_boxed_free(ATSPI_TYPE_EVENT, event);
}

bool AtspiKeyTap::takeBackTab(const platform::Element& element) {
    if (!wanted_ || !before_ || !ax_.same(element, before_->element)) return false;
    const auto now = ax_.value(element);
    if (!now || !tabTypedAt(before_->text, before_->caret, *now)) return false;
    const qint64 at = before_->caret;
    before_.reset();
    ax_.replace(element, {at, 1}, QString());
    // Reported once the caller is done reading: the engine then acts on the text as it was.
    QTimer::singleShot(0, this, [this] {
        if (handler_) handler_(platform::key::Tab, 0);
    });
    return true;
}

}  // namespace linuxdesk
