#pragma once
// Shared by the exchange benchmarks: a throw-away home pointed at the claude stand-in, and
// percentiles.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <vector>

#include "main/Paths.h"

namespace bench {

class StandinHome {
public:
    explicit StandinHome(const QByteArray& script) {
        qputenv("HOME", dir_.path().toLocal8Bit());
        qunsetenv("XDG_DATA_HOME");
        qunsetenv("XDG_CONFIG_HOME");
        QDir().mkpath(glimmo::supportDir());
        write(glimmo::supportDir() + "/claude-path", GLIMMO_STANDIN_PATH);
        QDir().mkpath(dir_.path() + "/standin");
        write(dir_.path() + "/standin/script", script);
    }

    QString path() const { return dir_.path(); }

private:
    static void write(const QString& path, const QByteArray& content) {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) file.write(content);
    }
    QTemporaryDir dir_;
};

// Waits until the newest stand-in process sits in read(2) on its standard input, so that
// its own start-up is not part of what is measured.
inline void waitForStandinReady(const QString& home, int processes) {
    for (;;) {
        QFile runs(home + "/standin/runs");
        QList<QByteArray> pids;
        if (runs.open(QIODevice::ReadOnly)) pids = runs.readAll().split('\n');
        pids.removeAll(QByteArray());
        if (pids.size() >= processes) {
            QFile syscall("/proc/" + pids.last() + "/syscall");
            // "0 0x0 ..." is read(2) on descriptor 0
            if (syscall.open(QIODevice::ReadOnly) && syscall.readAll().startsWith("0 0x0 ")) return;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    }
}

inline double seconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

// Runs the event loop until done() holds.
template <typename Pred>
void spinUntil(Pred done) {
    while (!done()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
}

inline double percentile(std::vector<double> v, double p) {
    std::sort(v.begin(), v.end());
    return v[std::min(v.size() - 1, size_t(p * double(v.size())))];
}

}  // namespace bench
