#pragma once
// The text of a rich-text editor read as one plain text. Gecko shows an editable document
// (Thunderbird's message body, a page in design mode) as nested blocks: the document holds one
// object replacement character (U+FFFC) for each paragraph, quote or section, and each of those
// holds its own text, with placeholders again for what it nests. Here the placeholders are
// replaced by what they stand for, with a line break around each block, and every offset of the
// joined text maps back to a place in one block's own text, and the other way round.

#include <QString>
#include <optional>
#include <vector>

namespace linuxdesk {

// What a block's text holds in the place of each block it nests.
inline constexpr QChar kEmbeddedObject(0xFFFC);

// One element of the editor as read from it.
struct Block {
    QString text;          // its own text, a placeholder where each child sits
    bool inlined = false;  // runs on in its parent's line (a link), not a block of its own
    std::vector<Block> children;  // in the order of their placeholders
};

class FlatText {
public:
    // Blocks are numbered in document order, the root 0.
    explicit FlatText(const Block& root);

    const QString& text() const { return text_; }
    int blocks() const { return int(parents_.size()); }
    // The parent of a block (-1 for the root), and its placeholder's offset in the parent.
    int parent(int block) const { return parents_[size_t(block)]; }
    qint64 slot(int block) const { return slots_[size_t(block)]; }
    // The child whose placeholder sits at offset in a block's own text.
    std::optional<int> childAt(int block, qint64 offset) const;

    struct Place {
        int block = 0;
        qint64 offset = 0;  // in the block's own text, UTF-16 units
        bool operator==(const Place&) const = default;
    };
    // A place in a block's own text as an offset of the joined text.
    qint64 toFlat(const Place& place) const;
    // An offset of the joined text as the place that holds it. Where two blocks meet without a
    // break, an end (of a range) keeps to the block before, a start goes to the one after.
    Place fromFlat(qint64 offset, bool end = false) const;
    // A place seen from an ancestor block: the placeholder of the child it lies in, or the
    // place after it for an end, so that a range lifted this way covers what it covered.
    Place lift(Place place, int ancestor, bool end) const;
    // The nearest block that holds both.
    int common(int a, int b) const;

private:
    // A stretch of one block's own text between placeholders, and where it went.
    struct Run {
        int block;
        qint64 from, length;  // in the block's text
        qint64 at;            // in the joined text
    };
    void join(const Block& block, int parent, qint64 slot);
    void lineBreak();

    QString text_;
    std::vector<Run> runs_;  // in joined order
    std::vector<int> parents_;
    std::vector<qint64> slots_;
    std::vector<std::vector<std::pair<qint64, int>>> children_;  // (placeholder offset, child)
};

}  // namespace linuxdesk
