#pragma once
// A run of text that an element holds between its child objects. Chromium, Electron and Firefox
// put a page's text on the paragraph, section or container itself, with one object replacement
// character where each child object (a link, a nested block) sits. Each run reads as a static
// text of its own, placed among the children where the text shows it, so a walk of the tree
// meets the text in reading order, as it does where toolkits give text elements of their own.

#include <QString>
#include <vector>

#include "platform/Ax.h"
#include "platform/linux/atspi/AtRef.h"

namespace linuxdesk {

class TextRun : public platform::ElementHandle {
public:
    TextRun(platform::Element holder, int index, QString text);
    const platform::Element& holder() const { return holder_; }
    int index() const { return index_; }
    const QString& text() const { return text_; }

    // The children of holder, whose own text is text: the child objects, in order, with the
    // runs of text between them. Runs of nothing but white space and null children are left
    // out; a null child still takes its place in the text.
    static platform::ElementList interleave(const AtRef& holder, const QString& text,
                                            const std::vector<AtRef>& children);

private:
    platform::Element holder_;
    int index_;
    QString text_;
};

}  // namespace linuxdesk
