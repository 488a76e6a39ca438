#include "platform/linux/atspi/ElementCache.h"

#include <algorithm>

namespace linuxdesk {

namespace {

// Long enough to span several 0.3-second ticks, short enough that a field turned read-only
// or renamed is seen within a moment.
constexpr int kElementKeepMs = 2000;
constexpr int kTextKeepMs = 50;
// An element that announces its changes is read again after this even without one, in case
// an announcement went missing.
constexpr int kAnnouncedTextKeepMs = 5000;
// Entries of elements no longer asked about are dropped when the map grows past this.
constexpr size_t kMaxEntries = 512;

}  // namespace

ElementCache::Entry& ElementCache::entry(const AtRef& e) {
    const QString key = at::key(e);
    auto it = entries_.find(key);
    if (it != entries_.end() && it->second.age.elapsed() < kElementKeepMs) return it->second;
    if (entries_.size() >= sweepAt_) {
        for (auto i = entries_.begin(); i != entries_.end();)
            i = i->second.age.elapsed() >= kElementKeepMs ? entries_.erase(i) : std::next(i);
        // A walk over a large window keeps thousands of entries young: sweep again only once
        // the map has doubled, or every new element would pay a pass over all of them.
        sweepAt_ = std::max(kMaxEntries, 2 * entries_.size());
    }
    Entry& fresh = entries_[key];
    fresh = Entry{};
    fresh.age.start();
    return fresh;
}

std::optional<AtspiRole> ElementCache::role(const AtRef& e) {
    Entry& x = entry(e);
    if (!x.role) x.role = at::role(e);
    return x.role;
}

std::optional<at::States> ElementCache::states(const AtRef& e) {
    Entry& x = entry(e);
    if (!x.states) x.states = at::states(e);
    return x.states;
}

std::optional<QString> ElementCache::name(const AtRef& e) {
    Entry& x = entry(e);
    if (!x.name) x.name = at::name(e);
    return x.name;
}

std::optional<QString> ElementCache::description(const AtRef& e) {
    Entry& x = entry(e);
    if (!x.description) x.description = at::description(e);
    return x.description;
}

std::optional<QString> ElementCache::accessibleId(const AtRef& e) {
    Entry& x = entry(e);
    if (!x.id) x.id = at::accessibleId(e);
    return x.id;
}

std::optional<std::map<QString, QString>> ElementCache::attributes(const AtRef& e) {
    Entry& x = entry(e);
    if (!x.attributes) x.attributes = at::attributes(e);
    return x.attributes;
}

bool ElementCache::hasText(const AtRef& e) {
    Entry& x = entry(e);
    if (!x.hasText) x.hasText = at::hasText(e);
    return *x.hasText;
}

std::optional<QString> ElementCache::text(const AtRef& e) {
    const QString key = at::key(e);
    const bool announced = events_ && events_->announces(key);
    const quint64 changes = events_ ? events_->changes(key) : 0;
    const int keep = announced ? kAnnouncedTextKeepMs : kTextKeepMs;
    if (text_.text && text_.key == key && text_.changes == changes && text_.age.elapsed() < keep)
        return text_.text;
    text_.key = key;
    text_.changes = changes;
    text_.text = at::text(e);
    text_.age.start();
    return text_.text;
}

}  // namespace linuxdesk
