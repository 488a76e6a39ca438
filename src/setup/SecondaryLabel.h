#pragma once
// A text in the secondary colour, as the apps window's notes and footer are drawn.

#include <QLabel>

namespace setup {

// size in points; 0 keeps the system's text size.
QLabel* secondaryLabel(const QString& text, int size, QWidget* parent);

}  // namespace setup
