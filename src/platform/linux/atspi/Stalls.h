#pragma once
// Applications that stopped answering. Every call into another application runs on Glimmo's one
// thread, which the tray, the bubble and the key grab wait for; a stopped application would hold
// them for a full timeout on every call of every poll. So an application whose call ran into the
// timeout is not called at all until it answers a ping, sent at most once a second without
// waiting for it: a hung application costs one timeout, and is served again as soon as it
// answers. Reading on another thread instead would leave every answer racing the user's typing,
// and libatspi is not made for more than one thread.

#include <QHash>
#include <QString>
#include <functional>

namespace linuxdesk::at {

class Stalls {
public:
    static constexpr qint64 kPingEveryMs = 1000;
    // Sends a ping to the application on a bus, and calls answered() when it replies.
    using Ping = std::function<void(const QString& bus)>;

    // Whether calls into the application on bus are left out now; pings it when one is due.
    bool skip(const QString& bus, qint64 nowMs);
    // A call ran into its timeout. Says once that the application stopped answering.
    void stalled(const QString& bus, qint64 nowMs);
    // The application replied to a ping: it is called again. Says so once.
    void answered(const QString& bus);
    void setPing(Ping ping) { ping_ = std::move(ping); }

    // The one for every call of the process.
    static Stalls& shared();

private:
    QHash<QString, qint64> lastPing_;  // stalled applications, by bus name
    Ping ping_;
};

}  // namespace linuxdesk::at
