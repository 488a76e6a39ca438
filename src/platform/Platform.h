#pragma once
// Everything the engine and the other subsystems need of the desktop, handed over at
// construction. The real desktop lives in platform/linux, the scripted one in platform/fake.

#include "platform/Ax.h"
#include "platform/Clipboard.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"
#include "platform/InputSource.h"
#include "platform/Keyboard.h"
#include "platform/Screens.h"
#include "platform/Workspace.h"

namespace platform {

struct Platform {
    Ax& ax;
    Workspace& workspace;
    Keyboard& keyboard;
    KeyTap& keyTap;
    Clipboard& clipboard;
    Screens& screens;
    InputSource& inputSource;
    Defaults& defaults;
    Clock& clock;
};

}  // namespace platform
