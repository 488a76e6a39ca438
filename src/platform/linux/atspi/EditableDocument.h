#pragma once
// An editable document read as a text box: Thunderbird's message body and the rich-text editors
// of web pages (in Chromium and Gecko), which show as an editable box of nested blocks rather
// than as one text (see FlatText), and Evolution's message body, a WebKit page made editable as
// a whole, whose document has no text of its own: its blocks simply follow one another. The
// text is the blocks' texts joined; the caret, the selection and screen positions are read from
// and written to the block that holds them. A document is read whole once; after that only the
// blocks that may have changed are read again, so a long quoted thread costs little per poll.

#include <QElapsedTimer>
#include <QSet>
#include <QString>
#include <optional>
#include <vector>

#include "platform/Geometry.h"
#include "platform/linux/atspi/AtRef.h"
#include "platform/linux/atspi/Atspi.h"
#include "platform/linux/atspi/ElementCache.h"
#include "platform/linux/atspi/FlatText.h"
#include "platform/linux/atspi/TextOffsets.h"

namespace linuxdesk {

class EditableDocument {
public:
    explicit EditableDocument(ElementCache& cache) : cache_(cache) {}

    // Whether the element is such a document (the user types into it, and it is not a web
    // page holding text boxes of its own).
    bool holds(const AtRef& element);

    // Offsets and ranges in UTF-16 units of the joined text; unit is the toolkit's.
    std::optional<QString> text(const AtRef& document);
    std::optional<platform::Range> selectedRange(const AtRef& document, OffsetUnit unit);
    bool setSelectedRange(const AtRef& document, const platform::Range& range, OffsetUnit unit);
    std::optional<platform::Rect> boundsForRange(const AtRef& document,
                                                 const platform::Range& range, OffsetUnit unit,
                                                 at::Coords coords);
    // Within one block only: a range over several is refused.
    bool replace(const AtRef& document, const platform::Range& range, const QString& text,
                 OffsetUnit unit);

    // After a write of text: read the document anew. (A selection is always read live.)
    void forget() { read_.reset(); }

private:
    // One element as read, with what it nests; kept so that a change is read block by block.
    struct Node {
        AtRef ref;
        QString key;
        QString text;          // its own text, a placeholder where each child sits
        bool inlined = false;  // see Block
        std::vector<Node> children;
    };
    struct Read {
        QString key;
        quint64 latest = 0;  // the application's latest announced text change when read
        QElapsedTimer age;   // since the document was last read or brought up to date
        Node root;
        FlatText flat{Block{}};
        std::vector<Node*> nodes;  // by block number
        QSet<QString> outside;     // elements heard from that are not in the document
        int sweep = 0;             // the block last read again in turn
        bool textless = false;     // the document's own text is made up, one placeholder a block

        // A block's element and its own text, by block number.
        const AtRef& ref(int block) const { return nodes[size_t(block)]->ref; }
        const QString& text(int block) const { return nodes[size_t(block)]->text; }
    };
    struct Verdict {
        QString key;
        bool editable = false;
        QElapsedTimer age;
    };
    // WebKit marks a page made editable as a whole only in its text's attributes.
    bool editablePage(const AtRef& document);
    const Read* read(const AtRef& document);
    // The whole document, block by block, not yet indexed.
    std::optional<Read> readWhole(const AtRef& document, const QString& key, quint64 latest);
    // The read brought up to date without reading every block; false when the document must
    // be read whole.
    bool update(Read& r, quint64 latest);
    // The blocks whose application announced a change since the read, and those holding new
    // elements it announced; false when announcements were forgotten.
    bool announced(Read& r, std::vector<int>& blocks, std::vector<int>& reshape);
    // Those blocks' own texts again, and the children of each whose placeholders changed and
    // of those in reshape; false when the document must be read whole.
    bool reread(Read& r, std::vector<int> blocks, std::vector<int> reshape = {});
    // An element and what it nests; children of reuse with an unchanged key are taken over as
    // they are instead of being read again.
    Node nodeOf(const AtRef& element, QString text, int depth, std::vector<Node>* reuse);
    void readChildren(Node& node, int depth, std::vector<Node>* reuse);
    // The numbering and joined text of the nodes read.
    static void index(Read& r);
    // In a document with no text of its own only the block holding the caret answers one:
    // that block's place in the document's row of blocks.
    std::optional<int> caretBlock(const Read& r);
    // The document's own selection, in its text's offsets.
    std::optional<std::pair<int, int>> rootSelection(const Read& r);
    std::optional<FlatText::Place> caret(const Read& r, OffsetUnit unit);
    // Where one end of the selection lies, followed down from the document's selection.
    FlatText::Place selectionEnd(const Read& r, std::pair<int, int> selection, OffsetUnit unit,
                                 bool end);
    int toolkitOffset(const Read& r, const FlatText::Place& place, OffsetUnit unit) const;

    ElementCache& cache_;
    std::optional<Read> read_;
    std::optional<Verdict> verdict_;  // of the last text-less document asked about
    int visited_ = 0;
    int caretBlock_ = 0;  // the block the caret was last found in
    QString cutSaid_;     // the last document the log said was read only in part
};

}  // namespace linuxdesk
