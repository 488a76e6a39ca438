#pragma once
// The page behind a focused element in a browser, and switching applications' trees on.

#include <QString>
#include <optional>
#include <set>

#include "platform/Ax.h"
#include "platform/Workspace.h"

namespace ax {

// The nearest "AXWebArea" at or above element, looking at no more than 60 elements.
std::optional<platform::Element> webArea(platform::Ax& ax, const platform::Element& element);
std::optional<QString> webAreaURL(platform::Ax& ax, const platform::Element& element);
std::optional<QString> pageHost(platform::Ax& ax, const platform::Element& element);
// The host of a page's address as the address writes it; absent when it has none.
std::optional<QString> hostOf(const QString& address);

// Once per process: "AXManualAccessibility", and for Chromium browsers also
// "AXEnhancedUserInterface". primed records the processes already done.
void prime(platform::Ax& ax, std::set<qint64>& primed, const platform::RunningApp& app);

}  // namespace ax
