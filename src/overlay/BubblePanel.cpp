#include "overlay/BubblePanel.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "overlay/Style.h"

namespace overlay {

namespace {
// The shadow falls a little downwards, as from a light above the screen.
constexpr int shadowDrop = 2;
constexpr int shadowBlur = 11;
constexpr double shadowAlpha = 0.16;
}  // namespace

BubblePanel::BubblePanel()
    // Bypassing the X11 window manager makes the panel an override-redirect window, like a
    // tooltip or a completion popup: no manager can focus it on map, move it, decorate it or
    // list it in a task switcher, whatever it makes of the focus hints. Such windows are
    // stacked above managed ones when raised, which every show does. Other platforms ignore
    // the hint and rely on the rest.
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::WindowDoesNotAcceptFocus | Qt::X11BypassWindowManagerHint |
                           Qt::NoDropShadowWindowHint),
      bubble_(new BubbleView(this)),
      replies_(new ReplyView(this)) {
    setWindowTitle(QStringLiteral("Glimmo"));  // how tools and tests find it among X windows
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_X11DoNotAcceptFocus);
    setFocusPolicy(Qt::NoFocus);
    bubble_->hide();
    replies_->hide();
}

void BubblePanel::present(QWidget& view, const platform::Rect& frame, bool composited) {
    QWidget& other = &view == bubble_ ? static_cast<QWidget&>(*replies_) : *bubble_;
    other.hide();
    shadow_ = composited;
    const int margin = shadow_ ? shadowMargin : 0;
    view.move(margin, margin);
    view.show();
    const QRect outer(int(std::lround(frame.x)) - margin, int(std::lround(frame.y)) - margin,
                      view.width() + 2 * margin, view.height() + 2 * margin);
    setGeometry(outer);
    if (shadow_) {
        clearMask();
    } else {
        QPainterPath card;
        card.addRoundedRect(QRectF(view.geometry()), style::cornerRadius, style::cornerRadius);
        setMask(QRegion(card.toFillPolygon().toPolygon()));
    }
    show();
    // A panel left up while another window was raised must come back on top. The headless
    // platform has no stacking and complains at every raise.
    static const bool stacking = QGuiApplication::platformName() != QLatin1String("offscreen");
    if (stacking) raise();
    update();
}

void BubblePanel::paintEvent(QPaintEvent*) {
    const QWidget* view = bubble_->isVisible() ? static_cast<QWidget*>(bubble_) : replies_;
    if (!view->isVisible()) return;
    QPainter painter(this);
    if (!shadow_) {
        // Cut to the card's shape by the mask: the card's soft edge pixels must blend into its
        // own colour, not into the black that stands for "see-through" without a compositor.
        painter.fillRect(view->geometry(), style::background(view->palette()));
        return;
    }
    // Concentric rounded rectangles, each a little larger and fainter, stack into a shadow
    // that fades out over shadowBlur points around the card.
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF card = QRectF(view->geometry()).translated(0, shadowDrop);
    double weights = 0;
    for (int k = 1; k <= shadowBlur; ++k) weights += shadowBlur + 1 - k;
    for (int k = shadowBlur; k >= 1; --k) {
        const double alpha = shadowAlpha * (shadowBlur + 1 - k) / weights;
        painter.setBrush(QColor::fromRgbF(0, 0, 0, float(alpha)));
        QPainterPath path;
        path.addRoundedRect(card.adjusted(-k, -k, k, k), style::cornerRadius + k,
                            style::cornerRadius + k);
        painter.drawPath(path);
    }
}

}  // namespace overlay
