#pragma once
// Answers about an element that rarely change (role, states, name, description, identifier,
// object attributes, whether it has text), kept briefly so the engine's poll does not pay a
// bus round trip for each of them on every tick. The text is kept only for a moment: enough
// for the selection read that follows the text read of the same tick.

#include <QElapsedTimer>
#include <QString>
#include <map>
#include <optional>

#include "platform/linux/atspi/AtRef.h"
#include "platform/linux/atspi/Atspi.h"
#include "platform/linux/atspi/TextEvents.h"

namespace linuxdesk {

class ElementCache {
public:
    std::optional<AtspiRole> role(const AtRef& e);
    std::optional<at::States> states(const AtRef& e);
    std::optional<QString> name(const AtRef& e);
    std::optional<QString> description(const AtRef& e);
    std::optional<QString> accessibleId(const AtRef& e);
    std::optional<std::map<QString, QString>> attributes(const AtRef& e);
    bool hasText(const AtRef& e);
    std::optional<QString> text(const AtRef& e);

    // After a write the element's text or selection may have changed.
    void forgetText() { text_ = {}; }
    // Texts whose elements announce their changes are kept until they do.
    void useEvents(const TextEvents* events) { events_ = events; }
    const TextEvents* events() const { return events_; }

private:
    struct Entry {
        QElapsedTimer age;
        std::optional<AtspiRole> role;
        std::optional<at::States> states;
        std::optional<QString> name, description, id;
        std::optional<std::map<QString, QString>> attributes;
        std::optional<bool> hasText;
    };
    struct Text {
        QString key;
        quint64 changes = 0;  // the element's announced changes when it was read
        QElapsedTimer age;
        std::optional<QString> text;
    };
    Entry& entry(const AtRef& e);

    std::map<QString, Entry> entries_;
    size_t sweepAt_ = 0;  // the size at which old entries are next dropped
    Text text_;
    const TextEvents* events_ = nullptr;
};

}  // namespace linuxdesk
