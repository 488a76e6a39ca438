#include "setup/AppIcon.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include "setup/SetupLook.h"

namespace setup {

QPixmap appIcon(int size, qreal devicePixelRatio) {
    QPixmap pixmap(QSize(size, size) * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);

    // The tile: a rounded square, lighter at the top.
    const QRectF tile(0.5, 0.5, size - 1.0, size - 1.0);
    QLinearGradient fill(tile.topLeft(), tile.bottomLeft());
    fill.setColorAt(0, look::brand().lighter(125));
    fill.setColorAt(1, look::brand());
    p.setPen(QPen(look::brand().darker(130), 1.0));
    p.setBrush(fill);
    p.drawRoundedRect(tile, size * 0.225, size * 0.225);

    // The glyph of the tray item (18-point grid, y downward), scaled to the tile's middle.
    const double unit = size / 26.0;
    p.translate(size / 2.0 - 9 * unit, size / 2.0 - 9 * unit);
    p.scale(unit, unit);
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(Qt::white, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawRoundedRect(QRectF(1.5, 18 - 4 - 10, 15, 10), 3, 3);
    QPainterPath wave;
    wave.moveTo(4.5, 18 - 8.6);
    wave.cubicTo(7.5, 18 - 12, 10.5, 18 - 6, 13.5, 18 - 9.4);
    p.setPen(QPen(Qt::white, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPath(wave);
    return pixmap;
}

}  // namespace setup
