#pragma once
// An editable document read as a text box: Thunderbird's message body and the rich-text editors
// of web pages (in Chromium and Gecko), which show as an editable box of nested blocks rather
// than as one text (see FlatText), and Evolution's message body, a WebKit page made editable as
// a whole, whose document has no text of its own: its blocks simply follow one another. The
// text is the blocks' texts joined; the caret, the selection and screen positions are read from
// and written to the block that holds them.

#include <QElapsedTimer>
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

    // After a write the text or the selection may have changed.
    void forget() { read_.reset(); }

private:
    struct Read {
        QString key;
        quint64 latest = 0;  // the application's latest announced text change when read
        QElapsedTimer age;
        std::vector<AtRef> refs;     // by block number
        std::vector<QString> texts;  // each block's own text
        FlatText flat;
        bool textless = false;  // the document's own text is made up, one placeholder a block
    };
    struct Verdict {
        QString key;
        bool editable = false;
        QElapsedTimer age;
    };
    // WebKit marks a page made editable as a whole only in its text's attributes.
    bool editablePage(const AtRef& document);
    const Read* read(const AtRef& document);
    Block blockOf(const AtRef& element, QString text, int depth, std::vector<AtRef>& refs,
                  std::vector<QString>& texts);
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
    QString cutSaid_;  // the last document the log said was read only in part
};

}  // namespace linuxdesk
