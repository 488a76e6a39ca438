#include "platform/linux/atspi/TextRun.h"

#include "platform/linux/atspi/AtElement.h"

namespace linuxdesk {

namespace {

constexpr char16_t kObjectReplacement = u'\uFFFC';

}  // namespace

TextRun::TextRun(platform::Element holder, int index, QString text)
    : holder_(std::move(holder)), index_(index), text_(std::move(text)) {}

platform::ElementList TextRun::interleave(const AtRef& holder, const QString& text,
                                          const std::vector<AtRef>& children) {
    const platform::Element holderElement = AtElement::wrap(holder);
    platform::ElementList out;
    size_t nextChild = 0;
    int runs = 0;
    qsizetype runStart = 0;
    auto endRun = [&](qsizetype end) {
        const QString run = text.mid(runStart, end - runStart).trimmed();
        if (!run.isEmpty()) out.push_back(std::make_shared<TextRun>(holderElement, runs++, run));
    };
    auto push = [&](const AtRef& child) {
        if (child) out.push_back(AtElement::wrap(child));  // one that could not be read is skipped
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != kObjectReplacement) continue;
        endRun(i);
        runStart = i + 1;
        if (nextChild < children.size()) push(children[nextChild++]);
    }
    endRun(text.size());
    // Children the text does not place (a toolkit that counts differently) follow its text.
    for (; nextChild < children.size(); ++nextChild) push(children[nextChild]);
    return out;
}

}  // namespace linuxdesk
