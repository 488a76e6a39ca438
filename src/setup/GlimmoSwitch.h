#pragma once
// The switch of the apps window: a capsule track in the brand colour when on, a white knob that
// slides with a short ease-out. It shows what its getter reads and hands a tap to its setter,
// so the rules store stays the only place a setting lives; refresh() follows the store after a
// change made anywhere.

#include <QAbstractButton>
#include <QVariantAnimation>
#include <functional>

namespace setup {

class GlimmoSwitch : public QAbstractButton {
    Q_OBJECT

public:
    using Read = std::function<bool()>;
    using Write = std::function<void(bool)>;

    GlimmoSwitch(bool small, Read read, Write write, QWidget* parent = nullptr);

    bool isOn() const { return on_; }
    bool small() const { return small_; }
    // Reads the value again; a change slides the knob.
    void refresh();

    QSize sizeHint() const override;

    static constexpr int durationMs = 150;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void show(bool on, bool animate);

    bool small_;
    Read read_;
    Write write_;
    bool on_ = false;
    double position_ = 0;  // 0 at the leading end (off), 1 at the trailing end (on)
    QVariantAnimation slide_;
};

}  // namespace setup
