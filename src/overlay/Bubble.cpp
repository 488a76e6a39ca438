#include "overlay/Bubble.h"

#include "overlay/BubblePanel.h"
#include "overlay/Placement.h"

namespace overlay {

Bubble::Bubble(platform::Screens& screens)
    : screens_(screens), panel_(std::make_unique<BubblePanel>()) {}

Bubble::~Bubble() = default;

void Bubble::show(const QString& text, const QString& hint, const platform::Rect& caret,
                  std::function<void()> onApply) {
    onApply_ = std::move(onApply);
    BubbleView& view = panel_->bubble();
    view.set(text, bubbleWidth(measureLine(text)), hint, [this] {
        const auto onApply = onApply_;
        if (onApply) onApply();
    });
    Shown next;
    next.kind = Shown::Kind::Suggestion;
    next.text = text;
    next.hint = hint;
    place(view, next, caret);
}

void Bubble::showReplies(const QStringList& options, int selected, bool more,
                         const platform::Rect& caret, std::function<void(int)> onPick) {
    onPick_ = std::move(onPick);
    ReplyView& view = panel_->replies();
    view.set(options, selected, more, replyHint, [this](int row) {
        const auto onPick = onPick_;
        if (onPick) onPick(row);
    });
    Shown next;
    next.kind = Shown::Kind::Replies;
    next.hint = replyHint;
    next.options = options;
    next.selected = selected;
    next.more = more;
    place(view, next, caret);
}

void Bubble::place(QWidget& view, Shown next, const platform::Rect& caret) {
    const QSize size = view.sizeHint();
    const auto frame = placeFrame(caret, {double(size.width()), double(size.height())},
                                  screens_.screens(), screens_.main());
    if (!frame) {
        hide();
        return;
    }
    next.frame = *frame;
    shown_ = std::move(next);
    panel_->present(view, *frame, screens_.composited());
}

void Bubble::hide() {
    if (!panel_->isVisible()) return;
    panel_->hide();
    shown_ = Shown();
}

bool Bubble::visible() const {
    return panel_->isVisible();
}

const Shown& Bubble::shown() const {
    return shown_;
}

void Bubble::click(int row) {
    if (!visible()) return;
    if (shown_.kind == Shown::Kind::Suggestion && row == -1) panel_->bubble().click();
    if (shown_.kind == Shown::Kind::Replies) panel_->replies().click(row);
}

}  // namespace overlay
