#include "platform/Clock.h"

#include <chrono>

namespace platform {

double SystemClock::now() const {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

}  // namespace platform
