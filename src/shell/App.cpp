#include "shell/App.h"

#include <QApplication>
#include <QCoreApplication>
#include <QStringList>

#include "shell/Launch.h"
#include "shell/Modes.h"

namespace shell {

int run(int argc, char** argv) {
    QStringList args;
    for (int i = 0; i < argc; ++i) args << QString::fromLocal8Bit(argv[i]);

    // The text-only modes must work without any display.
    if (const auto mode = headlessMode(args)) {
        QCoreApplication app(argc, argv);
        return runHeadlessMode(*mode, args);
    }

    // Images of the views can be drawn without any display.
    const bool display =
        qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!display && (flagValue(args, QStringLiteral("-snapshotUI")) ||
                     flagValue(args, QStringLiteral("-snapshotSetup"))))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    if (const auto status = runGuiMode(args)) return *status;
    return runNormalLaunch();
}

}  // namespace shell
