#pragma once
// One running Glimmo per session: the first start claims it, a later start asks that one to
// reopen (bring up its windows) and leaves.

#include <functional>

namespace platform {

class SingleInstance {
public:
    enum class Claim {
        First,    // this process is the one; onReopen is called when a later start asks
        Running,  // another process holds it
        Unknown,  // no way to tell (no session bus): run as if first
    };

    virtual ~SingleInstance() = default;

    virtual Claim claim(std::function<void()> onReopen) = 0;
    // Asks the running one to reopen; true when it answered.
    virtual bool reopenRunning() = 0;
    // Asks the running one to quit (a copy that installs itself replaces it); true when it
    // answered.
    virtual bool quitRunning() = 0;
};

}  // namespace platform
