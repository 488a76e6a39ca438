#pragma once
// What the engine has on screen: one suggestion, or a list of reply drafts.

#include <QString>
#include <QStringList>

#include "platform/Ax.h"
#include "platform/Geometry.h"

namespace engine {

// A suggestion on screen: the paragraph it replaces and the rewrite.
struct Target {
    platform::Element el;
    platform::Range range;  // UTF-16 units of the field's text
    QString original;
    QString suggestion;
};

// Reply drafts on screen.
struct Replies {
    platform::Element el;
    QStringList options;
    int index = 0;
    QString key;  // cache and dismissal key of this reply box and conversation
    platform::Rect caret;
    bool more = false;  // more options are still streaming in
};

}  // namespace engine
