#include "overlay/TextBlock.h"

#include <QPainter>
#include <QTextLayout>
#include <QTextOption>
#include <cmath>

namespace overlay {

TextBlock::TextBlock(const StyledText& text, const QFont& font, double width) {
    if (text.text.isEmpty()) return;
    layout_ = std::make_unique<QTextLayout>(text.text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout_->setTextOption(option);
    layout_->setFormats(text.formats);
    layout_->setCacheEnabled(true);
    double y = 0;
    layout_->beginLayout();
    for (QTextLine line = layout_->createLine(); line.isValid(); line = layout_->createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, y));
        y += line.height();
    }
    layout_->endLayout();
    height_ = std::ceil(y);
}

TextBlock::TextBlock(TextBlock&&) noexcept = default;
TextBlock& TextBlock::operator=(TextBlock&&) noexcept = default;
TextBlock::~TextBlock() = default;

void TextBlock::draw(QPainter& painter, const QPointF& topLeft, const QColor& color) const {
    if (!layout_) return;
    painter.setPen(color);
    layout_->draw(&painter, topLeft);
}

}  // namespace overlay
