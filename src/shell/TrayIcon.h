#pragma once
// The tray icon, drawn in code: a rounded box with a wave, and a badge (a dot in a round hole at
// the top right) while setup is unfinished or Claude is in trouble.

#include <QColor>
#include <QIcon>
#include <QImage>

class QPainter;

namespace shell {

// The glyph on an 18 by 18 unit square (the painter scaled to the target), in the pen's colour.
void paintGlyph(QPainter& painter, bool attention, const QColor& ink);

// The glyph alone, ink on transparent, `pixels` square.
QImage glyphImage(bool attention, int pixels, const QColor& ink);

// For the tray: a light glyph with a dark rim, legible on light and dark panels alike; dimmed
// while suggestions are off or accessibility is missing. Sized for every common tray height.
QIcon trayIcon(bool attention, bool dimmed, qreal devicePixelRatio);

// Both states side by side, 40 by 18, black on transparent: plain left, badged right.
QImage iconStrip();

}  // namespace shell
