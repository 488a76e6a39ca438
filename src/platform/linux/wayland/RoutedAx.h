#pragma once
// The seams of a Wayland session (RoutedAx, RoutedWorkspace, RoutedKeyboard, RoutedKeyTap,
// RoutedClipboard) each ask NativeRoute which backend serves the frontmost application and
// hand the call to the X11 part (AtspiAx, X11Workspace, XTestKeyboard, XGrabKeyTap,
// QtClipboard, as on X11) or to the native one (NativeEdit, AtspiKeyTap). For a native window
// this one:
// - keeps the engine's selection in NativeEdit (GTK 4 times out setting one);
// - places the caret from the window's position the compositor companion reports, or at a
//   fixed place without one (NativePlace);
// - offers no text box without EditableText for rewriting, and the debug log says why.

#include "main/DebugTrace.h"
#include "platform/Ax.h"
#include "platform/Screens.h"

namespace linuxdesk {

class AtspiAx;
class AtspiKeyTap;
class Companion;
class NativeEdit;
class NativeRoute;

class RoutedAx : public platform::Ax {
public:
    RoutedAx(NativeRoute& route, AtspiAx& ax, NativeEdit& edit, AtspiKeyTap& tap,
             platform::Screens& screens, Companion& companion)
        : route_(route),
          ax_(ax),
          edit_(edit),
          tap_(tap),
          screens_(screens),
          companion_(companion) {}
    bool trusted() override;
    void onChange(std::function<void()> changed) override;
    void requestTrust() override;
    platform::Element application(qint64 pid) override;
    std::optional<platform::Value> attribute(const platform::Element& element,
                                             const QString& name) override;
    std::optional<platform::Value> parameterized(const platform::Element& element,
                                                 const QString& name,
                                                 const platform::Value& parameter) override;
    bool setAttribute(const platform::Element& element, const QString& name,
                      const platform::Value& value) override;
    bool same(const platform::Element& a, const platform::Element& b) override;
    std::vector<QString> restartNeeded() override;

private:
    bool native(const platform::Element& element) const;
    std::optional<platform::Rect> placed(const platform::Element& element,
                                         const platform::Range& range);
    // A box the toolkit reports relative to its window, on the screen; absent without the
    // focused window's place.
    std::optional<platform::Rect> onScreen(const platform::Element& element,
                                           const std::optional<platform::Rect>& inWindow);

    NativeRoute& route_;
    AtspiAx& ax_;
    NativeEdit& edit_;
    AtspiKeyTap& tap_;
    platform::Screens& screens_;
    Companion& companion_;
    glimmo::DebugTrace trace_;
};

}  // namespace linuxdesk
