#include "platform/linux/atspi/EditableDocument.h"

#include "platform/linux/atspi/AxText.h"

#include "main/Log.h"

namespace linuxdesk {

namespace {

// Read again at every change: enough for the quoted text of a long message, which is cut far
// shorter anyway; a larger body is read only that far, which the log says once.
constexpr int kMaxBlocks = 1000;
constexpr int kMaxDepth = 40;
// Long enough for the reads of one engine tick, short enough to see the next keystroke. An
// application that announces its text changes and has announced none since the read keeps it
// longer: a long body is then not read block by block on every tick while the user sits still
// (read again after a while all the same, in case an announcement went missing).
constexpr int kKeepMs = 50;
constexpr int kQuietKeepMs = 30000;
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

Block EditableDocument::blockOf(const AtRef& element, QString text, int depth,
                                std::vector<AtRef>& refs, std::vector<QString>& texts) {
    Block block;
    block.text = std::move(text);
    refs.push_back(element);
    texts.push_back(block.text);
    if (!element || depth >= kMaxDepth) return block;
    // Only the children that have a placeholder in the text take part (see FlatText).
    const int count =
        std::min<int>(at::childCount(element).value_or(0), int(block.text.count(kEmbeddedObject)));
    for (int i = 0; i < count && ++visited_ <= kMaxBlocks; ++i) {
        const AtRef child = at::child(element, i);
        Block b = blockOf(child, child ? at::text(child).value_or(QString()) : QString(), depth + 1,
                          refs, texts);
        if (child) {
            // Gecko names the CSS display of each element; other toolkits only the role.
            const auto display = displayOf(cache_.attributes(child));
            b.inlined = display ? display->startsWith(QLatin1String("inline"))
                                : !blockRole(cache_.role(child).value_or(ATSPI_ROLE_INVALID));
        }
        block.children.push_back(std::move(b));
    }
    return block;
}

const EditableDocument::Read* EditableDocument::read(const AtRef& document) {
    const QString key = at::key(document);
    const TextEvents* events = cache_.events();
    const quint64 latest = events ? events->latestIn(at::busName(document)) : 0;
    if (read_ && read_->key == key &&
        (read_->age.elapsed() < kKeepMs ||
         (latest != 0 && latest == read_->latest && read_->age.elapsed() < kQuietKeepMs)))
        return &*read_;
    auto text = at::text(document);
    const bool textless = !text && !cache_.hasText(document);
    if (textless)
        text = QString(std::min(at::childCount(document).value_or(0), kMaxBlocks), kEmbeddedObject);
    if (!text || (textless && text->isEmpty())) {
        read_.reset();
        return nullptr;
    }
    std::vector<AtRef> refs;
    std::vector<QString> texts;
    visited_ = 0;
    const Block root = blockOf(document, std::move(*text), 0, refs, texts);
    if (visited_ > kMaxBlocks && cutSaid_ != key) {
        cutSaid_ = key;
        glimmo::log(QStringLiteral("a document of more than %1 blocks is read only that far")
                        .arg(kMaxBlocks));
    }
    read_.emplace(
        Read{key, latest, {}, std::move(refs), std::move(texts), FlatText(root), textless});
    read_->age.start();
    return &*read_;
}

std::optional<QString> EditableDocument::text(const AtRef& document) {
    const Read* r = read(document);
    return r ? std::optional<QString>(r->flat.text()) : std::nullopt;
}

std::optional<FlatText::Place> EditableDocument::caret(const Read& r, OffsetUnit unit) {
    int block = 0;
    auto offset = r.textless ? caretBlock(r) : at::caret(r.refs[0]);
    if (!offset || *offset < 0) return std::nullopt;
    for (;;) {
        const qint64 local = toUtf16(r.texts[size_t(block)], *offset, unit);
        // A caret inside a child shows in its parent as the child's placeholder (or just
        // after it, at the child's end); the child itself then has the caret.
        std::optional<int> inner;
        for (const qint64 spot : {local, local - 1}) {
            const auto child = r.flat.childAt(block, spot);
            const auto c =
                child && r.refs[size_t(*child)] ? at::caret(r.refs[size_t(*child)]) : std::nullopt;
            if (c && *c >= 0) {
                inner = child;
                offset = c;
                break;
            }
        }
        if (!inner) return FlatText::Place{block, local};
        block = *inner;
    }
}

FlatText::Place EditableDocument::selectionEnd(const Read& r, std::pair<int, int> sel,
                                               OffsetUnit unit, bool end) {
    int block = 0;
    for (;;) {
        const qint64 local = toUtf16(r.texts[size_t(block)], end ? sel.second : sel.first, unit);
        // Each block answers the part of the selection within it.
        const auto child = r.flat.childAt(block, end ? local - 1 : local);
        const auto inner =
            child && r.refs[size_t(*child)] ? at::selection(r.refs[size_t(*child)]) : std::nullopt;
        if (!inner) return {block, local};
        block = *child;
        sel = *inner;
    }
}

std::optional<int> EditableDocument::caretBlock(const Read& r) {
    for (int i = 0; i < r.texts[0].size(); ++i) {
        const auto child = r.flat.childAt(0, i);
        if (child && r.refs[size_t(*child)] && at::caret(r.refs[size_t(*child)])) return i;
    }
    return std::nullopt;
}

std::optional<std::pair<int, int>> EditableDocument::rootSelection(const Read& r) {
    if (!r.textless) return at::selection(r.refs[0]);
    // The document answers none: the block holding the caret, where a paragraph is one block,
    // answers for it.
    const auto i = caretBlock(r);
    const auto child = i ? r.flat.childAt(0, *i) : std::nullopt;
    if (!child || !at::selection(r.refs[size_t(*child)])) return std::nullopt;
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
    return int(fromUtf16(r.texts[size_t(place.block)], place.offset, unit));
}

bool EditableDocument::setSelectedRange(const AtRef& document, const platform::Range& range,
                                        OffsetUnit unit) {
    const Read* r = read(document);
    if (!r || range.location < 0 || range.length < 0 || range.end() > r->flat.text().size())
        return false;
    const FlatText::Place start = r->flat.fromFlat(range.location);
    const AtRef& ref = r->refs[size_t(start.block)];
    if (range.length == 0) {
        const int offset = toolkitOffset(*r, start, unit);
        forget();
        return ref && at::setCaret(ref, offset);
    }
    const FlatText::Place end = r->flat.fromFlat(range.end(), true);
    const int holder = r->flat.common(start.block, end.block);
    const AtRef& holderRef = r->refs[size_t(holder)];
    const int from = toolkitOffset(*r, r->flat.lift(start, holder, false), unit);
    const int to = toolkitOffset(*r, r->flat.lift(end, holder, true), unit);
    forget();
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
    const AtRef& ref = r->refs[size_t(start.block)];
    if (!ref) return std::nullopt;
    const QString& own = r->texts[size_t(start.block)];
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
    const AtRef ref = r->refs[size_t(start.block)];
    const QString own = r->texts[size_t(start.block)];
    forget();
    return ref && axtext::replace(ref, own, {start.offset, end.offset - start.offset}, text, unit);
}

}  // namespace linuxdesk
