#include "setup/InstalledIcon.h"

#include <QFileInfo>
#include <QIcon>
#include <QPainter>

#include "overlay/Style.h"

namespace setup {

namespace {

QPixmap drawnTile(const QString& name, int side, qreal dpr) {
    QPixmap pixmap(QSize(side, side) * dpr);
    pixmap.setDevicePixelRatio(dpr);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(overlay::style::brand());
    p.drawRoundedRect(QRectF(0, 0, side, side), side * 0.22, side * 0.22);
    QFont font = overlay::style::systemFont(int(side * 0.6));
    font.setWeight(QFont::DemiBold);
    p.setFont(font);
    p.setPen(Qt::white);
    p.drawText(QRectF(0, 0, side, side), Qt::AlignCenter, name.left(1).toUpper());
    return pixmap;
}

}  // namespace

QPixmap installedIcon(const AppIdentity& app, int side, qreal dpr) {
    QIcon icon;
    if (!app.iconName.isEmpty()) icon = QIcon::fromTheme(app.iconName);
    if (icon.isNull() && !app.iconPath.isEmpty() && QFileInfo::exists(app.iconPath))
        icon = QIcon(app.iconPath);
    if (!icon.isNull()) {
        const QPixmap pixmap = icon.pixmap(QSize(side, side), dpr);
        if (!pixmap.isNull()) return pixmap;
    }
    return drawnTile(app.name, side, dpr);
}

}  // namespace setup
