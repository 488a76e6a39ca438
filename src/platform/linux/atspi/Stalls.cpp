#include "platform/linux/atspi/Stalls.h"

#include "main/Log.h"

namespace linuxdesk::at {

Stalls::Call Stalls::before(const QString& bus, qint64 nowMs) {
    const auto it = lastProbe_.find(bus);
    if (it == lastProbe_.end()) return Call::Normal;
    if (nowMs - *it < kProbeEveryMs) return Call::Skip;
    *it = nowMs;
    return Call::Probe;
}

void Stalls::after(const QString& bus, Call call, bool timedOut, qint64 nowMs) {
    if (call == Call::Skip) return;
    if (timedOut && call == Call::Normal) {
        lastProbe_.insert(bus, nowMs);
        glimmo::log(QStringLiteral("the application on %1 stopped answering; it is left alone "
                                   "until it answers again")
                        .arg(bus));
    } else if (!timedOut && call == Call::Probe) {
        lastProbe_.remove(bus);
        glimmo::log(QStringLiteral("the application on %1 answers again").arg(bus));
    }
}

Stalls& Stalls::shared() {
    static Stalls stalls;
    return stalls;
}

}  // namespace linuxdesk::at
