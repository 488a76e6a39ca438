// The exchange's own cost: from ask to onDone against a waiting stand-in that answers at once,
// beside the floor of this machine, a line sent to a waiting child that echoes it back.
#include <sys/wait.h>
#include <unistd.h>

#include <QThread>
#include <cstdio>

#include "claude/Exchange.h"
#include "exchange_bench.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"

namespace {

constexpr int rounds = 1000;

// fork and exec cat, then time one line there and back; the child is started before timing,
// as the warm process is.
std::vector<double> pipeFloor() {
    std::vector<double> out;
    const char line[] = "{\"type\":\"user\",\"message\":{\"role\":\"user\",\"content\":\"x\"}}\n";
    for (int i = 0; i < rounds; ++i) {
        int to[2], from[2];
        if (pipe(to) != 0 || pipe(from) != 0) return out;
        const pid_t pid = fork();
        if (pid == 0) {
            dup2(to[0], 0);
            dup2(from[1], 1);
            close(to[0]), close(to[1]), close(from[0]), close(from[1]);
            execl("/bin/cat", "cat", nullptr);
            _exit(127);
        }
        close(to[0]);
        close(from[1]);
        QThread::usleep(2000);  // let cat reach its read
        char buf[256];
        const double start = bench::seconds();
        if (write(to[1], line, sizeof line - 1) < 0) return out;
        size_t got = 0;
        while (got < sizeof line - 1) {
            const ssize_t n = read(from[0], buf + got, sizeof buf - got);
            if (n <= 0) break;
            got += size_t(n);
        }
        out.push_back(bench::seconds() - start);
        close(to[1]);
        close(from[0]);
        waitpid(pid, nullptr, 0);
    }
    return out;
}

std::vector<double> exchangeRounds(claude::Exchange& exchange, const bench::StandinHome& home) {
    std::vector<double> out;
    for (int i = 0; i < rounds; ++i) {
        exchange.warmUp();
        // The waiting process has long finished its start-up when a user asks.
        bench::waitForStandinReady(home.path(), i + 1);
        bool done = false;
        const double start = bench::seconds();
        double end = 0;
        exchange.ask(QStringLiteral("<text>\nbench %1\n</text>").arg(i), nullptr,
                     [&](const QString&) {
                         end = bench::seconds();
                         done = true;
                     });
        bench::spinUntil([&] { return done || !exchange.requestInFlight(); });
        if (done) out.push_back(end - start);
    }
    return out;
}

void report(const char* what, const std::vector<double>& v) {
    std::printf("%-52s n=%zu  p50 %7.3f ms  p99 %7.3f ms\n", what, v.size(),
                bench::percentile(v, 0.50) * 1e3, bench::percentile(v, 0.99) * 1e3);
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const std::vector<double> floor = pipeFloor();
    report("pipe round trip to a waiting cat (floor)", floor);

    platform::MemoryDefaults defaults;
    platform::SystemClock clock;
    {
        bench::StandinHome home("result ok\n");
        claude::Exchange exchange(defaults, clock, nullptr);
        report("ask -> onDone, stand-in writes one result line", exchangeRounds(exchange, home));
    }
    {
        bench::StandinHome home("");  // the default: the full shape of a real answer
        claude::Exchange exchange(defaults, clock, nullptr);
        report("ask -> onDone, stand-in writes a real answer's shape",
               exchangeRounds(exchange, home));
    }
    return 0;
}
