#pragma once
// The small line symbols of the apps window (the kinds' symbols, the chevron, the globe, the
// grid), drawn in code so they look the same on every desktop and icon theme.

#include <QColor>
#include <QRectF>
#include <QString>

class QPainter;

namespace setup {

// Draws the named symbol centred in box, in colour, with lines lineWidth points wide; an unknown
// name draws nothing.
void drawSymbol(QPainter& painter, const QString& name, const QRectF& box, const QColor& color,
                double lineWidth = 1.4);

}  // namespace setup
