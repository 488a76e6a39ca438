#include "platform/linux/atspi/FlatText.h"

#include <algorithm>

namespace linuxdesk {

namespace {

bool isBreak(QChar c) {
    return c == u'\n' || c == u'\r' || c == QChar(0x2029) || c == QChar(0x2028);
}

}  // namespace

FlatText::FlatText(const Block& root) {
    join(root, -1, 0);
}

void FlatText::lineBreak() {
    if (!text_.isEmpty() && !isBreak(text_.back())) text_ += u'\n';
}

void FlatText::join(const Block& block, int parent, qint64 slot) {
    const int id = int(parents_.size());
    parents_.push_back(parent);
    slots_.push_back(slot);
    children_.emplace_back();
    size_t next = 0;
    qint64 from = 0;
    auto run = [&](qint64 to) {
        runs_.push_back({id, from, to - from, text_.size()});
        text_ += QStringView(block.text).mid(from, to - from);
    };
    for (qint64 i = 0; i < block.text.size(); ++i) {
        // Placeholders beyond the children read stay in the text as they are.
        if (block.text[i] != kEmbeddedObject || next >= block.children.size()) continue;
        run(i);
        const Block& child = block.children[next++];
        children_[size_t(id)].emplace_back(i, int(parents_.size()));
        if (!child.inlined) lineBreak();
        join(child, id, i);
        if (!child.inlined) lineBreak();
        from = i + 1;
    }
    run(block.text.size());
}

std::optional<int> FlatText::childAt(int block, qint64 offset) const {
    for (const auto& [at, child] : children_[size_t(block)])
        if (at == offset) return child;
    return std::nullopt;
}

qint64 FlatText::toFlat(const Place& place) const {
    // The block's runs are in order and one placeholder apart: the last that starts at or
    // before the offset holds it, its end standing for the placeholder that follows.
    const Run* holder = nullptr;
    for (const Run& r : runs_)
        if (r.block == place.block && r.from <= place.offset) holder = &r;
    if (!holder) return 0;
    return holder->at + std::min(place.offset - holder->from, holder->length);
}

FlatText::Place FlatText::fromFlat(qint64 offset, bool end) const {
    offset = std::clamp<qint64>(offset, 0, text_.size());
    const Run* found = nullptr;
    for (const Run& r : runs_) {
        if (r.at > offset) break;
        if (offset > r.at + r.length) continue;
        found = &r;
        // A start prefers the run it opens; an end the run it closes.
        if (end ? offset > r.at : offset < r.at + r.length) break;
    }
    if (!found) {
        // On a line break of its own between blocks: the start of what follows.
        for (const Run& r : runs_)
            if (r.at > offset) return {r.block, r.from};
        return {0, 0};
    }
    return {found->block, found->from + offset - found->at};
}

FlatText::Place FlatText::lift(Place place, int ancestor, bool end) const {
    while (place.block != ancestor && parent(place.block) >= 0)
        place = {parent(place.block), slot(place.block) + (end ? 1 : 0)};
    return place;
}

int FlatText::common(int a, int b) const {
    std::vector<int> chain;
    for (int x = a; x >= 0; x = parent(x)) chain.push_back(x);
    for (int y = b; y >= 0; y = parent(y))
        if (std::find(chain.begin(), chain.end(), y) != chain.end()) return y;
    return 0;
}

}  // namespace linuxdesk
