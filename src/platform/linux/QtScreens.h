#pragma once
// platform::Screens from Qt's screen list: X11 root coordinates, the primary screen first.

#include "platform/Screens.h"

namespace linuxdesk {

class QtScreens : public platform::Screens {
public:
    std::vector<platform::Screen> screens() override;
    std::optional<platform::Screen> main() override;
};

}  // namespace linuxdesk
