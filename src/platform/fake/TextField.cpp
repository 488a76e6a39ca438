#include "platform/fake/TextField.h"

#include <algorithm>

namespace fake {

namespace {

constexpr double inset = 4;

bool isBreak(QChar c) {
    return c == u'\n' || c == u'\r' || c == QChar(0x2028) || c == QChar(0x2029);
}

// A paragraph separator ends at i: LF, CR not followed by LF, U+2029.
bool isParagraphBreak(QChar c) {
    return c == u'\n' || c == u'\r' || c == QChar(0x2029);
}

}  // namespace

TextField::TextField(const QString& text, const QString& role) : Node(role) {
    setSettable(QStringLiteral("AXValue"));
    setSettable(QStringLiteral("AXSelectedTextRange"));
    setText(text);
}

std::shared_ptr<TextField> TextField::create(const QString& text, const QString& role) {
    return std::make_shared<TextField>(text, role);
}

void TextField::setText(const QString& text) {
    text_ = text;
    selection_ = {text_.size(), 0};
    marked_.reset();
}

void TextField::select(qint64 location, qint64 length) {
    const qint64 size = text_.size();
    location = std::clamp<qint64>(location, 0, size);
    length = std::clamp<qint64>(length, 0, size - location);
    selection_ = {location, length};
}

void TextField::setGlyph(double width, double lineHeight) {
    glyphWidth_ = width;
    lineHeight_ = lineHeight;
}

platform::Rect TextField::rectFor(const platform::Range& range) const {
    const qint64 at = std::clamp<qint64>(range.location, 0, text_.size());
    int line = 0;
    qint64 lineStart = 0;
    for (qint64 i = 0; i < at; ++i) {
        const QChar c = text_[i];
        if (!isBreak(c)) continue;
        if (c == u'\r' && i + 1 < text_.size() && text_[i + 1] == u'\n') ++i;
        ++line;
        lineStart = i + 1;
    }
    qint64 width = 0;
    for (qint64 i = at; i < std::min<qint64>(range.end(), text_.size()) && !isBreak(text_[i]); ++i)
        ++width;
    return {frame_.x + inset + double(at - lineStart) * glyphWidth_,
            frame_.y + inset + line * lineHeight_, double(width) * glyphWidth_, lineHeight_};
}

void TextField::insert(const QString& text) {
    if (quirks_.ignoreKeys) return;
    text_.replace(selection_.location, selection_.length, text);
    selection_ = {selection_.location + text.size(), 0};
    marked_.reset();
}

void TextField::selectAll() {
    if (!quirks_.ignoreKeys) selection_ = {0, text_.size()};
}

qint64 TextField::paragraphStart(qint64 position) const {
    while (position > 0 && !isParagraphBreak(text_[position - 1])) --position;
    return position;
}

qint64 TextField::paragraphEnd(qint64 position) const {
    while (position < text_.size() && !isParagraphBreak(text_[position])) ++position;
    return position;
}

void TextField::paragraphUp() {
    if (quirks_.ignoreKeys) return;
    qint64 at = selection_.location;
    qint64 start = paragraphStart(at);
    if (start == at && at > 0) {
        // Already at a paragraph start: step over the break (CRLF as one) to the previous one.
        qint64 before = at - 1;
        if (before > 0 && text_[before] == u'\n' && text_[before - 1] == u'\r') --before;
        start = paragraphStart(before);
    }
    selection_ = {start, 0};
}

void TextField::paragraphDown(bool extend) {
    if (quirks_.ignoreKeys) return;
    const qint64 from = selection_.end();
    qint64 end = paragraphEnd(from);
    if (end == from && end < text_.size()) {
        qint64 next = end + 1;
        if (text_[end] == u'\r' && next < text_.size() && text_[next] == u'\n') ++next;
        end = paragraphEnd(next);
    }
    if (extend) {
        selection_ = {selection_.location, end - selection_.location};
    } else {
        selection_ = {end, 0};
    }
}

qint64 TextField::nextCodePoint(qint64 position) const {
    if (position >= text_.size()) return text_.size();
    if (text_[position].isHighSurrogate() && position + 1 < text_.size() &&
        text_[position + 1].isLowSurrogate())
        return position + 2;
    return position + 1;
}

void TextField::right() {
    if (quirks_.ignoreKeys) return;
    if (selection_.length > 0) {
        selection_ = {selection_.end(), 0};
    } else {
        selection_ = {nextCodePoint(selection_.location), 0};
    }
}

void TextField::deleteForward() {
    if (quirks_.ignoreKeys) return;
    if (selection_.length == 0) {
        selection_.length = nextCodePoint(selection_.location) - selection_.location;
    }
    text_.remove(selection_.location, selection_.length);
    selection_.length = 0;
}

std::optional<platform::Value> TextField::read(const QString& name) {
    if (failing(name)) return std::nullopt;
    if (name == QLatin1String("AXValue")) return text_;
    if (name == QLatin1String("AXSelectedTextRange")) return selection_;
    if (name == QLatin1String("AXSelectedText")) return selectedText();
    if (name == QLatin1String("AXNumberOfCharacters")) return platform::Range{0, text_.size()};
    if (name == QLatin1String("AXTextInputMarkedRange")) {
        if (marked_) return *marked_;
        return std::nullopt;
    }
    if (name == QLatin1String("AXPosition")) return platform::Point{frame_.x, frame_.y};
    if (name == QLatin1String("AXSize")) return platform::Size{frame_.width, frame_.height};
    return Node::read(name);
}

std::optional<platform::Value> TextField::readParameterized(const QString& name,
                                                            const platform::Value& parameter) {
    if (name != QLatin1String("AXBoundsForRange") || failing(name) || quirks_.noBounds)
        return Node::readParameterized(name, parameter);
    if (!std::holds_alternative<platform::Range>(parameter)) return std::nullopt;
    if (quirks_.zeroBounds) return platform::Rect{};
    return rectFor(std::get<platform::Range>(parameter));
}

bool TextField::write(const QString& name, const platform::Value& value) {
    if (name == QLatin1String("AXValue")) {
        if (!settable(name) || !std::holds_alternative<QString>(value)) return false;
        setText(std::get<QString>(value));
        return true;
    }
    if (name == QLatin1String("AXSelectedTextRange")) {
        if (!settable(name) || quirks_.refuseSelection) return false;
        if (!std::holds_alternative<platform::Range>(value)) return false;
        if (quirks_.ignoreSelection) return true;
        const auto& range = std::get<platform::Range>(value);
        select(range.location, range.length);
        return true;
    }
    return Node::write(name, value);
}

}  // namespace fake
