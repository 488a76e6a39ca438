#include "setup/KindHeader.h"

#include <QPainter>

#include "overlay/Style.h"
#include "setup/Symbols.h"

namespace setup {

namespace {

constexpr int chevronSide = 11;
constexpr int symbolWidth = 20;
constexpr int titleSize = 14;

QFont titleFont() {
    QFont font = overlay::style::systemFont(titleSize);
    font.setWeight(QFont::Medium);
    return font;
}

}  // namespace

KindHeader::KindHeader(const rules::AppKind& kind, QWidget* parent)
    : QAbstractButton(parent), symbol_(kind.symbol) {
    setText(kind.title);
    setCheckable(true);  // checked while open
    setFont(titleFont());
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &QAbstractButton::toggled, this, qOverload<>(&QWidget::update));
}

QSize KindHeader::sizeHint() const {
    const QFontMetrics metrics(font());
    return {titleIndent + metrics.horizontalAdvance(text()), std::max(22, metrics.height())};
}

void KindHeader::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QColor secondary = overlay::style::secondary(palette());
    const double mid = height() / 2.0;

    // The chevron turns a quarter, clockwise, about its centre while open.
    const QRectF chevron(0, mid - chevronSide / 2.0, chevronSide, chevronSide);
    p.save();
    p.translate(chevron.center());
    if (isChecked()) p.rotate(90);
    p.translate(-chevron.center());
    drawSymbol(p, QStringLiteral("chevron.right"), chevron, secondary, 1.8);
    p.restore();

    drawSymbol(p, symbol_, QRectF(symbolIndent, mid - symbolWidth / 2.0, symbolWidth, symbolWidth),
               secondary);

    p.setPen(overlay::style::primary(palette()));
    p.setFont(font());
    const QRect title(titleIndent, 0, width() - titleIndent, height());
    p.drawText(title, Qt::AlignLeft | Qt::AlignVCenter, text());
    if (hasFocus()) {
        p.setPen(QPen(overlay::style::brand(), 1));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    }
}

}  // namespace setup
