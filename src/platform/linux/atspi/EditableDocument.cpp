#include "platform/linux/atspi/EditableDocument.h"

#include "platform/linux/atspi/AxText.h"

#include <QHash>
#include <algorithm>

#include "main/Log.h"

namespace linuxdesk {

namespace {

// A body of more blocks than this is read only that far, which the log says once: far more
// than the longest quoted thread, but a bound on what one read may cost.
constexpr int kMaxBlocks = 20000;
constexpr int kMaxDepth = 40;
// A read is kept for the reads of one engine tick, short enough to see the next keystroke;
// after that only some blocks are read again (see update): what the application announced,
// those around the caret, and this many more in turn.
constexpr int kKeepMs = 50;
constexpr int kSweepBlocks = 16;
// Whether a page is editable is asked on every read of it, and changes only with the page.
constexpr int kVerdictMs = 1000;

bool blockRole(AtspiRole role) {
    switch (role) {
        case ATSPI_ROLE_PARAGRAPH:
        case ATSPI_ROLE_SECTION:
        case ATSPI_ROLE_BLOCK_QUOTE:
        case ATSPI_ROLE_HEADING:
        case ATSPI_ROLE_LIST:
        case ATSPI_ROLE_LIST_ITEM:
        case ATSPI_ROLE_TABLE:
        case ATSPI_ROLE_TABLE_ROW:
        case ATSPI_ROLE_TABLE_CELL:
        case ATSPI_ROLE_FORM:
        case ATSPI_ROLE_ARTICLE:
        case ATSPI_ROLE_PANEL:
        case ATSPI_ROLE_DOCUMENT_WEB:
        case ATSPI_ROLE_DOCUMENT_FRAME:
            return true;
        default:
            return false;
    }
}

std::optional<QString> displayOf(const std::optional<std::map<QString, QString>>& attributes) {
    if (!attributes) return std::nullopt;
    const auto it = attributes->find(QStringLiteral("display"));
    if (it == attributes->end()) return std::nullopt;
    return it->second;
}

bool isLineBreak(QChar c) {
    return c == u'\n' || c == u'\r' || c == QChar(0x2028) || c == QChar(0x2029);
}

}  // namespace

bool EditableDocument::holds(const AtRef& element) {
    if (!element) return false;
    const auto role = cache_.role(element);
    const auto s = cache_.states(element);
    if (!role || !s || s->readOnly) return false;
    if (*role == ATSPI_ROLE_DOCUMENT_WEB)
        return cache_.hasText(element) ? s->editable : editablePage(element);
    // A web page's rich-text editor (ProseMirror, Quill, Lexical, Slate, CKEditor and their
    // kind): an editable box whose paragraphs are child blocks, each a placeholder in its text.
    // Browsers show it as a section (a plain editable <div>) or an entry (role="textbox");
    // toolkits' own text views are text, and their text never holds blocks.
    if (!s->editable || !(*role == ATSPI_ROLE_SECTION || *role == ATSPI_ROLE_ENTRY)) return false;
    const auto text = cache_.text(element);
    return text && text->contains(kEmbeddedObject);
}

bool EditableDocument::editablePage(const AtRef& document) {
    const QString key = at::key(document);
    if (verdict_ && verdict_->key == key && verdict_->age.elapsed() < kVerdictMs)
        return verdict_->editable;
    // The document states nothing; its first block's text says whether it can be edited.
    const AtRef first = at::child(document, 0);
    const bool editable = first && at::textAttribute(first, 0, "editable") == QLatin1String("true");
    verdict_.emplace(Verdict{key, editable, {}});
    verdict_->age.start();
    return editable;
}

EditableDocument::Node EditableDocument::nodeOf(const AtRef& element, QString text, int depth,
                                                std::vector<Node>* reuse) {
    Node node;
    node.ref = element;
    node.key = element ? at::key(element) : QString();
    node.text = std::move(text);
    readChildren(node, depth, reuse);
    return node;
}

void EditableDocument::readChildren(Node& node, int depth, std::vector<Node>* reuse) {
    node.children.clear();
    const int placeholders = int(node.text.count(kEmbeddedObject));
    if (!node.ref || depth >= kMaxDepth || placeholders == 0) return;
    QHash<QString, Node*> known;
    if (reuse)
        for (Node& n : *reuse)
            if (n.ref) known.insert(n.key, &n);
    // Only the children that have a placeholder in the text take part (see FlatText).
    const int count = std::min(at::childCount(node.ref).value_or(0), placeholders);
    for (int i = 0; i < count && ++visited_ <= kMaxBlocks; ++i) {
        const AtRef child = at::child(node.ref, i);
        if (Node* old = child ? known.take(at::key(child)) : nullptr) {
            node.children.push_back(std::move(*old));
            continue;
        }
        Node n = nodeOf(child, child ? at::text(child).value_or(QString()) : QString(), depth + 1,
                        nullptr);
        if (child) {
            // Gecko names the CSS display of each element; other toolkits only the role.
            const auto display = displayOf(cache_.attributes(child));
            n.inlined = display ? display->startsWith(QLatin1String("inline"))
                                : !blockRole(cache_.role(child).value_or(ATSPI_ROLE_INVALID));
        }
        node.children.push_back(std::move(n));
    }
}

namespace {

// The node's blocks for FlatText, numbered (in nodes) in the same order.
Block blockOf(auto& node, auto& nodes) {
    nodes.push_back(&node);
    Block block{node.text, node.inlined, {}};
    block.children.reserve(node.children.size());
    for (auto& child : node.children) block.children.push_back(blockOf(child, nodes));
    return block;
}

}  // namespace

void EditableDocument::index(Read& r) {
    r.nodes.clear();
    r.flat = FlatText(blockOf(r.root, r.nodes));
}

std::optional<EditableDocument::Read> EditableDocument::readWhole(const AtRef& document,
                                                                  const QString& key,
                                                                  quint64 latest) {
    auto text = at::text(document);
    const bool textless = !text && !cache_.hasText(document);
    if (textless)
        text = QString(std::min(at::childCount(document).value_or(0), kMaxBlocks), kEmbeddedObject);
    if (!text || (textless && text->isEmpty())) return std::nullopt;
    visited_ = 0;
    Read r;
    r.key = key;
    r.latest = latest;
    r.textless = textless;
    r.root = nodeOf(document, std::move(*text), 0, nullptr);
    if (visited_ > kMaxBlocks && cutSaid_ != key) {
        cutSaid_ = key;
        glimmo::log(QStringLiteral("a document of more than %1 blocks is read only that far")
                        .arg(kMaxBlocks));
    }
    r.age.start();
    return r;
}

bool EditableDocument::reread(Read& r, std::vector<int> blocks, std::vector<int> reshape) {
    // Children are looked at again the deepest first: taking a child over moves it.
    const auto depth = [&r](int block) {
        int d = 0;
        while ((block = r.flat.parent(block)) >= 0) ++d;
        return d;
    };
    std::sort(blocks.begin(), blocks.end());
    blocks.erase(std::unique(blocks.begin(), blocks.end()), blocks.end());
    std::vector<std::pair<int, int>> outlines;  // (depth, block)
    bool changed = false;
    for (const int block : reshape) outlines.push_back({depth(block), block});
    for (const int block : blocks) {
        Node& node = *r.nodes[size_t(block)];
        if (r.textless && block == 0) {
            // Its blocks come and go without a text of its own to announce it.
            const auto count = at::childCount(node.ref);
            if (!count) return false;
            if (*count == int(node.children.size())) continue;
            node.text = QString(std::min(*count, kMaxBlocks), kEmbeddedObject);
            outlines.push_back({0, 0});
            continue;
        }
        if (!node.ref) continue;
        auto text = at::text(node.ref);
        // An element without text (an image, say) reads as empty, as in a whole read; one whose
        // text is gone has left, and what took its place is not known here.
        if (!text && (block == 0 || !node.text.isEmpty())) return false;
        if (!text || *text == node.text) continue;
        const bool nests = text->contains(kEmbeddedObject) || node.text.contains(kEmbeddedObject);
        node.text = std::move(*text);
        changed = true;
        if (nests) outlines.push_back({depth(block), block});
    }
    std::sort(outlines.begin(), outlines.end(), std::greater<>());
    outlines.erase(std::unique(outlines.begin(), outlines.end()), outlines.end());
    visited_ = 0;
    for (const auto& [d, block] : outlines) {
        Node& node = *r.nodes[size_t(block)];
        std::vector<Node> old = std::move(node.children);
        readChildren(node, d, &old);
    }
    // Joining the blocks again costs as much as a few calls: only when something changed.
    if (changed || !outlines.empty()) index(r);
    r.age.restart();
    return true;
}

bool EditableDocument::announced(Read& r, std::vector<int>& blocks, std::vector<int>& reshape) {
    const TextEvents* events = cache_.events();
    const auto changed =
        events ? events->changedSince(at::busName(r.root.ref), r.latest) : std::nullopt;
    if (!changed) return false;
    QHash<QString, int> blockOf;
    for (size_t i = 0; i < r.nodes.size(); ++i) blockOf.insert(r.nodes[i]->key, int(i));
    for (const QString& key : *changed) {
        if (const auto it = blockOf.constFind(key); it != blockOf.constEnd()) {
            blocks.push_back(*it);
            continue;
        }
        if (r.outside.contains(key)) continue;
        // An element not read: new in the document (the nearest block read holds it, and its
        // children are looked at again) or outside it (nothing to do, and remembered).
        AtRef e = events->element(key);
        bool inside = false;
        for (int up = 0; e && up < kMaxDepth && !inside; ++up) {
            e = at::parent(e);
            const auto it = e ? blockOf.constFind(at::key(e)) : blockOf.constEnd();
            if ((inside = it != blockOf.constEnd())) reshape.push_back(*it);
        }
        if (!inside) r.outside.insert(key);
    }
    return true;
}

bool EditableDocument::update(Read& r, quint64 latest) {
    // The document's own text (its outline, and whether it is still there at all: an editor
    // may replace its editable element) and the blocks down to the caret, where the user
    // writes; then a few more blocks in turn, since applications do not announce every change
    // (Gecko says nothing of text a page puts into a paragraph it has just made).
    std::vector<int> blocks, reshape;
    for (int block = caretBlock_ < r.flat.blocks() ? caretBlock_ : 0; block >= 0;
         block = r.flat.parent(block))
        blocks.push_back(block);
    const int count = r.flat.blocks();
    for (int i = 0; i < std::min(kSweepBlocks, count); ++i) {
        r.sweep = (r.sweep + 1) % count;
        blocks.push_back(r.sweep);
    }
    if (latest != r.latest && !announced(r, blocks, reshape)) return false;
    if (!reread(r, std::move(blocks), std::move(reshape))) return false;
    r.latest = latest;
    return true;
}

const EditableDocument::Read* EditableDocument::read(const AtRef& document) {
    const QString key = at::key(document);
    const TextEvents* events = cache_.events();
    const quint64 latest = events ? events->latestIn(at::busName(document)) : 0;
    if (read_ && read_->key == key && (read_->age.elapsed() < kKeepMs || update(*read_, latest)))
        return &*read_;
    read_ = readWhole(document, key, latest);
    caretBlock_ = 0;
    if (read_) index(*read_);  // in its place: the numbering points into it
    return read_ ? &*read_ : nullptr;
}

std::optional<QString> EditableDocument::text(const AtRef& document) {
    const Read* r = read(document);
    return r ? std::optional<QString>(r->flat.text()) : std::nullopt;
}

std::optional<FlatText::Place> EditableDocument::caret(const Read& r, OffsetUnit unit) {
    int block = 0;
    auto offset = r.textless ? caretBlock(r) : at::caret(r.ref(0));
    if (!offset || *offset < 0) return std::nullopt;
    for (;;) {
        const qint64 local = toUtf16(r.text(block), *offset, unit);
        // A caret inside a child shows in its parent as the child's placeholder (or just
        // after it, at the child's end); the child itself then has the caret.
        std::optional<int> inner;
        for (const qint64 spot : {local, local - 1}) {
            const auto child = r.flat.childAt(block, spot);
            const auto c = child && r.ref(*child) ? at::caret(r.ref(*child)) : std::nullopt;
            if (c && *c >= 0) {
                inner = child;
                offset = c;
                break;
            }
        }
        if (!inner) {
            caretBlock_ = block;
            return FlatText::Place{block, local};
        }
        block = *inner;
    }
}

FlatText::Place EditableDocument::selectionEnd(const Read& r, std::pair<int, int> sel,
                                               OffsetUnit unit, bool end) {
    int block = 0;
    for (;;) {
        const qint64 local = toUtf16(r.text(block), end ? sel.second : sel.first, unit);
        // Each block answers the part of the selection within it.
        const auto child = r.flat.childAt(block, end ? local - 1 : local);
        const auto inner = child && r.ref(*child) ? at::selection(r.ref(*child)) : std::nullopt;
        if (!inner) return {block, local};
        block = *child;
        sel = *inner;
    }
}

std::optional<int> EditableDocument::caretBlock(const Read& r) {
    for (int i = 0; i < r.text(0).size(); ++i) {
        const auto child = r.flat.childAt(0, i);
        if (child && r.ref(*child) && at::caret(r.ref(*child))) return i;
    }
    return std::nullopt;
}

std::optional<std::pair<int, int>> EditableDocument::rootSelection(const Read& r) {
    if (!r.textless) return at::selection(r.ref(0));
    // The document answers none: the block holding the caret, where a paragraph is one block,
    // answers for it.
    const auto i = caretBlock(r);
    const auto child = i ? r.flat.childAt(0, *i) : std::nullopt;
    if (!child || !at::selection(r.ref(*child))) return std::nullopt;
    return std::pair{*i, *i + 1};
}

std::optional<platform::Range> EditableDocument::selectedRange(const AtRef& document,
                                                               OffsetUnit unit) {
    const Read* r = read(document);
    if (!r) return std::nullopt;
    if (const auto sel = rootSelection(*r)) {
        const qint64 start = r->flat.toFlat(selectionEnd(*r, *sel, unit, false));
        const qint64 end = r->flat.toFlat(selectionEnd(*r, *sel, unit, true));
        return platform::Range{std::min(start, end), std::abs(end - start)};
    }
    const auto place = caret(*r, unit);
    if (!place) return std::nullopt;
    return platform::Range{r->flat.toFlat(*place), 0};
}

int EditableDocument::toolkitOffset(const Read& r, const FlatText::Place& place,
                                    OffsetUnit unit) const {
    return int(fromUtf16(r.text(place.block), place.offset, unit));
}

bool EditableDocument::setSelectedRange(const AtRef& document, const platform::Range& range,
                                        OffsetUnit unit) {
    const Read* r = read(document);
    if (!r || range.location < 0 || range.length < 0 || range.end() > r->flat.text().size())
        return false;
    const FlatText::Place start = r->flat.fromFlat(range.location);
    const AtRef& ref = r->ref(start.block);
    if (range.length == 0) {
        const int offset = toolkitOffset(*r, start, unit);
        return ref && at::setCaret(ref, offset);
    }
    const FlatText::Place end = r->flat.fromFlat(range.end(), true);
    const int holder = r->flat.common(start.block, end.block);
    const AtRef& holderRef = r->ref(holder);
    const int from = toolkitOffset(*r, r->flat.lift(start, holder, false), unit);
    const int to = toolkitOffset(*r, r->flat.lift(end, holder, true), unit);
    return holderRef && at::setSelection(holderRef, from, to);
}

std::optional<platform::Rect> EditableDocument::boundsForRange(const AtRef& document,
                                                               const platform::Range& range,
                                                               OffsetUnit unit, at::Coords coords) {
    const Read* r = read(document);
    if (!r) return std::nullopt;
    platform::Range wanted = range;
    // A line break has no place of its own worth showing: the line it starts has.
    const QString& text = r->flat.text();
    if (wanted.length == 1 && wanted.location >= 0 && wanted.location < text.size() &&
        isLineBreak(text[wanted.location]))
        wanted = {wanted.end(), 0};
    const FlatText::Place start = r->flat.fromFlat(wanted.location);
    qint64 length = 0;
    if (wanted.length > 0) {
        const FlatText::Place end = r->flat.fromFlat(wanted.end(), true);
        if (end.block == start.block) length = end.offset - start.offset;
    }
    const AtRef& ref = r->ref(start.block);
    if (!ref) return std::nullopt;
    const QString& own = r->text(start.block);
    if (length == 0 && own.size() == 1 && isLineBreak(own[0])) {
        // An empty line holds only its break, which WebKit reports as tall as two lines: the
        // line's own frame places the caret.
        if (auto frame = at::extents(ref, coords); frame && frame->height > 0) {
            frame->width = 0;
            return frame;
        }
    }
    return axtext::boundsForRange(ref, own, {start.offset, length}, unit, coords);
}

bool EditableDocument::replace(const AtRef& document, const platform::Range& range,
                               const QString& text, OffsetUnit unit) {
    const Read* r = read(document);
    if (!r || range.location < 0 || range.length < 0 || range.end() > r->flat.text().size())
        return false;
    const FlatText::Place start = r->flat.fromFlat(range.location);
    const FlatText::Place end = range.length > 0 ? r->flat.fromFlat(range.end(), true) : start;
    if (end.block != start.block) return false;
    const AtRef ref = r->ref(start.block);
    const QString own = r->text(start.block);
    forget();
    return ref && axtext::replace(ref, own, {start.offset, end.offset - start.offset}, text, unit);
}

}  // namespace linuxdesk
