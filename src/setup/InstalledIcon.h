#pragma once
// An installed application's icon for the apps window: the desktop's icon theme first, then
// the file the desktop entry names, then a drawn tile with the name's first letter.

#include <QPixmap>

#include "setup/AppIdentity.h"

namespace setup {

// side is in points; the pixmap carries the device pixel ratio.
QPixmap installedIcon(const AppIdentity& app, int side, qreal devicePixelRatio);

}  // namespace setup
