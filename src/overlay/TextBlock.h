#pragma once
// A paragraph laid out once at a fixed width (wrapping at words, or anywhere inside a word too
// long for a line) and drawn from that layout, so measuring and painting always agree.

#include <QColor>
#include <QFont>
#include <QPointF>
#include <memory>

#include "overlay/Markup.h"

class QPainter;
class QTextLayout;

namespace overlay {

class TextBlock {
public:
    TextBlock() = default;
    TextBlock(const StyledText& text, const QFont& font, double width);
    TextBlock(TextBlock&&) noexcept;
    TextBlock& operator=(TextBlock&&) noexcept;
    ~TextBlock();

    // Whole points, rounded up; 0 for an empty text.
    double height() const { return height_; }
    void draw(QPainter& painter, const QPointF& topLeft, const QColor& color) const;

private:
    std::unique_ptr<QTextLayout> layout_;
    double height_ = 0;
};

}  // namespace overlay
