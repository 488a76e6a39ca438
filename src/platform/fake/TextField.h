#pragma once
// A text box of the scripted desktop. Its live attributes behave like a real one:
//   "AXValue" (settable), "AXSelectedTextRange" (settable, clamped to the text),
//   "AXSelectedText" (derived), "AXNumberOfCharacters", "AXTextInputMarkedRange" (while
//   composing only), "AXPosition"/"AXSize" (the frame) and the parameterised
//   "AXBoundsForRange": a monospace layout of glyphWidth x lineHeight cells from the frame's
//   top left plus a 4-point inset; lines break at LF, CR, CRLF, U+2028 and U+2029.
// The role is "AXTextArea" unless given. Quirks make it misbehave the way some applications do.
//
// The editing operations are the ones the fake keyboard applies; tests may call them directly.
// Paragraph moves follow the common editors: to the start of the paragraph (or of the previous
// one when already there), to the end of the paragraph before its line break (or to the end of
// the next one when already there).

#include <QString>
#include <memory>
#include <optional>

#include "platform/Geometry.h"
#include "platform/fake/Node.h"

namespace fake {

struct FieldQuirks {
    bool refuseSelection = false;  // "AXSelectedTextRange" writes fail
    bool ignoreSelection = false;  // such writes succeed but the selection stays as it was
    bool zeroBounds = false;       // every text rectangle reads (0, 0, 0, 0)
    bool noBounds = false;         // "AXBoundsForRange" is not supported
    bool ignoreKeys = false;       // synthetic and typed keys do not change the text
};

class TextField : public Node {
public:
    explicit TextField(const QString& text = {},
                       const QString& role = QStringLiteral("AXTextArea"));
    static std::shared_ptr<TextField> create(const QString& text = {},
                                             const QString& role = QStringLiteral("AXTextArea"));

    QString text() const { return text_; }
    // Replaces the text; the caret goes to its end and any composition ends.
    void setText(const QString& text);
    platform::Range selection() const { return selection_; }
    QString selectedText() const { return text_.mid(selection_.location, selection_.length); }
    // Clamped to the text.
    void select(qint64 location, qint64 length = 0);
    void setCaret(qint64 position) { select(position, 0); }

    // Input-method composition: "AXTextInputMarkedRange" reads this range while set.
    void setMarked(std::optional<platform::Range> range) { marked_ = range; }
    std::optional<platform::Range> marked() const { return marked_; }

    void setFrame(const platform::Rect& frame) { frame_ = frame; }
    platform::Rect frame() const { return frame_; }
    void setGlyph(double width, double lineHeight);
    // The rectangle of range in the monospace layout (quirks not applied).
    platform::Rect rectFor(const platform::Range& range) const;

    FieldQuirks& quirks() { return quirks_; }

    // Editing, as keys do it.
    void insert(const QString& text);  // replaces the selection, caret after the insertion
    void selectAll();
    void paragraphUp();               // Option-Up
    void paragraphDown(bool extend);  // Option-Down; extend keeps the selection's start
    void right();                     // collapses a selection to its end, else one code point
    void deleteForward();             // the selection, else one code point after the caret

    std::optional<platform::Value> read(const QString& name) override;
    std::optional<platform::Value> readParameterized(const QString& name,
                                                     const platform::Value& parameter) override;
    bool write(const QString& name, const platform::Value& value) override;

private:
    qint64 paragraphStart(qint64 position) const;
    qint64 paragraphEnd(qint64 position) const;
    qint64 nextCodePoint(qint64 position) const;

    QString text_;
    platform::Range selection_;
    std::optional<platform::Range> marked_;
    platform::Rect frame_{100, 200, 400, 300};
    double glyphWidth_ = 8;
    double lineHeight_ = 16;
    FieldQuirks quirks_;
};

}  // namespace fake
