#pragma once

#include <QStringList>

namespace platform {

class InputSource {
public:
    virtual ~InputSource() = default;
    // Language codes of the current keyboard input source ("zh-Hans", "en", ...), most
    // significant first; empty when unknown.
    virtual QStringList languages() = 0;
};

}  // namespace platform
