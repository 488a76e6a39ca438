// From a streamed piece leaving the claude process to the bubble showing it: the child records
// when it writes each delta; this side spins the event loop and notes when the bubble's text
// changes. Both use the system-wide monotonic clock.
#include <time.h>

#include <QApplication>
#include <QFile>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "TempHome.h"
#include "engine/Glimmo.h"
#include "main/Paths.h"
#include "platform/fake/Desktop.h"
#include "rules/AppRules.h"

static double monotonic() {
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return double(ts.tv_sec) + double(ts.tv_nsec) / 1e9;
}

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    testsupport::TempHome home;
    home.write(glimmo::supportDir().mid(home.path().size() + 1) + "/claude-path", DELTA_CHILD);
    fake::Desktop desk;
    rules::AppRules rules(desk.defaults());
    engine::Glimmo engine(desk.platform(), rules);

    desk.openField("com.apple.TextEdit", "we was late to the meeting again.");
    engine.tick();
    desk.clock().advance(0.5);
    engine.tick();  // asks

    std::vector<double> shownAt;
    QString last;
    const double deadline = monotonic() + 10;
    while (monotonic() < deadline && !engine.shown) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        const QString now = engine.bubble->shown().text;
        // The final suggestion follows the result line, not a delta: not counted.
        if (now != last && !engine.shown) {
            shownAt.push_back(monotonic());
            last = now;
        }
    }
    QFile file(home.path() + "/delta-times");
    file.open(QIODevice::ReadOnly);
    std::vector<double> writtenAt;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (!line.isEmpty()) writtenAt.push_back(line.toDouble());

    // Each bubble change shows the newest piece written before it.
    std::vector<double> lagMs;
    for (double seen : shownAt) {
        double newest = -1;
        for (double w : writtenAt)
            if (w <= seen) newest = w;
        if (newest > 0) lagMs.push_back((seen - newest) * 1000);
    }
    if (lagMs.empty()) {
        std::printf("no streamed piece reached the bubble\n");
        return 1;
    }
    // The first show also pays for the panel's first layout and fonts; report it apart.
    const double first = lagMs.front();
    std::vector<double> rest(lagMs.begin() + 1, lagMs.end());
    std::sort(rest.begin(), rest.end());
    std::printf(
        "delta written -> bubble updated: first %.2f ms; next %zu: p50 %.2f ms, p99 %.2f ms, max "
        "%.2f ms\n",
        first, rest.size(), rest[rest.size() / 2], rest[rest.size() * 99 / 100], rest.back());
    return 0;
}
