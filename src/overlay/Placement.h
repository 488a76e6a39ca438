#pragma once
// Where the panel goes and how wide a suggestion is: pure functions of their arguments.

#include <QString>
#include <optional>
#include <vector>

#include "platform/Geometry.h"
#include "platform/Screens.h"

namespace overlay {

constexpr double minBubbleWidth = 240;
constexpr double maxBubbleWidth = 460;
constexpr double replyWidth = 460;

// The bubble's outer width for a text measured w wide on one line: ceil(w) + 26 in 240..460.
double bubbleWidth(double measured);

// The width of text as one unbroken line in the 13-point system font.
double measureLine(const QString& text);

// A caret taller than 60 (a whole field reported as the caret) keeps only its top 22 points.
platform::Rect caretStrip(const platform::Rect& caret);

// The panel's frame for content of the given size next to caret, all in desktop coordinates
// (top-left origin). Absent when there is no screen to put it on.
std::optional<platform::Rect> placeFrame(const platform::Rect& caret, const platform::Size& size,
                                         const std::vector<platform::Screen>& screens,
                                         const std::optional<platform::Screen>& main);

}  // namespace overlay
