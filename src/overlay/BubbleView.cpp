#include "overlay/BubbleView.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "overlay/Style.h"

namespace overlay {

namespace {
constexpr double padX = 12, padY = 9, gap = 6;
}

BubbleView::BubbleView(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
}

void BubbleView::set(const QString& text, double width, const QString& hint,
                     std::function<void()> onApply) {
    const double inner = width - 2 * padX;
    text_ = TextBlock({text, {}}, style::systemFont(style::textSize), inner);
    hint_ = TextBlock(boldMarkup(hint), style::systemFont(style::hintSize), inner);
    const double height = padY + text_.height() + gap + hint_.height() + padY;
    fitting_ = QSize(int(std::ceil(width)), int(std::ceil(height)));
    onApply_ = std::move(onApply);
    resize(fitting_);
    update();
}

void BubbleView::click() {
    // The callback may replace this view's content (and so its own std::function) while it
    // runs; call a copy.
    const auto onApply = onApply_;
    if (onApply) onApply();
}

void BubbleView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    style::paintCard(painter, QRectF(rect()), palette());
    text_.draw(painter, QPointF(padX, padY), style::primary(palette()));
    hint_.draw(painter, QPointF(padX, padY + text_.height() + gap), style::secondary(palette()));
}

void BubbleView::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton;
}

void BubbleView::mouseReleaseEvent(QMouseEvent* event) {
    const bool clicked = pressed_ && event->button() == Qt::LeftButton &&
                         rect().contains(event->position().toPoint());
    pressed_ = false;
    if (clicked) click();
}

}  // namespace overlay
