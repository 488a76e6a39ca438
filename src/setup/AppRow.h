#pragma once
// One row of the apps window: a leading picture (an application's icon or a symbol), a text,
// and, when the row can be switched, a small switch at the trailing edge.

#include <QPixmap>
#include <QWidget>

#include "setup/GlimmoSwitch.h"

class QLabel;

namespace setup {

class AppRow : public QWidget {
    Q_OBJECT

public:
    // The side of the leading picture, in points.
    static constexpr int iconSide = 20;

    // An application: its icon at 20 × 20.
    AppRow(const QPixmap& icon, const QString& text, QWidget* parent = nullptr);
    // A website or a group: a symbol drawn 20 points wide in the secondary colour.
    AppRow(const QString& symbol, const QString& text, QWidget* parent = nullptr);

    // Adds the switch; without one the row only shows what it names.
    GlimmoSwitch* addSwitch(bool small, GlimmoSwitch::Read read, GlimmoSwitch::Write write);
    GlimmoSwitch* toggle() const { return switch_; }
    QLabel* label() const { return label_; }

private:
    void build(QWidget* leading, const QString& text);

    QLabel* label_ = nullptr;
    GlimmoSwitch* switch_ = nullptr;
};

// A fixed-size picture of a symbol (kind symbols, the globe, the grid).
class SymbolView : public QWidget {
public:
    SymbolView(const QString& symbol, QSize size, QWidget* parent = nullptr);
    QSize sizeHint() const override { return size_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString symbol_;
    QSize size_;
};

}  // namespace setup
