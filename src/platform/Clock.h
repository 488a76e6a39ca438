#pragma once

namespace platform {

// Seconds on a monotonic scale; tests move a fake one by hand.
class Clock {
public:
    virtual ~Clock() = default;
    virtual double now() const = 0;
};

class SystemClock : public Clock {
public:
    double now() const override;
};

}  // namespace platform
