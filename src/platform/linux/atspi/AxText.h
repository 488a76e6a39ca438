#pragma once
// The text attributes of one element, in UTF-16 code units whatever the toolkit counts in.

#include <QString>
#include <optional>

#include "platform/Geometry.h"
#include "platform/linux/atspi/AtRef.h"
#include "platform/linux/atspi/Atspi.h"
#include "platform/linux/atspi/TextOffsets.h"

namespace linuxdesk::axtext {

// Each takes the element's current text, which the offsets are converted against.

// The selection, else the caret as an empty range.
std::optional<platform::Range> selectedRange(const AtRef& element, const QString& text,
                                             OffsetUnit unit,
                                             std::optional<OffsetUnit> selectionUnit = {});
std::optional<QString> selectedText(const AtRef& element, const QString& text, OffsetUnit unit,
                                    std::optional<OffsetUnit> selectionUnit = {});
// Rectangle of a range as the application reports it; an empty range gives a caret-wide
// rectangle at its place.
std::optional<platform::Rect> boundsForRange(const AtRef& element, const QString& text,
                                             const platform::Range& range, OffsetUnit unit,
                                             at::Coords coords = at::Coords::Screen);
// A selection, or the caret for an empty range. True when the application accepted it.
bool setSelectedRange(const AtRef& element, const QString& text, const platform::Range& range,
                      OffsetUnit unit);

// Replaces a range of the element's text through its editable text interface, leaving the caret
// after the new text as a paste does.
bool replace(const AtRef& element, const QString& text, const platform::Range& range,
             const QString& replacement, OffsetUnit unit);

}  // namespace linuxdesk::axtext
