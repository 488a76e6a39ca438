#include "platform/linux/wayland/NativeRoute.h"

#include <QCoreApplication>

#include "platform/linux/atspi/AtElement.h"
#include "platform/linux/atspi/Atspi.h"
#include "platform/linux/atspi/AtspiAx.h"
#include "platform/linux/x11/X11Workspace.h"

namespace linuxdesk {

std::optional<platform::RunningApp> NativeRoute::frontmost() {
    if (auto x = x11_.frontmost()) {
        front_.reset();
        return x;
    }
    // GTK 4 reports only focus; GTK 3 also window activation, which comes before any focus.
    if (!ax_.connect() || !ax_.focus().followActivation()) {
        front_.reset();
        return std::nullopt;
    }
    AtRef latest = ax_.focus().latest();
    if (latest && latest.get() == overruled_.get()) latest = standIn_;
    // GTK 4 says nothing when a window opens with its focus already set, and nothing tells that
    // an application quit: at most once a second what was heard last is checked against the
    // active window, and the application found active stands in until the next focus is heard.
    if (searchDue() && (!latest || !hasActiveWindow(at::application(latest)))) {
        if (AtRef active = activeApplication()) {
            overruled_ = ax_.focus().latest();
            standIn_ = active;
            latest = active;
        }
    }
    if (!latest) {
        if (front_) return front_->app;  // the one found by searching, until a focus is heard
        return std::nullopt;
    }
    const QString bus = at::busName(latest);
    if (bus.isEmpty()) {
        front_.reset();
        return std::nullopt;
    }
    if (front_ && front_->bus == bus) return front_->app;
    const auto pid = ax_.processOf(at::application(latest));
    if (!pid || *pid == QCoreApplication::applicationPid()) {
        front_.reset();
        return std::nullopt;
    }
    const QString toolkit = at::toolkit(at::application(latest)).value_or(QString());
    front_ = Front{bus, identity_.resolve(*pid, processNames(*pid)),
                   toolkit == QLatin1String("Gecko") || toolkit == QLatin1String("Chromium")};
    return front_->app;
}

bool NativeRoute::searchDue() {
    if (lastSearch_.isValid() && lastSearch_.elapsed() < 1000) return false;
    lastSearch_.start();
    return true;
}

bool NativeRoute::hasActiveWindow(const AtRef& app) {
    const int windows = std::min(at::childCount(app).value_or(0), 50);
    for (int w = 0; w < windows; ++w) {
        const auto s = at::states(at::child(app, w));
        if (s && s->active) return true;
    }
    return false;
}

AtRef NativeRoute::activeApplication() {
    const qint64 own = QCoreApplication::applicationPid();
    const AtRef desktop = at::desktop();
    const int apps = std::min(at::childCount(desktop).value_or(0), 500);
    for (int i = 0; i < apps; ++i) {
        const AtRef app = at::child(desktop, i);
        if (app && ax_.processOf(app) != own && hasActiveWindow(app)) return app;
    }
    return {};
}

bool NativeRoute::owns(const platform::Element& element) const {
    const auto* e = dynamic_cast<const AtElement*>(element.get());
    return front_ && e && e->bus() == front_->bus;
}

platform::Element NativeRoute::focused() {
    return front_ ? ax_.focusedIn(front_->app.pid) : nullptr;
}

}  // namespace linuxdesk
