// Saving another application's clipboard before a paste: the GTK test editor owns one item
// that offers a text and a PNG image, which GTK lists as some twenty formats; every one is
// fetched, since a restore must give back everything. Prints the time of each of 5 saves.
//
//   tests/e2e/desktop.sh build/bench/bench_linux_clipboard
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QProcess>
#include <chrono>
#include <cstdio>

#include "platform/linux/session/QtClipboard.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication app(argc, argv);
    QProcess owner;
    owner.start(GLIMMO_GTK_EDITOR, {"--own-clipboard", "kept text"});
    QElapsedTimer wait;
    wait.start();
    while (QGuiApplication::clipboard()->text() != QLatin1String("kept text") &&
           wait.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);

    linuxdesk::QtClipboard clipboard;
    for (int i = 0; i < 5; ++i) {
        const auto start = std::chrono::steady_clock::now();
        const auto saved = clipboard.save();
        const std::chrono::duration<double, std::milli> spent =
            std::chrono::steady_clock::now() - start;
        size_t bytes = 0, formats = 0;
        for (const auto& item : saved)
            for (const auto& [type, data] : item.types) bytes += data.size(), ++formats;
        std::printf("save %d: %zu formats, %zu bytes, %.1f ms\n", i + 1, formats, bytes,
                    spent.count());
    }
    owner.terminate();
    owner.waitForFinished();
    return 0;
}
