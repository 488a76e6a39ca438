// Warm against cold: one request answered by a process started in advance, and the same request
// when the process is only started at ask time, with a stand-in that needs as long to start as
// the real program (0.8 s).
#include <cstdio>

#include "claude/Exchange.h"
#include "exchange_bench.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"

namespace {

constexpr int rounds = 10;

double once(claude::Exchange& exchange, const bench::StandinHome& home, bool warm) {
    static int started = 0;
    ++started;
    if (warm) {
        exchange.warmUp();
        bench::waitForStandinReady(home.path(), started);  // past the stand-in's start-up
    }
    bool done = false;
    double end = 0;
    const double start = bench::seconds();
    exchange.ask(QStringLiteral("<text>\nwarm or cold\n</text>"), nullptr, [&](const QString&) {
        end = bench::seconds();
        done = true;
    });
    bench::spinUntil([&] { return done || !exchange.requestInFlight(); });
    return done ? end - start : -1;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    bench::StandinHome home("startup 0.8\n");
    platform::MemoryDefaults defaults;
    platform::SystemClock clock;
    claude::Exchange exchange(defaults, clock, nullptr);
    std::vector<double> warm, cold;
    for (int i = 0; i < rounds; ++i) {
        cold.push_back(once(exchange, home, false));
        warm.push_back(once(exchange, home, true));
    }
    const double w = bench::percentile(warm, 0.5), c = bench::percentile(cold, 0.5);
    std::printf("cold (started at ask)   n=%d  p50 %8.1f ms\n", rounds, c * 1e3);
    std::printf("warm (started before)   n=%d  p50 %8.1f ms\n", rounds, w * 1e3);
    std::printf("cold / warm             %.0fx\n", c / w);
    return 0;
}
