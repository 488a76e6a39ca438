#pragma once
// A list of reply drafts: one row per option (the selected one tinted), an optional "…" row
// while more are coming, and the hint line, on a rounded card 460 points wide. A click on an
// option picks it.

#include <QRectF>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <vector>

#include "overlay/TextBlock.h"

namespace overlay {

class ReplyView : public QWidget {
public:
    explicit ReplyView(QWidget* parent = nullptr);

    // Replaces the content and resizes the view to fit it.
    void set(const QStringList& options, int selected, bool more, const QString& hint,
             std::function<void(int)> onPick);
    QSize sizeHint() const override { return fitting_; }

    // The option row under a point of the view, or -1 (the "…" row, the hint, the padding).
    int rowAt(const QPointF& point) const;
    // The frame of option row i within the view.
    QRectF rowRect(int row) const { return rows_.at(size_t(row)).frame; }
    // What a mouse click on option row i does; other rows take no clicks.
    void click(int row);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Row {
        QRectF frame;
        TextBlock text;
    };
    std::vector<Row> rows_;
    int selected_ = 0;
    QRectF moreFrame_;
    TextBlock more_;
    QPointF hintAt_;
    TextBlock hint_;
    QSize fitting_;
    int pressed_ = -1;
    std::function<void(int)> onPick_;
};

}  // namespace overlay
