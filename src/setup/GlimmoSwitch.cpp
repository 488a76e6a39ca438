#include "setup/GlimmoSwitch.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>
#include <QPainterPath>

#include "overlay/Style.h"

namespace setup {

namespace {

// One accessible element: a button whose value is "on" or "off", pressed to flip it.
class SwitchAccessible : public QAccessibleWidget {
public:
    explicit SwitchAccessible(GlimmoSwitch* sw) : QAccessibleWidget(sw, QAccessible::Button) {}

    QString text(QAccessible::Text t) const override {
        if (t == QAccessible::Value) return self()->isOn() ? QStringLiteral("on") : "off";
        if (t == QAccessible::Name) return self()->accessibleName();
        return QAccessibleWidget::text(t);
    }
    QAccessible::State state() const override {
        QAccessible::State s = QAccessibleWidget::state();
        s.checkable = true;
        s.checked = self()->isOn();
        return s;
    }
    int childCount() const override { return 0; }
    QStringList actionNames() const override { return {pressAction(), toggleAction()}; }
    void doAction(const QString&) override { self()->click(); }

private:
    GlimmoSwitch* self() const { return static_cast<GlimmoSwitch*>(widget()); }
};

QAccessibleInterface* accessibleFactory(const QString& className, QObject* object) {
    if (className == QLatin1String("setup::GlimmoSwitch") && object && object->isWidgetType())
        return new SwitchAccessible(static_cast<GlimmoSwitch*>(object));
    return nullptr;
}

}  // namespace

GlimmoSwitch::GlimmoSwitch(bool small, Read read, Write write, QWidget* parent)
    : QAbstractButton(parent), small_(small), read_(std::move(read)), write_(std::move(write)) {
    static const bool factoryInstalled = [] {
        QAccessible::installFactory(&accessibleFactory);
        return true;
    }();
    (void)factoryInstalled;
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    slide_.setDuration(durationMs);
    slide_.setEasingCurve(QEasingCurve::OutCubic);
    connect(&slide_, &QVariantAnimation::valueChanged, this, [this](const QVariant& v) {
        position_ = v.toDouble();
        update();
    });
    connect(this, &QAbstractButton::clicked, this, [this] {
        write_(!on_);
        refresh();  // the store may refuse (a locked kind), or already have announced it
    });
    show(read_(), false);
}

void GlimmoSwitch::refresh() {
    show(read_(), true);
}

void GlimmoSwitch::show(bool on, bool animate) {
    if (on == on_ && slide_.state() != QAbstractAnimation::Running && position_ == (on ? 1 : 0))
        return;
    const bool changed = on != on_;
    on_ = on;
    const double target = on ? 1 : 0;
    slide_.stop();
    if (animate && isVisible()) {
        slide_.setStartValue(position_);
        slide_.setEndValue(target);
        slide_.start();
    } else {
        position_ = target;
        update();
    }
    if (changed) {
        QAccessibleValueChangeEvent event(this, on ? QStringLiteral("on") : "off");
        QAccessible::updateAccessibility(&event);
    }
}

QSize GlimmoSwitch::sizeHint() const {
    return small_ ? QSize(32, 18) : QSize(40, 22);
}

void GlimmoSwitch::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF track(QPointF(0, 0), QSizeF(sizeHint()));
    const double radius = track.height() / 2;

    // The track blends from the off grey to the brand colour as the knob travels.
    QColor off = overlay::style::primary(palette());
    off.setAlphaF(0.14f);
    const QColor on = overlay::style::brand();
    auto mix = [&](float a, float b) { return a + (b - a) * float(position_); };
    QColor fill;
    fill.setRgbF(mix(off.redF(), on.redF()), mix(off.greenF(), on.greenF()),
                 mix(off.blueF(), on.blueF()), mix(off.alphaF(), on.alphaF()));
    p.setPen(Qt::NoPen);
    p.setBrush(fill);
    p.drawRoundedRect(track, radius, radius);

    const double d = track.height() - 4;
    const double x = 2 + (track.width() - 4 - d) * position_;
    const QRectF knob(x, 2, d, d);
    // Shadow: black at 15 %, half a point down, softened by half a point.
    for (const auto& [grow, alpha] : {std::pair{0.5, 0.06}, std::pair{0.0, 0.12}}) {
        p.setBrush(QColor::fromRgbF(0, 0, 0, float(alpha)));
        p.drawEllipse(knob.translated(0, 0.5).adjusted(-grow, -grow, grow, grow));
    }
    p.setBrush(Qt::white);
    p.drawEllipse(knob);

    if (hasFocus()) {
        QPen ring(overlay::style::brand(), 1.5);
        p.setPen(ring);
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(track.adjusted(0.75, 0.75, -0.75, -0.75), radius - 0.75, radius - 0.75);
    }
}

}  // namespace setup
