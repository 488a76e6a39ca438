#include "setup/Spinner.h"

#include <QPainter>

#include "setup/SetupLook.h"

namespace setup {

Spinner::Spinner(QWidget* parent) : QWidget(parent) {
    setFixedSize(sizeHint());
    timer_.setInterval(50);
    connect(&timer_, &QTimer::timeout, this, [this] {
        angle_ = (angle_ - 30 + 360) % 360;
        update();
    });
}

void Spinner::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF ring = QRectF(rect()).adjusted(2, 2, -2, -2);
    QColor track = look::secondary(palette());
    track.setAlphaF(track.alphaF() * 0.35f);
    p.setPen(QPen(track, 2.0));
    p.drawEllipse(ring);
    p.setPen(QPen(look::brand(), 2.0, Qt::SolidLine, Qt::RoundCap));
    p.drawArc(ring, angle_ * 16, 100 * 16);
}

}  // namespace setup
