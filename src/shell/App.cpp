#include "shell/App.h"

#include <QApplication>
#include <QCoreApplication>
#include <QStringList>

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

    QApplication app(argc, argv);
    if (const auto status = runGuiMode(args)) return *status;
    return 0;
}

}  // namespace shell
