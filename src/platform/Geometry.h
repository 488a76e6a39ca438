#pragma once
// Plain values exchanged with the desktop. Ranges count UTF-16 code units; rectangles use
// screen coordinates with the origin at the top left of the primary screen, y downwards.

#include <QtGlobal>

namespace platform {

struct Range {
    qint64 location = 0;
    qint64 length = 0;
    qint64 end() const { return location + length; }
    friend bool operator==(const Range&, const Range&) = default;
};

struct Point {
    double x = 0, y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
    double width = 0, height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

struct Rect {
    double x = 0, y = 0, width = 0, height = 0;
    friend bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace platform
