#pragma once
// Reading and writing the focused text box through the accessibility seam. Every operation
// turns a failure into an absent value or false; nothing is cached between calls.

#include <QString>
#include <optional>

#include "platform/Ax.h"
#include "platform/Geometry.h"

namespace ax {

std::optional<QString> stringAttr(platform::Ax& ax, const platform::Element& element,
                                  const QString& name);
// Absent unless the value is an element (never holds a null handle).
std::optional<platform::Element> elementAttr(platform::Ax& ax, const platform::Element& element,
                                             const QString& name);
std::optional<platform::Element> focusedElement(platform::Ax& ax, qint64 pid);

std::optional<platform::Range> selectedRange(platform::Ax& ax, const platform::Element& element);
// True only when the selection reads back as exactly that range.
bool setSelectedRange(platform::Ax& ax, const platform::Element& element, qint64 location,
                      qint64 length);
std::optional<platform::Range> markedRange(platform::Ax& ax, const platform::Element& element);

// Where to put the bubble for a caret at UTF-16 offset caret: the character before it, else
// the element's own frame.
std::optional<platform::Rect> bounds(platform::Ax& ax, const platform::Element& element,
                                     qint64 caret);

// An editable text box that is not a password, search or address field.
bool isTextField(platform::Ax& ax, const platform::Element& element);

}  // namespace ax
