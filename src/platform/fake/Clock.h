#pragma once

#include "platform/Clock.h"

namespace fake {

// A clock that moves only when told to. Starts at 1000 seconds so that "long ago" (0) is
// distinguishable from "now".
class Clock : public platform::Clock {
public:
    double now() const override { return now_; }
    void set(double seconds) { now_ = seconds; }
    void advance(double seconds) { now_ += seconds; }

private:
    double now_ = 1000.0;
};

}  // namespace fake
