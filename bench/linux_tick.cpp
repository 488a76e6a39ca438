// One engine tick's desktop work on the real backend, against the GTK test editor on the
// virtual desktop: the frontmost application, then the accessibility reads of a tick (focused
// element, isTextField, the text, the selection, the marked range). Ticks are 0.3 seconds
// apart as the engine's are, with the event loop running between them, so the backend's
// short-lived caches hit and miss as they would in the program; each tick is timed on its own
// and p50 and p99 are printed (200 ticks: one minute).
//
//   tests/e2e/desktop.sh build/bench/bench_linux_tick
#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <set>
#include <vector>

#include "ax/Browser.h"
#include "ax/TextField.h"
#include "platform/linux/atspi/AtspiAx.h"
#include "platform/linux/session/Desktop.h"
#include "platform/linux/x11/X11Workspace.h"

namespace {

void spin(int ms) {
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms) QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

double percentile(std::vector<double> v, double p) {
    std::sort(v.begin(), v.end());
    return v[std::min(v.size() - 1, size_t(p * v.size()))];
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication app(argc, argv);
    QString text;
    for (int i = 0; i < 20; ++i)
        text += "A paragraph of ordinary length that someone is writing.\n";
    QProcess editor;
    editor.start(GLIMMO_GTK_EDITOR, {"--text", text});
    editor.waitForStarted();
    spin(2000);

    linuxdesk::Desktop desktop;
    auto& ax = desktop.ax();
    auto& ws = desktop.workspace();
    if (!ax.trusted()) {
        std::fprintf(stderr, "accessibility bus not enabled\n");
        return 1;
    }
    std::set<qint64> primed;
    using clock = std::chrono::steady_clock;

    // The first read of a newly seen application searches its tree once for the focus.
    auto start = clock::now();
    auto front = ws.frontmost();
    auto first = front ? ax::focusedElement(ax, front->pid) : std::nullopt;
    const double firstMs = std::chrono::duration<double, std::milli>(clock::now() - start).count();
    if (!first) {
        std::fprintf(stderr, "no focused element in the editor\n");
        return 1;
    }

    std::vector<double> ticks, bounds;
    for (int i = 0; i < 200; ++i) {
        start = clock::now();
        auto app = ws.frontmost();
        if (!app) continue;
        ax::prime(ax, primed, *app);
        auto el = ax::focusedElement(ax, app->pid);
        if (!el || !ax::isTextField(ax, *el)) continue;
        auto value = ax::stringAttr(ax, *el, QStringLiteral("AXValue"));
        auto range = ax::selectedRange(ax, *el);
        auto marked = ax::markedRange(ax, *el);
        ticks.push_back(std::chrono::duration<double, std::milli>(clock::now() - start).count());
        if (!value || !range || marked) return 1;
        start = clock::now();
        auto rect = ax::bounds(ax, *el, range->location);
        bounds.push_back(std::chrono::duration<double, std::milli>(clock::now() - start).count());
        if (!rect) return 1;
        spin(300);
    }
    std::printf("first focus read (tree search): %.3f ms\n", firstMs);
    std::printf("tick reads over %zu ticks: p50 %.3f ms, p99 %.3f ms\n", ticks.size(),
                percentile(ticks, 0.5), percentile(ticks, 0.99));
    std::printf("bounds at the caret: p50 %.3f ms, p99 %.3f ms\n", percentile(bounds, 0.5),
                percentile(bounds, 0.99));
    editor.terminate();
    editor.waitForFinished();
    return 0;
}
