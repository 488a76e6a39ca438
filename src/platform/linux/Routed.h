#pragma once
// The seams of a Wayland session: each asks NativeRoute which backend serves the frontmost
// application and hands the call to the X11 part (X11Workspace, XTestKeyboard, XGrabKeyTap,
// QtClipboard, AtspiAx as on X11) or to the native one (NativeEdit, AtspiKeyTap). For a native
// window:
// - the engine's select-and-paste becomes an EditableText replacement (NativeEdit), and the
//   clipboard is left alone: saving gives a marker that restoring recognises;
// - the bubble goes to a fixed place (NativePlace), since the window's position is unknown;
// - a text box without EditableText is not offered for rewriting, and the debug log says why.

#include "platform/Ax.h"
#include "platform/Clipboard.h"
#include "platform/Keyboard.h"
#include "platform/Screens.h"
#include "platform/Workspace.h"
#include "main/DebugTrace.h"

namespace linuxdesk {

class AtspiAx;
class AtspiKeyTap;
class NativeEdit;
class NativeRoute;
class QtClipboard;
class X11Workspace;
class XGrabKeyTap;
class XTestKeyboard;

class RoutedWorkspace : public platform::Workspace {
public:
    RoutedWorkspace(NativeRoute& route, X11Workspace& x11) : route_(route), x11_(x11) {}
    std::optional<platform::RunningApp> frontmost() override;
    qint64 ownPid() override;
    std::vector<platform::RunningApp> running(const QString& bundleId) override;
    bool openUrl(const QString& url) override;
    bool openFile(const QString& path, const QString& bundleId) override;
    std::optional<platform::InstalledApp> installed(const QString& bundleId) override;
    std::optional<QString> textEditor() override;
    bool openAccessibilitySettings() override;
    bool loginItemEnabled() override;
    bool setLoginItem(bool enabled) override;

private:
    NativeRoute& route_;
    X11Workspace& x11_;
};

class RoutedAx : public platform::Ax {
public:
    RoutedAx(NativeRoute& route, AtspiAx& ax, NativeEdit& edit, AtspiKeyTap& tap,
             platform::Screens& screens)
        : route_(route), ax_(ax), edit_(edit), tap_(tap), screens_(screens) {}
    bool trusted() override;
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

private:
    bool native(const platform::Element& element) const;

    NativeRoute& route_;
    AtspiAx& ax_;
    NativeEdit& edit_;
    AtspiKeyTap& tap_;
    platform::Screens& screens_;
    glimmo::DebugTrace trace_;
};

class RoutedKeyboard : public platform::Keyboard {
public:
    RoutedKeyboard(NativeRoute& route, XTestKeyboard& x11, NativeEdit& edit)
        : route_(route), x11_(x11), edit_(edit) {}
    void post(int code, quint64 flags) override;

private:
    NativeRoute& route_;
    XTestKeyboard& x11_;
    NativeEdit& edit_;
};

class RoutedKeyTap : public platform::KeyTap {
public:
    RoutedKeyTap(NativeRoute& route, XGrabKeyTap& x11, AtspiKeyTap& native)
        : route_(route), x11_(x11), native_(native) {}
    bool install(Handler handler) override;
    void setWanted(bool wanted) override;
    void requestAccess() override;

private:
    NativeRoute& route_;
    XGrabKeyTap& x11_;
    AtspiKeyTap& native_;
};

class RoutedClipboard : public platform::Clipboard {
public:
    RoutedClipboard(NativeRoute& route, QtClipboard& x11, NativeEdit& edit)
        : route_(route), x11_(x11), edit_(edit) {}
    platform::ClipContents save() override;
    void restore(const platform::ClipContents& contents) override;
    void writeTransientText(const QString& text) override;
    void writeText(const QString& text) override;

private:
    NativeRoute& route_;
    QtClipboard& x11_;
    NativeEdit& edit_;
};

}  // namespace linuxdesk
