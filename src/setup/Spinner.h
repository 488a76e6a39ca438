#pragma once
// A small indeterminate progress indicator: an arc that turns while the widget is shown.

#include <QTimer>
#include <QWidget>

namespace setup {

class Spinner : public QWidget {
    Q_OBJECT
public:
    explicit Spinner(QWidget* parent = nullptr);
    QSize sizeHint() const override { return {16, 16}; }

protected:
    void paintEvent(QPaintEvent*) override;
    void showEvent(QShowEvent*) override { timer_.start(); }
    void hideEvent(QHideEvent*) override { timer_.stop(); }

private:
    QTimer timer_;
    int angle_ = 90;
};

}  // namespace setup
