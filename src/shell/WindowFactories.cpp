#include "shell/WindowFactories.h"

#include "setup/AppsView.h"
#include "setup/SetupWindow.h"
#include "setup/TryIt.h"

namespace shell {

Windows::Factory setupFactory(const WindowContext& context) {
    return [context]() -> QWidget* {
        setup::SetupHooks hooks;
        hooks.onSaved = context.endWarm;
        Windows* windows = &context.windows;
        hooks.showApps = [windows] { windows->showApps(); };
        platform::Platform& platform = context.platform;
        hooks.tryIt = [&platform] { setup::tryIt(platform.ax, platform.workspace); };
        hooks.bringToFront = &Windows::bringToFront;
        return setup::makeSetupWindow(
            {platform.defaults, platform.ax, platform.workspace, platform.clock}, hooks);
    };
}

Windows::Factory appsFactory(const WindowContext& context) {
    rules::AppRules& rules = context.rules;
    platform::Workspace& workspace = context.platform.workspace;
    return [&rules, &workspace]() -> QWidget* { return new setup::AppsView(rules, workspace); };
}

}  // namespace shell
