#include "platform/linux/wayland/NativeEdit.h"

#include "main/Log.h"
#include "platform/Keys.h"
#include "platform/linux/atspi/AtspiAx.h"
#include "platform/linux/wayland/NativeRoute.h"

namespace linuxdesk {

namespace {

// The engine pastes right after selecting; a kept selection older than this is stale.
constexpr int kEditKeepMs = 2000;

}  // namespace

bool NativeEdit::select(const platform::Element& element, const platform::Range& range) {
    const auto text = ax_.value(element);
    if (!text || range.location < 0 || range.length < 0 || range.end() > text->size()) return false;
    kept_ = Kept{element, range, {}};
    kept_->age.start();
    return true;
}

std::optional<NativeEdit::Kept> NativeEdit::fresh() {
    if (kept_ && kept_->age.elapsed() > kEditKeepMs) kept_.reset();
    return kept_;
}

std::optional<platform::Range> NativeEdit::selection(const platform::Element& element) {
    const auto kept = fresh();
    if (!kept || !ax_.same(kept->element, element)) return std::nullopt;
    return kept->range;
}

void NativeEdit::post(int code, quint64 flags) {
    if (flags != platform::flag::Command) return;
    if (code == platform::key::V) {
        paste();
    } else if (code == platform::key::A) {
        const platform::Element element = route_.focused();
        if (const auto text = element ? ax_.value(element) : std::nullopt)
            select(element, {0, text->size()});
    }
}

void NativeEdit::paste() {
    const auto text = std::exchange(held_, std::nullopt);
    const auto kept = std::exchange(kept_, std::nullopt);
    if (!text) return;
    platform::Element element =
        kept && kept->age.elapsed() <= kEditKeepMs ? kept->element : nullptr;
    std::optional<platform::Range> range;
    if (element) {
        range = kept->range;
    } else if ((element = route_.focused())) {
        // A paste at the caret (a reply into an empty box): the application's own selection.
        const auto v = ax_.attribute(element, QStringLiteral("AXSelectedTextRange"));
        if (const auto* r = v ? std::get_if<platform::Range>(&*v) : nullptr) range = *r;
    }
    if (!element || !range || !ax_.replace(element, *range, *text))
        glimmo::log(QStringLiteral("could not write into the text box of %1").arg(route_.name()));
}

}  // namespace linuxdesk
