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
    if (const auto status = checkDisplay(args)) return *status;

    QApplication app(argc, argv);
    if (const auto status = runGuiMode(args)) return *status;
    return runNormalLaunch(args);
}

}  // namespace shell
