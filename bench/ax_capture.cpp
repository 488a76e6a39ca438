// A capture over a chat window of 6,000 elements before the reply box: the element limit ends
// it, so this is the longest walk a tick can make on a fast application.
#include "ax/Conversation.h"
#include "ax_timing.h"
#include "platform/fake/Desktop.h"

int main() {
    fake::Desktop desk;
    auto& app = desk.addApp("com.tinyspeck.slackmacgap", "Slack");
    auto window = app.addWindow("general");
    auto list = window->add("AXList");
    // Messages of a group, a name, a text and a reactions row: four elements each.
    for (int i = 0; i < 1600; ++i) {
        auto message = list->add("AXGroup");
        message->addText(QStringLiteral("Ann"));
        message->addText(QStringLiteral("Message number %1 of the conversation.").arg(i));
        message->add("AXGroup");
    }
    auto box = window->add(fake::TextField::create());
    app.focus(box);
    auto& ax = desk.platform().ax;

    volatile qint64 sink = 0;
    bench::report(
        "conversation, 6000 elements", bench::medianMicros(7, 20, [&] {
            sink =
                sink + ax::conversation(ax, desk.clock(), window->handle(), box->handle()).size();
        }));
    bench::report("replyContext, 6000 elements", bench::medianMicros(7, 20, [&] {
                      auto context =
                          ax::replyContext(ax, desk.clock(), app.info(), app.element()->handle(),
                                           box->handle(), QString(), 0);
                      sink = sink + context->conversation.size();
                  }));
    return sink == -1;
}
