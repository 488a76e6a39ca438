#include "setup/SetupLook.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include "overlay/Style.h"

namespace setup::look {

QColor brand() {
    return overlay::style::brand();
}

QColor secondary(const QPalette& palette) {
    return overlay::style::secondary(palette);
}

QFont font(int size, QFont::Weight weight) {
    QFont f = overlay::style::systemFont(size);
    f.setWeight(weight);
    return f;
}

static QString rgba(const QColor& c) {
    return QStringLiteral("rgba(%1,%2,%3,%4)")
        .arg(c.red())
        .arg(c.green())
        .arg(c.blue())
        .arg(c.alpha());
}

QString styleSheet(const QPalette& palette) {
    const QColor text = palette.color(QPalette::WindowText);
    QColor edge = text;
    edge.setAlphaF(0.22f);
    QColor pressed = text;
    pressed.setAlphaF(0.08f);
    QColor disabled = brand();
    disabled.setAlphaF(0.35f);
    const QColor base = palette.color(QPalette::Base);
    return QStringLiteral(
               "QPushButton { font-size: %1px; color: %2; background: %3; border: 1px solid %4;"
               " border-radius: 6px; padding: 4px 11px; min-height: 18px; }"
               "QPushButton:pressed { background: %5; }"
               "QPushButton:disabled { color: %6; }"
               "QPushButton[accent=\"true\"] { color: white; background: %7; border-color: %7;"
               " font-weight: 600; }"
               "QPushButton[accent=\"true\"]:pressed { background: %8; }"
               "QPushButton[accent=\"true\"]:disabled { background: %9; border-color: transparent;"
               " color: rgba(255,255,255,200); }"
               "QLineEdit { font-size: %1px; color: %2; background: %3; border: 1px solid %4;"
               " border-radius: 6px; padding: 5px 8px; }"
               "QLineEdit:focus { border: 1px solid %7; }")
        .arg(bodySize)
        .arg(rgba(text), rgba(base), rgba(edge), rgba(pressed), rgba(secondary(palette)),
             rgba(brand()), rgba(brand().darker(125)), rgba(disabled));
}

QLabel* secondaryLabel(const QString& text, int size) {
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    label->setFont(font(size));
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QPushButton* button(const QString& text, bool accent) {
    auto* b = new QPushButton(text);
    b->setProperty("accent", accent);
    b->setCursor(Qt::PointingHandCursor);
    b->setAutoDefault(false);
    return b;
}

QWidget* divider() {
    auto* line = new QFrame;
    line->setFixedHeight(1);
    line->setAutoFillBackground(true);
    line->setBackgroundRole(QPalette::Mid);
    return line;
}

}  // namespace setup::look
