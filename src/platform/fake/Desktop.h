#pragma once
// An in-memory desktop for tests: one of each fake, bundled as a platform::Platform.
//
//     fake::Desktop desk;
//     auto field = desk.openField("com.apple.TextEdit", "Hello world.");  // frontmost, focused
//     Glimmo engine(desk.platform());
//     desk.type(" More");                        // the user types at the caret
//     desk.clock().advance(1.0);                 // time passes for the engine's pauses
//     desk.keyTap().press(platform::key::Tab);   // the user presses Tab
//     EXPECT_EQ(field->text(), "...");
//     EXPECT_EQ(desk.keyboard().posted().back(),
//               (fake::Keyboard::Press{platform::key::V, platform::flag::Command}));
//
// Everything is public for scripting: workspace() for applications and the frontmost one,
// ax() for trust and the records of writes, clipboard() for items and writes, and so on.

#include <memory>

#include "platform/Defaults.h"
#include "platform/Platform.h"
#include "platform/fake/App.h"
#include "platform/fake/Ax.h"
#include "platform/fake/Clipboard.h"
#include "platform/fake/Clock.h"
#include "platform/fake/InputSource.h"
#include "platform/fake/KeyTap.h"
#include "platform/fake/Keyboard.h"
#include "platform/fake/Screens.h"
#include "platform/fake/TextField.h"
#include "platform/fake/Workspace.h"

namespace fake {

class Desktop {
public:
    Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    platform::Platform& platform() { return platform_; }

    Ax& ax() { return ax_; }
    Workspace& workspace() { return workspace_; }
    Keyboard& keyboard() { return keyboard_; }
    KeyTap& keyTap() { return keyTap_; }
    Clipboard& clipboard() { return clipboard_; }
    Screens& screens() { return screens_; }
    InputSource& inputSource() { return inputSource_; }
    platform::MemoryDefaults& defaults() { return defaults_; }
    Clock& clock() { return clock_; }

    // A running application; pid 0 picks the next free one (from 1000).
    App& addApp(const QString& bundleId, const QString& name = {}, qint64 pid = 0);
    App* app(qint64 pid) { return workspace_.app(pid); }
    // Brings an application to the front; std::nullopt leaves no application frontmost.
    void setFrontmost(std::optional<qint64> pid) { workspace_.setFrontmost(pid); }
    App* frontApp() { return workspace_.frontApp(); }

    // The usual start of an engine test: the application of that identifier (added when not
    // running) in front, with a window holding a new text box of that text and role, focused,
    // caret at the end.
    std::shared_ptr<TextField> openField(const QString& bundleId, const QString& text = {},
                                         const QString& role = QStringLiteral("AXTextArea"));
    // The focused text box of the frontmost application, or null.
    std::shared_ptr<TextField> focusedField();
    // The user types text at the caret (replacing the selection).
    void type(const QString& text) { keyboard_.type(text); }

private:
    Clock clock_;
    Workspace workspace_;
    Ax ax_{workspace_, clock_};
    Clipboard clipboard_;
    Keyboard keyboard_{workspace_, clipboard_};
    KeyTap keyTap_{keyboard_};
    Screens screens_;
    InputSource inputSource_;
    platform::MemoryDefaults defaults_;
    platform::Platform platform_;
    qint64 nextPid_ = 1000;
};

}  // namespace fake
