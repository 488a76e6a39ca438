#include "setup/Symbols.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace setup {

namespace {

// Every symbol is drawn on a 16 × 16 grid, scaled to the box's shorter side.
constexpr double grid = 16;

QPainterPath chevronRight() {
    QPainterPath p;
    p.moveTo(6, 3);
    p.lineTo(11, 8);
    p.lineTo(6, 13);
    return p;
}

QPainterPath globe() {
    QPainterPath p;
    p.addEllipse(QPointF(8, 8), 6.5, 6.5);
    p.addEllipse(QPointF(8, 8), 3, 6.5);
    p.moveTo(1.5, 8);
    p.lineTo(14.5, 8);
    p.moveTo(2.6, 4.5);
    p.lineTo(13.4, 4.5);
    p.moveTo(2.6, 11.5);
    p.lineTo(13.4, 11.5);
    return p;
}

QPainterPath grid2x2() {
    QPainterPath p;
    for (double x : {2.0, 9.0})
        for (double y : {2.0, 9.0}) p.addRoundedRect(QRectF(x, y, 5, 5), 1.2, 1.2);
    return p;
}

// The front bubble, left and lower, with its tail at the bottom left.
QPainterPath frontBubble() {
    QPainterPath p;
    p.addRoundedRect(QRectF(1, 5.5, 10, 7), 3, 3);
    p.moveTo(3, 12.3);
    p.lineTo(2, 14.8);
    p.lineTo(5.5, 12.5);
    return p;
}

// The back bubble, right and higher; drawn clipped to backClip() so that it passes behind the
// front one.
QPainterPath backBubble() {
    QPainterPath p;
    p.addRoundedRect(QRectF(5, 1.5, 10, 7), 3, 3);
    p.moveTo(13, 8.3);
    p.lineTo(14, 10.8);
    p.lineTo(10.5, 8.5);
    return p;
}

QPainterPath backClip() {
    QPainterPath all;
    all.addRect(QRectF(-2, -2, 20, 20));
    QPainterPath front;
    front.addRoundedRect(QRectF(-0.5, 4, 13, 10), 4, 4);
    return all.subtracted(front);
}

QPainterPath envelope() {
    QPainterPath p;
    p.addRoundedRect(QRectF(1.5, 3.5, 13, 9), 1.5, 1.5);
    p.moveTo(2, 4.5);
    p.lineTo(8, 9);
    p.lineTo(14, 4.5);
    return p;
}

QPainterPath docText() {
    QPainterPath p;
    p.moveTo(9.5, 1.5);
    p.lineTo(3.5, 1.5);
    p.lineTo(3.5, 14.5);
    p.lineTo(12.5, 14.5);
    p.lineTo(12.5, 4.5);
    p.closeSubpath();
    p.moveTo(9.5, 1.5);
    p.lineTo(9.5, 4.5);
    p.lineTo(12.5, 4.5);
    for (double y : {7.5, 10.0, 12.5}) {
        p.moveTo(5.5, y);
        p.lineTo(y > 12 ? 8.5 : 10.5, y);
    }
    return p;
}

// A four-pointed star centred at c with the given arm length.
void star(QPainterPath& p, QPointF c, double r) {
    const double w = r * 0.28;
    p.moveTo(c.x(), c.y() - r);
    p.quadTo(c.x() + w, c.y() - w, c.x() + r, c.y());
    p.quadTo(c.x() + w, c.y() + w, c.x(), c.y() + r);
    p.quadTo(c.x() - w, c.y() + w, c.x() - r, c.y());
    p.quadTo(c.x() - w, c.y() - w, c.x(), c.y() - r);
    p.closeSubpath();
}

QPainterPath sparkles() {
    QPainterPath p;
    star(p, QPointF(6.5, 9), 5.5);
    star(p, QPointF(12.5, 3.8), 2.6);
    star(p, QPointF(13, 12.2), 1.8);
    return p;
}

QPainterPath codeBrackets() {
    QPainterPath p;
    p.moveTo(5, 4);
    p.lineTo(1.5, 8);
    p.lineTo(5, 12);
    p.moveTo(11, 4);
    p.lineTo(14.5, 8);
    p.lineTo(11, 12);
    p.moveTo(9.5, 2.5);
    p.lineTo(6.5, 13.5);
    return p;
}

QPainterPath lock() {
    QPainterPath p;
    p.addRoundedRect(QRectF(3, 7, 10, 7.5), 1.5, 1.5);
    p.moveTo(5.2, 7);
    p.lineTo(5.2, 5);
    p.arcTo(QRectF(5.2, 2, 5.6, 6), 180, -180);
    p.lineTo(10.8, 7);
    return p;
}

}  // namespace

void drawSymbol(QPainter& painter, const QString& name, const QRectF& box, const QColor& color,
                double lineWidth) {
    QPainterPath path;
    bool filled = false;
    if (name == QLatin1String("chevron.right"))
        path = chevronRight();
    else if (name == QLatin1String("globe"))
        path = globe();
    else if (name == QLatin1String("square.grid.2x2"))
        path = grid2x2();
    else if (name == QLatin1String("bubble.left.and.bubble.right"))
        path = frontBubble();
    else if (name == QLatin1String("envelope"))
        path = envelope();
    else if (name == QLatin1String("doc.text"))
        path = docText();
    else if (name == QLatin1String("sparkles"))
        path = sparkles(), filled = true;
    else if (name == QLatin1String("chevron.left.forwardslash.chevron.right"))
        path = codeBrackets();
    else if (name == QLatin1String("lock"))
        path = lock();
    else
        return;

    const double side = std::min(box.width(), box.height());
    const double scale = side / grid;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(box.center().x() - side / 2, box.center().y() - side / 2);
    painter.scale(scale, scale);
    if (filled) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
    } else {
        // The same line width at any size.
        painter.setPen(QPen(color, lineWidth / scale, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
    }
    if (name == QLatin1String("bubble.left.and.bubble.right")) {
        painter.save();
        painter.setClipPath(backClip(), Qt::IntersectClip);
        painter.drawPath(backBubble());
        painter.restore();
    }
    painter.drawPath(path);
    painter.restore();
}

}  // namespace setup
