#pragma once
// Fonts, colours and measures shared by the two views. Sizes are in points, and one point is
// one device-independent pixel, so fonts are set by pixel size: the same bubble on any DPI.

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRectF>
#include <QString>

class QPainter;

namespace overlay::style {

constexpr int textSize = 13;
constexpr int hintSize = 11;
constexpr double cornerRadius = 8;
constexpr double rowRadius = 6;
constexpr double borderOpacity = 0.14;
constexpr double selectedOpacity = 0.15;
constexpr double secondaryOpacity = 0.5;

// The system font at the given size in points.
QFont systemFont(int size);

QColor background(const QPalette& palette);
QColor primary(const QPalette& palette);
QColor secondary(const QPalette& palette);
QColor border(const QPalette& palette);
QColor selectedRow(const QPalette& palette);
// The accent colour of the windows (glimmo::brand).
QColor brand();

// The rounded background of both views with its hairline border, filling rect.
void paintCard(QPainter& painter, const QRectF& rect, const QPalette& palette);

// A light palette, for images that must look the same on every desktop theme.
QPalette light();

}  // namespace overlay::style
