#include "setup/AppRow.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include "overlay/Style.h"
#include "setup/Symbols.h"

namespace setup {

namespace {

constexpr int rowSpacing = 10;

}  // namespace

SymbolView::SymbolView(const QString& symbol, QSize size, QWidget* parent)
    : QWidget(parent), symbol_(symbol), size_(size) {
    setFixedSize(size);
}

void SymbolView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    // The symbol sits in a square as high as the row's picture, centred in the width given.
    const double side = std::min(size_.width(), size_.height()) * 0.85;
    const QRectF box(QPointF(0, 0), QSizeF(size_));
    drawSymbol(p, symbol_, QRectF(box.center() - QPointF(side / 2, side / 2), QSizeF(side, side)),
               overlay::style::secondary(palette()));
}

AppRow::AppRow(const QPixmap& icon, const QString& text, QWidget* parent) : QWidget(parent) {
    auto* picture = new QLabel(this);
    picture->setPixmap(icon);
    picture->setFixedSize(iconSide, iconSide);
    picture->setScaledContents(true);
    build(picture, text);
}

AppRow::AppRow(const QString& symbol, const QString& text, QWidget* parent) : QWidget(parent) {
    build(new SymbolView(symbol, QSize(iconSide, iconSide), this), text);
}

void AppRow::build(QWidget* leading, const QString& text) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(rowSpacing);
    row->addWidget(leading, 0, Qt::AlignVCenter);
    label_ = new QLabel(text, this);
    label_->setFont(overlay::style::systemFont(overlay::style::textSize));
    label_->setTextFormat(Qt::PlainText);
    row->addWidget(label_, 1, Qt::AlignVCenter);
    setMinimumHeight(iconSide);
}

GlimmoSwitch* AppRow::addSwitch(bool small, GlimmoSwitch::Read read, GlimmoSwitch::Write write) {
    switch_ = new GlimmoSwitch(small, std::move(read), std::move(write), this);
    switch_->setAccessibleName(label_->text());
    static_cast<QHBoxLayout*>(layout())->addWidget(switch_, 0, Qt::AlignVCenter);
    return switch_;
}

}  // namespace setup
