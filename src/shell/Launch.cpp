#include "shell/Launch.h"

#include <unistd.h>
#include <csignal>

#include <QApplication>
#include <QSocketNotifier>

#include "engine/Glimmo.h"
#include "main/Log.h"
#include "platform/JsonDefaults.h"
#include "platform/linux/Desktop.h"
#include "rules/AppRules.h"

namespace shell {
namespace {

int signalPipe[2] = {-1, -1};

void onSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const auto n = ::write(signalPipe[1], &byte, 1);
}

// Ctrl-C or a session logout quits through the event loop, so the claude children are ended
// and nothing is left half-pasted.
void quitOnSignals() {
    if (::pipe(signalPipe) != 0) return;
    auto* notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [] { QApplication::quit(); });
    std::signal(SIGINT, onSignal);
    std::signal(SIGTERM, onSignal);
    std::signal(SIGHUP, onSignal);
}

}  // namespace

int runNormalLaunch() {
    QApplication::setQuitOnLastWindowClosed(false);
    quitOnSignals();

    platform::JsonDefaults defaults(platform::JsonDefaults::standardPath());
    platform::SystemClock clock;
    linuxdesk::Desktop desktop;
    if (!desktop.hasDisplay())
        glimmo::log(
            QStringLiteral("no X display: keys, the key tap and the frontmost application "
                           "are out of reach on a Wayland-only session"));
    platform::Platform platform = desktop.platform(defaults, clock);
    // Until the setup window exists, switching the accessibility bus on is done here: without
    // it no application shows Glimmo its text boxes.
    if (!platform.ax.trusted()) platform.ax.requestTrust();
    engine::Glimmo engine(platform, rules::AppRules::shared(defaults));
    engine.start();
    return QApplication::exec();
}

}  // namespace shell
