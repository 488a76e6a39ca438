#include "platform/linux/atspi/TextEvents.h"

#include <atspi/atspi.h>

#include <QTimer>

#include "platform/linux/atspi/Atspi.h"

namespace linuxdesk {

namespace {

constexpr const char* kEvents[] = {"object:text-changed", "object:text-caret-moved",
                                   "object:text-selection-changed"};
// Elements remembered at most; a long session visits many text boxes.
constexpr size_t kMaxElements = 256;

}  // namespace

TextEvents::~TextEvents() {
    if (!listener_) return;
    for (const char* event : kEvents) {
        GError* error = nullptr;
        atspi_event_listener_deregister(listener_, event, &error);
        if (error) g_error_free(error);
    }
    g_object_unref(listener_);
}

bool TextEvents::start() {
    if (listener_) return true;
    if (!at::init()) return false;
    listener_ = atspi_event_listener_new(&TextEvents::onEvent, this, nullptr);
    bool any = false;
    for (const char* event : kEvents) {
        GError* error = nullptr;
        any |= bool(atspi_event_listener_register(listener_, event, &error));
        if (error) g_error_free(error);
    }
    return any;
}

quint64 TextEvents::changes(const QString& key) const {
    const auto it = texts_.find(key);
    return it == texts_.end() ? 0 : it->second.stamp;
}

AtRef TextEvents::element(const QString& key) const {
    const auto it = texts_.find(key);
    return it == texts_.end() ? AtRef() : it->second.element;
}

quint64 TextEvents::latestIn(const QString& bus) const {
    const auto it = apps_.find(bus);
    return it == apps_.end() ? 0 : it->second;
}

std::optional<std::vector<QString>> TextEvents::changedSince(const QString& bus,
                                                             quint64 since) const {
    if (forgotten_ > since) return std::nullopt;
    std::vector<QString> keys;
    const QString prefix = bus + u'|';
    for (const auto& [key, heard] : texts_)
        if (heard.stamp > since && key.startsWith(prefix)) keys.push_back(key);
    return keys;
}

void TextEvents::onEvent(AtspiEvent* event, void* self) {
    static_cast<TextEvents*>(self)->heard(event);
    g_boxed_free(ATSPI_TYPE_EVENT, event);  // the listener gets a copy to free
}

void TextEvents::heard(AtspiEvent* event) {
    if (!event || !event->source || !event->type) return;
    if (g_str_has_prefix(event->type, "object:text-changed")) {
        AtRef source = AtRef::retain(event->source);
        const QString key = at::key(source);
        if (!texts_.contains(key) && texts_.size() >= kMaxElements) {
            texts_.clear();
            forgotten_ = stamp_;
        }
        texts_[key] = {apps_[key.section(u'|', 0, 0)] = ++stamp_, std::move(source)};
    }
    // Events come while libatspi dispatches, possibly inside a call of ours: the engine hears
    // of them on the next turn of the event loop, once for a burst.
    if (!changed_ || wakePending_) return;
    wakePending_ = true;
    QTimer::singleShot(0, &context_, [this] {
        wakePending_ = false;
        if (changed_) changed_();
    });
}

}  // namespace linuxdesk
