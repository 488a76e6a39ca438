// The helper work of one engine tick on the fake desktop: priming (already done), the focused
// element, isTextField, the text, the selection and the marked range.
#include <set>

#include "ax/Browser.h"
#include "ax/TextField.h"
#include "ax_timing.h"
#include "platform/fake/Desktop.h"

int main() {
    fake::Desktop desk;
    QString text;
    for (int i = 0; i < 20; ++i)
        text += "A paragraph of ordinary length that someone is writing.\n";
    auto field = desk.openField("com.tinyspeck.slackmacgap", text);
    field->set("AXDescription", QStringLiteral("Message #general"));
    auto& ax = desk.platform().ax;
    const auto app = *desk.platform().workspace.frontmost();
    std::set<qint64> primed;

    volatile qint64 sink = 0;
    bench::report("isTextField", bench::medianMicros(7, 100000, [&] {
                      sink = sink + ax::isTextField(ax, field->handle());
                  }));
    bench::report("tick: prime, focus, isTextField, value, ranges",
                  bench::medianMicros(7, 100000, [&] {
                      ax::prime(ax, primed, app);
                      auto el = ax::focusedElement(ax, app.pid);
                      if (!el || !ax::isTextField(ax, *el)) return;
                      auto value = ax::stringAttr(ax, *el, QStringLiteral("AXValue"));
                      auto range = ax::selectedRange(ax, *el);
                      auto marked = ax::markedRange(ax, *el);
                      sink = sink + (value ? value->size() : 0) + (range ? range->location : 0) +
                             (marked ? 1 : 0);
                  }));
    bench::report("bounds at the caret", bench::medianMicros(7, 100000, [&] {
                      sink = sink + ax::bounds(ax, field->handle(), text.size())->y;
                  }));
    return sink == -1;
}
