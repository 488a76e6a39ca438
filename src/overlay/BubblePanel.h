#pragma once
// The one top-level window of the overlay. It holds both views and shows one of them at a
// time. It never takes the keyboard focus and never activates Glimmo, so the user goes on
// typing in the other application while it is up.
//
// On a composited desktop the window is larger than the view it shows by shadowMargin on every
// side: that band holds the soft shadow. Without a compositor there is no shadow and the window
// is cut to the card's rounded shape instead. Either way the view itself sits exactly on the
// frame that the placement computed.

#include <QWidget>

#include "overlay/BubbleView.h"
#include "overlay/ReplyView.h"
#include "platform/Geometry.h"

namespace overlay {

class BubblePanel : public QWidget {
public:
    static constexpr int shadowMargin = 14;

    BubblePanel();

    BubbleView& bubble() { return *bubble_; }
    ReplyView& replies() { return *replies_; }

    // Shows view (one of the two above) with its top-left corner at frame's, in desktop
    // coordinates, above every other window; with its shadow if composited.
    void present(QWidget& view, const platform::Rect& frame, bool composited);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    BubbleView* bubble_;
    ReplyView* replies_;
    bool shadow_ = true;
};

}  // namespace overlay
