#pragma once

#include <vector>

#include "platform/Screens.h"

namespace fake {

// One 1440 x 900 screen with a 25-point panel at the top unless set otherwise.
class Screens : public platform::Screens {
public:
    Screens() : screens_{{{0, 0, 1440, 900}, {0, 25, 1440, 875}}} {}
    void setScreens(std::vector<platform::Screen> screens) { screens_ = std::move(screens); }

    std::vector<platform::Screen> screens() override { return screens_; }
    std::optional<platform::Screen> main() override {
        if (screens_.empty()) return std::nullopt;
        return screens_.front();
    }

private:
    std::vector<platform::Screen> screens_;
};

}  // namespace fake
