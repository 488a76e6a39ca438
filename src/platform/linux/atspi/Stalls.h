#pragma once
// Applications that stopped answering. Every call into another application runs on Glimmo's one
// thread, which the tray, the bubble and the key grab wait for; a stopped application would hold
// them for a full timeout on every call of every poll. So an application whose call ran into the
// timeout is not called again until a short probe, at most one a second, finds it answering:
// a hung application costs one timeout, then a brief probe now and then, and is served again
// as soon as it answers. Reading on another thread instead would leave every answer racing the
// user's typing, and libatspi is not made for more than one thread.

#include <QHash>
#include <QString>

namespace linuxdesk::at {

class Stalls {
public:
    enum class Call { Normal, Probe, Skip };
    static constexpr qint64 kProbeEveryMs = 1000;

    // What to do with a call into the application on bus at nowMs.
    Call before(const QString& bus, qint64 nowMs);
    // The call's outcome: whether it ran into its timeout. Says once when an application
    // stops answering and once when it answers again.
    void after(const QString& bus, Call call, bool timedOut, qint64 nowMs);

    // The one for every call of the process.
    static Stalls& shared();

private:
    QHash<QString, qint64> lastProbe_;  // stalled applications, by bus name
};

}  // namespace linuxdesk::at
