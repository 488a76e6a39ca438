#include "overlay/Style.h"

#include <QFontDatabase>
#include <QPainter>
#include <QPainterPath>

#include "main/Constants.h"

namespace overlay::style {

QFont systemFont(int size) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(size);
    return font;
}

QColor background(const QPalette& palette) {
    return palette.color(QPalette::Window);
}

QColor primary(const QPalette& palette) {
    return palette.color(QPalette::WindowText);
}

static QColor faded(QColor color, double opacity) {
    color.setAlphaF(float(color.alphaF() * opacity));
    return color;
}

QColor secondary(const QPalette& palette) {
    return faded(primary(palette), secondaryOpacity);
}

QColor border(const QPalette& palette) {
    return faded(primary(palette), borderOpacity);
}

QColor selectedRow(const QPalette& palette) {
    return faded(palette.color(QPalette::Highlight), selectedOpacity);
}

QColor brand() {
    return QColor::fromRgbF(float(glimmo::brand.red), float(glimmo::brand.green),
                            float(glimmo::brand.blue), float(glimmo::brand.alpha));
}

void paintCard(QPainter& painter, const QRectF& rect, const QPalette& palette) {
    // The fill covers the whole card; the 1-point line runs half a point inside the edge so
    // that all of it lands on the card's outermost pixels, crisp, over an opaque ground.
    QPainterPath fill;
    fill.addRoundedRect(rect, cornerRadius, cornerRadius);
    QPainterPath edge;
    edge.addRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius - 0.5,
                        cornerRadius - 0.5);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(fill, background(palette));
    QPen pen(border(palette), 1.0, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setMiterLimit(10);
    painter.strokePath(edge, pen);
    painter.restore();
}

QPalette light() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xec, 0xec, 0xec));
    palette.setColor(QPalette::WindowText, QColor(0x1d, 0x1d, 0x1f));
    palette.setColor(QPalette::Highlight, QColor(0x00, 0x7a, 0xff));
    return palette;
}

}  // namespace overlay::style
