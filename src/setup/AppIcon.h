#pragma once
// The program's icon as the setup window shows it: the tray glyph in white on a rounded square
// of the accent colour.

#include <QPixmap>

namespace setup {

QPixmap appIcon(int size, qreal devicePixelRatio = 1.0);

}  // namespace setup
