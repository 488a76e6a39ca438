#pragma once
// KTextEditor, KDE's editor part (Kate, KWrite, KDevelop, Kile), answers each character's
// rectangle with no height and too far right: the position is mapped once from its text area
// to the area's parent (beside the line-number border) and then again from the text area to
// the screen, so the border's width counts twice (its bars above the text area do not: they
// sit outside that parent). Such a rectangle is mended here: moved back by the text area's
// offset from its parent and given the height of a line of the desktop's fixed-width font,
// which the editor uses unless told otherwise. No other toolkit here answers a zero height.

#include <optional>

#include "platform/Geometry.h"
#include "platform/linux/atspi/AtRef.h"
#include "platform/linux/atspi/Atspi.h"

namespace linuxdesk::kate {

// r as the element reported it for a character; absent when r has a height (nothing to mend)
// or the element's frames are unknown.
std::optional<platform::Rect> mended(const AtRef& element, const platform::Rect& r,
                                     at::Coords coords);

}  // namespace linuxdesk::kate
