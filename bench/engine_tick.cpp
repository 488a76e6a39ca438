// One engine tick on the in-memory desktop with an unchanged field and a waiting claude process:
// the steady state while the user reads or thinks. The cost is the engine's own work plus the
// fake desktop's reads.
#include <QApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "Standin.h"
#include "engine/Glimmo.h"
#include "platform/fake/Desktop.h"
#include "rules/AppRules.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    testsupport::TempHome home;
    testsupport::useStandin(home);
    fake::Desktop desk;
    rules::AppRules rules(desk.defaults());
    engine::Glimmo engine(desk.platform(), rules);

    QString text;
    for (int i = 0; i < 20; ++i)
        text += "A paragraph of ordinary length that someone is writing.\n";
    desk.openField("com.tinyspeck.slackmacgap", text + "we was late");
    engine.tick();  // the change, and the waiting process starts
    // Answered from the cache as "no change", so later ticks do the full decision and stop.
    engine.cache.insert(QStringLiteral("we was late"), QStringLiteral("="));
    desk.clock().advance(2);

    std::vector<double> micros;
    for (int round = 0; round < 7; ++round) {
        const int calls = 20000;
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < calls; ++i) engine.tick();
        const std::chrono::duration<double, std::micro> spent =
            std::chrono::steady_clock::now() - start;
        micros.push_back(spent.count() / calls);
    }
    std::sort(micros.begin(), micros.end());
    std::printf(
        "engine tick, unchanged field, cached paragraph: median %.2f us (min %.2f, max %.2f)\n",
        micros[3], micros.front(), micros.back());
    return 0;
}
