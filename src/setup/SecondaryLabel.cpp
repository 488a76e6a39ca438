#include "setup/SecondaryLabel.h"

#include "overlay/Style.h"

namespace setup {

QLabel* secondaryLabel(const QString& text, int size, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setFont(overlay::style::systemFont(size > 0 ? size : overlay::style::textSize));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, overlay::style::secondary(palette));
    label->setPalette(palette);
    return label;
}

}  // namespace setup
