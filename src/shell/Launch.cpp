#include "shell/Launch.h"

#include <unistd.h>
#include <csignal>

#include <QApplication>
#include <QSocketNotifier>

#include "engine/Glimmo.h"
#include "main/Log.h"
#include "platform/JsonDefaults.h"
#include "platform/linux/session/Desktop.h"
#include "platform/linux/session/SessionInstance.h"
#include "rules/AppRules.h"
#include "shell/Install.h"
#include "shell/LauncherUpkeep.h"
#include "shell/Tray.h"
#include "shell/Update.h"
#include "shell/WindowFactories.h"
#include "shell/Windows.h"

namespace shell {
namespace {

int signalPipe[2] = {-1, -1};

void onSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const auto n = ::write(signalPipe[1], &byte, 1);
}

// Ctrl-C, SIGTERM or a session logout quit through the event loop, so the claude children are
// ended and nothing is left half-pasted.
void quitOnSignals() {
    if (::pipe(signalPipe) != 0) return;
    auto* notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [] { QApplication::quit(); });
    std::signal(SIGINT, onSignal);
    std::signal(SIGTERM, onSignal);
    std::signal(SIGHUP, onSignal);
}

// The program starts with the session once per installation; afterwards the user's choice in
// the menu stands.
void registerLoginOnce(platform::Platform& platform) {
    if (platform.defaults.boolValue(QStringLiteral("loginSet")).value_or(false)) return;
    platform.workspace.setLoginItem(true);
    platform.defaults.setBool(QStringLiteral("loginSet"), true);
}

}  // namespace

int runNormalLaunch(const QStringList& args) {
    QApplication::setQuitOnLastWindowClosed(false);
    // Writing to a claude child that has gone away must not end the program.
    std::signal(SIGPIPE, SIG_IGN);

    linuxdesk::SessionInstance instance;
    const BundlePaths bundle = BundlePaths::standard();
    InstallActions install = InstallActions::standard();
    install.quitOthers = [&instance] { instance.quitRunning(); };
    // A copy started from anywhere but an install location installs itself and starts that
    // copy instead, replacing a running Glimmo rather than reopening it.
    if (moveToApplications(args, bundle, install)) return 0;

    std::function<void()> reopen;
    const auto claim = instance.claim([&reopen] {
        if (reopen) reopen();
    });
    if (claim == platform::SingleInstance::Claim::Running) {
        if (instance.reopenRunning()) return 0;
        glimmo::log(QStringLiteral("another Glimmo holds the session but did not answer"));
    }
    quitOnSignals();

    platform::JsonDefaults defaults(platform::JsonDefaults::standardPath());
    platform::SystemClock clock;
    linuxdesk::Desktop desktop;
    if (!desktop.hasDisplay())
        glimmo::log(
            QStringLiteral("no X display: keys, the key tap and the frontmost application "
                           "are out of reach on a Wayland-only session"));
    platform::Platform platform = desktop.platform(defaults, clock);
    rules::AppRules& rules = rules::AppRules::shared(defaults);
    engine::Glimmo engine(platform, rules);

    Windows windows;
    const WindowContext context{platform, rules, windows, [&engine] { engine.claude.dropWarm(); }};
    windows.setSetupFactory(setupFactory(context));
    windows.setAppsFactory(appsFactory(context));

    Tray tray(engine, platform, rules, windows, &desktop.topBarMenu());
    QObject::connect(&tray, &Tray::quitRequested, qApp, &QApplication::quit);
    if (!tray.show())
        glimmo::log(QStringLiteral(
            "no system tray on this desktop (on GNOME, the AppIndicator extension adds one): "
            "start Glimmo again to open its settings"));

    registerLoginOnce(platform);
    platform.workspace.prepareCompanion();
    const LauncherUpkeep launchers(platform.workspace, rules);

    // Started from the mounted release image (or just installed from it): eject it.
    ejectVolumeLater(bundle, install);

    engine.start();
    tray.startIconTimer();
    if (!tray.setupFinished() || args.contains(QStringLiteral("-setup"))) windows.showSetup();

    // A later start of the program: the update check first, else the setup window.
    reopen = [&windows, &bundle, &install] {
        if (!updateFromDiskImage(bundle, install)) windows.showSetup();
    };

    const int status = QApplication::exec();
    reopen = nullptr;
    // Quitting ends the request in flight and the waiting claude process.
    engine.cancel();
    engine.claude.dropWarm();
    return status;
}

}  // namespace shell
