#include "shell/TrayIcon.h"

#include <QPainter>
#include <QPainterPath>

namespace shell {

namespace {

constexpr qreal kUnits = 18;

}  // namespace

// The geometry is given with y growing downwards (the glyph's top edge at 0).
void paintGlyph(QPainter& painter, bool attention, const QColor& ink) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, 1.4));
    painter.drawRoundedRect(QRectF(1.5, 4, 15, 10), 3, 3);

    QPainterPath wave(QPointF(4.5, 9.4));
    wave.cubicTo(QPointF(7.5, 6), QPointF(10.5, 12), QPointF(13.5, 8.6));
    painter.setPen(QPen(ink, 1.5, Qt::SolidLine, Qt::RoundCap));
    painter.drawPath(wave);

    if (attention) {
        // A round hole cut through the corner, then a dot in its middle.
        painter.setPen(Qt::NoPen);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.setBrush(Qt::black);
        painter.drawEllipse(QRectF(11.5, 0, 7.5, 7.5));
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setBrush(ink);
        painter.drawEllipse(QRectF(13, 1.5, 4.5, 4.5));
    }
    painter.restore();
}

QImage glyphImage(bool attention, int pixels, const QColor& ink) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(pixels / kUnits, pixels / kUnits);
    paintGlyph(painter, attention, ink);
    return image;
}

namespace {

// The glyph over a one-pixel dark rim (the glyph's shape stamped around itself).
QImage rimmedGlyph(bool attention, int pixels, bool dimmed) {
    const QImage rim = glyphImage(attention, pixels, QColor(0, 0, 0, 150));
    const QImage glyph = glyphImage(attention, pixels, QColor(250, 250, 250));
    QImage out(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    out.fill(Qt::transparent);
    QPainter painter(&out);
    const int step = pixels >= 40 ? 2 : 1;
    for (int dx = -step; dx <= step; dx += step)
        for (int dy = -step; dy <= step; dy += step)
            if (dx || dy) painter.drawImage(QPoint(dx, dy), rim);
    // Stamped rims add up; keep the rim no darker than one stamp's worth at the glyph's edge.
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(out.rect(), QColor(0, 0, 0, 170));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawImage(QPoint(0, 0), glyph);
    if (dimmed) {
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.fillRect(out.rect(), QColor(0, 0, 0, 105));
    }
    return out;
}

}  // namespace

QIcon trayIcon(bool attention, bool dimmed, qreal devicePixelRatio) {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64}) {
        const int pixels = qRound(size * devicePixelRatio);
        QPixmap pixmap = QPixmap::fromImage(rimmedGlyph(attention, pixels, dimmed));
        pixmap.setDevicePixelRatio(devicePixelRatio);
        icon.addPixmap(pixmap);
    }
    return icon;
}

QImage iconStrip() {
    QImage image(40, 18, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.drawImage(QPoint(0, 0), glyphImage(false, 18, Qt::black));
    painter.drawImage(QPoint(22, 0), glyphImage(true, 18, Qt::black));
    return image;
}

}  // namespace shell
