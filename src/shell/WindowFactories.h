#pragma once
// Where the setup and apps windows are built for the tray. Each factory returns a new top-level
// window with its model wired in, or null while this build has no such window.

#include <functional>

#include "platform/Platform.h"
#include "shell/Windows.h"

namespace rules {
class AppRules;
}

namespace shell {

struct WindowContext {
    platform::Platform& platform;
    rules::AppRules& rules;
    Windows& windows;
    // Ends the waiting claude process (the profile changed).
    std::function<void()> endWarm;
};

Windows::Factory setupFactory(const WindowContext& context);
Windows::Factory appsFactory(const WindowContext& context);

}  // namespace shell
