#pragma once
// The accessibility seam. Attribute names are the engine's vocabulary ("AXValue",
// "AXSelectedTextRange", "AXBoundsForRange", ...); each backend translates them.

#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "platform/Geometry.h"

namespace platform {

// An opaque handle to one element of another process. Two handles may name the same
// element: compare them with Ax::same, never by pointer.
class ElementHandle {
public:
    virtual ~ElementHandle() = default;
};
using Element = std::shared_ptr<ElementHandle>;  // null: no element

// An address, kept apart from plain strings because applications report both.
struct Url {
    QString text;
    friend bool operator==(const Url&, const Url&) = default;
};

using ElementList = std::vector<Element>;
using Value = std::variant<QString, Element, ElementList, Range, Point, Size, Rect, bool, Url>;

class Ax {
public:
    virtual ~Ax() = default;

    // Whether this process may use the accessibility interface at all.
    virtual bool trusted() = 0;
    // Asks for that permission (the desktop may show its own prompt, or just switch it on).
    virtual void requestTrust() = 0;

    // The application element of a process; null when the process exposes nothing.
    virtual Element application(qint64 pid) = 0;

    // Attribute reads: absent on any failure (unsupported, gone, not answering).
    virtual std::optional<Value> attribute(const Element& element, const QString& name) = 0;
    virtual std::optional<Value> parameterized(const Element& element, const QString& name,
                                               const Value& parameter) = 0;
    // Attribute write: true when the application accepted it (not necessarily applied).
    virtual bool setAttribute(const Element& element, const QString& name, const Value& value) = 0;

    // Identity of two handles; false when either is null.
    virtual bool same(const Element& a, const Element& b) = 0;

    // Running applications found without a readable tree that show one only when started
    // again, by their own names, each once; empty when none is known.
    virtual std::vector<QString> restartNeeded() = 0;

    // Calls changed, on a later turn of the event loop, when the desktop says some text, caret
    // or selection changed; where it never says so, the engine's poll alone finds changes.
    virtual void onChange(std::function<void()> changed) { (void)changed; }
};

}  // namespace platform
