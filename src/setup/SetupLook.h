#pragma once
// The look shared by the setup window's parts: the accent colour, fonts, the buttons' and
// fields' style, and the small pieces (labels, dividers) every step uses.

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QString>

class QLabel;
class QPushButton;
class QWidget;

namespace setup::look {

constexpr int width = 500;
constexpr int padding = 28;
constexpr int bodySize = 13;
constexpr int smallSize = 12;

QColor brand();
QColor secondary(const QPalette& palette);
QFont font(int size, QFont::Weight weight = QFont::Normal);

// Buttons, text fields and labels of the window, derived from its palette.
QString styleSheet(const QPalette& palette);

// A wrapped label in the secondary colour.
QLabel* secondaryLabel(const QString& text, int size = bodySize);
// A plain push button; the accent one is the window's default button (Return).
QPushButton* button(const QString& text, bool accent = false);
// A one-pixel horizontal rule in the border colour.
QWidget* divider();

}  // namespace setup::look
