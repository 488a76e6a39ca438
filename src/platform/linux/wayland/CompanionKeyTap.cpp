#include "platform/linux/wayland/CompanionKeyTap.h"

#include <optional>

#include "platform/Keys.h"
#include "platform/linux/wayland/Companion.h"

namespace linuxdesk {

namespace {

std::optional<int> codeOf(const QString& key) {
    if (key == QLatin1String("Tab")) return platform::key::Tab;
    if (key == QLatin1String("Escape")) return platform::key::Esc;
    if (key == QLatin1String("Up")) return platform::key::Up;
    if (key == QLatin1String("Down")) return platform::key::Down;
    return std::nullopt;
}

}  // namespace

CompanionKeyTap::CompanionKeyTap(Companion& companion) : companion_(companion) {
    connect(&companion_, &Companion::keyPressed, this, &CompanionKeyTap::pressed);
}

bool CompanionKeyTap::install(Handler handler) {
    handler_ = std::move(handler);
    return true;
}

void CompanionKeyTap::setWanted(bool wanted) {
    companion_.wantKeys(wanted);
}

void CompanionKeyTap::pressed(const QString& key) {
    const auto code = codeOf(key);
    if (!code || !handler_ || !handler_(*code, 0)) companion_.passKey(key);
}

}  // namespace linuxdesk
