#pragma once
// What applications say about their text: "object:text-changed", caret and selection events.
// An element whose text changes have been heard from is trusted to announce the next ones, so
// its text is read again only when it does (and now and then, in case one went missing); the
// text of an element never heard from is read on every poll as before. Each event also wakes
// the engine, so a change is seen when it happens rather than at the next poll.

#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "platform/linux/atspi/AtRef.h"

namespace linuxdesk {

class TextEvents {
public:
    TextEvents() = default;
    ~TextEvents();
    TextEvents(const TextEvents&) = delete;
    TextEvents& operator=(const TextEvents&) = delete;

    // Starts listening; true once listening. Needs the accessibility bus.
    bool start();
    // Called, on a later turn of the event loop, after events arrived.
    void onChange(std::function<void()> changed) { changed_ = std::move(changed); }

    // Whether the element (by its key) announces its text changes.
    bool announces(const QString& key) const { return texts_.contains(key); }
    // A stamp of the element's latest announced text change, 0 before any; compared between
    // reads. Stamps only grow, so forgetting elements never makes a change look undone.
    quint64 changes(const QString& key) const;
    // A stamp of the latest text change announced anywhere in the application on bus; 0 while
    // it has announced none (then nothing can be known from its silence).
    quint64 latestIn(const QString& bus) const;
    // The elements of the application on bus whose text changed after stamp since: what a
    // document read then must read again. Nothing when some of those may have been forgotten.
    std::optional<std::vector<QString>> changedSince(const QString& bus, quint64 since) const;
    // The element of a key heard from, while it is remembered.
    AtRef element(const QString& key) const;

private:
    static void onEvent(AtspiEvent* event, void* self);
    void heard(AtspiEvent* event);

    AtspiEventListener* listener_ = nullptr;
    struct Heard {
        quint64 stamp = 0;  // of its latest text change
        AtRef element;
    };
    std::map<QString, Heard> texts_;   // by element key
    std::map<QString, quint64> apps_;  // bus name -> stamp of its latest text change
    quint64 stamp_ = 0;
    quint64 forgotten_ = 0;  // the stamp when elements were last forgotten
    std::function<void()> changed_;
    bool wakePending_ = false;
    QObject context_;  // a wake still queued dies with this object
};

}  // namespace linuxdesk
