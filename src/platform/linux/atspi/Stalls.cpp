#include "platform/linux/atspi/Stalls.h"

#include "main/Log.h"

namespace linuxdesk::at {

bool Stalls::skip(const QString& bus, qint64 nowMs) {
    const auto it = lastPing_.find(bus);
    if (it == lastPing_.end()) return false;
    if (nowMs - *it >= kPingEveryMs && ping_) {
        *it = nowMs;
        ping_(bus);
    }
    return true;
}

void Stalls::stalled(const QString& bus, qint64 nowMs) {
    if (lastPing_.contains(bus)) return;
    lastPing_.insert(bus, nowMs);
    glimmo::log(QStringLiteral("the application on %1 stopped answering; it is left alone until "
                               "it answers again")
                    .arg(bus));
}

void Stalls::answered(const QString& bus) {
    if (lastPing_.remove(bus))
        glimmo::log(QStringLiteral("the application on %1 answers again").arg(bus));
}

Stalls& Stalls::shared() {
    static Stalls stalls;
    return stalls;
}

}  // namespace linuxdesk::at
