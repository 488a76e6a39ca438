#include "shell/App.h"

#include <QApplication>
#include <QCoreApplication>
#include <QStringList>

#include "shell/CommandLine.h"
#include "shell/Launch.h"
#include "shell/Modes.h"

namespace shell {

int run(int argc, char** argv) {
    QStringList args;
    for (int i = 0; i < argc; ++i) args << QString::fromLocal8Bit(argv[i]);

    if (const auto status = answerOptions(args)) return *status;

    // The text-only modes must work without any display.
    if (const auto mode = headlessMode(args)) {
        QCoreApplication app(argc, argv);
        return runHeadlessMode(*mode, args);
    }

    // Images of the icon and the views can be drawn without any display.
    const bool display =
        qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!display && drawsOnly(args)) qputenv("QT_QPA_PLATFORM", "offscreen");
    // On Wayland a window cannot place itself on the screen, and the bubble must sit at the
    // caret: Glimmo's windows go through Xwayland wherever it runs.
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") && qEnvironmentVariableIsSet("DISPLAY") &&
        !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");
    if (const auto status = checkDisplay(args)) return *status;

    QApplication app(argc, argv);
    if (const auto status = runGuiMode(args)) return *status;
    return runNormalLaunch(args);
}

}  // namespace shell
