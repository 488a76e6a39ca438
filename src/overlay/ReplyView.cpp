#include "overlay/ReplyView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "overlay/Placement.h"
#include "overlay/Style.h"

namespace overlay {

namespace {
constexpr double pad = 6, spacing = 2;
constexpr double rowPadX = 8, rowPadY = 6, morePadY = 4, hintPadTop = 4;
}  // namespace

ReplyView::ReplyView(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::NoFocus);
}

void ReplyView::set(const QStringList& options, int selected, bool more, const QString& hint,
                    std::function<void(int)> onPick) {
    const QFont textFont = style::systemFont(style::textSize);
    const double listWidth = replyWidth - 2 * pad;
    const double inner = listWidth - 2 * rowPadX;
    double y = pad;
    rows_.clear();
    rows_.reserve(size_t(options.size()));
    for (const QString& option : options) {
        TextBlock text({option, {}}, textFont, inner);
        const double height = rowPadY + text.height() + rowPadY;
        rows_.push_back({QRectF(pad, y, listWidth, height), std::move(text)});
        y += height + spacing;
    }
    if (more) {
        more_ = TextBlock({QStringLiteral("…"), {}}, textFont, inner);
        moreFrame_ = QRectF(pad, y, listWidth, morePadY + more_.height() + morePadY);
        y += moreFrame_.height() + spacing;
    } else {
        more_ = TextBlock();
        moreFrame_ = QRectF();
    }
    hint_ = TextBlock(boldMarkup(hint), style::systemFont(style::hintSize), inner);
    hintAt_ = QPointF(pad + rowPadX, y + hintPadTop);
    y += hintPadTop + hint_.height() + pad;

    selected_ = selected;
    onPick_ = std::move(onPick);
    fitting_ = QSize(int(replyWidth), int(std::ceil(y)));
    resize(fitting_);
    update();
}

int ReplyView::rowAt(const QPointF& point) const {
    for (size_t i = 0; i < rows_.size(); ++i)
        if (rows_[i].frame.contains(point)) return int(i);
    return -1;
}

void ReplyView::click(int row) {
    if (row < 0 || size_t(row) >= rows_.size()) return;
    // The callback usually shows a new list in this very view; call a copy.
    const auto onPick = onPick_;
    if (onPick) onPick(row);
}

void ReplyView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    style::paintCard(painter, QRectF(rect()), palette());
    const QColor primary = style::primary(palette());
    for (size_t i = 0; i < rows_.size(); ++i) {
        const Row& row = rows_[i];
        if (int(i) == selected_) {
            QPainterPath path;
            path.addRoundedRect(row.frame, style::rowRadius, style::rowRadius);
            painter.fillPath(path, style::selectedRow(palette()));
        }
        row.text.draw(painter, row.frame.topLeft() + QPointF(rowPadX, rowPadY), primary);
    }
    const QColor secondary = style::secondary(palette());
    more_.draw(painter, moreFrame_.topLeft() + QPointF(rowPadX, morePadY), secondary);
    hint_.draw(painter, hintAt_, secondary);
}

void ReplyView::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton ? rowAt(event->position()) : -1;
}

void ReplyView::mouseReleaseEvent(QMouseEvent* event) {
    const int row = event->button() == Qt::LeftButton ? rowAt(event->position()) : -1;
    const bool clicked = row >= 0 && row == pressed_;
    pressed_ = -1;
    if (clicked) click(row);
}

}  // namespace overlay
