#pragma once
// One suggestion: the text, wrapped inside a fixed outer width, and a hint line under it, on a
// rounded card. A click anywhere on it applies the suggestion.

#include <QString>
#include <QWidget>
#include <functional>

#include "overlay/TextBlock.h"

namespace overlay {

class BubbleView : public QWidget {
public:
    explicit BubbleView(QWidget* parent = nullptr);

    // Replaces the content and resizes the view to fit it at the given width.
    void set(const QString& text, double width, const QString& hint, std::function<void()> onApply);
    QSize sizeHint() const override { return fitting_; }

    // What a mouse click on the view does.
    void click();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    TextBlock text_;
    TextBlock hint_;
    QSize fitting_;
    bool pressed_ = false;
    std::function<void()> onApply_;
};

}  // namespace overlay
