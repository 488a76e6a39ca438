#include "platform/fake/Workspace.h"

namespace fake {

App& Workspace::add(qint64 pid, const QString& bundleId, const QString& name) {
    remove(pid);
    apps_.push_back(std::make_unique<App>(platform::RunningApp{pid, bundleId, name}));
    return *apps_.back();
}

void Workspace::remove(qint64 pid) {
    std::erase_if(apps_, [pid](const auto& app) { return app->pid() == pid; });
    if (frontmost_ == pid) frontmost_.reset();
}

App* Workspace::app(qint64 pid) {
    for (auto& app : apps_) {
        if (app->pid() == pid) return app.get();
    }
    return nullptr;
}

App* Workspace::byBundleId(const QString& bundleId) {
    for (auto& app : apps_) {
        if (app->info().bundleId == bundleId) return app.get();
    }
    return nullptr;
}

App* Workspace::frontApp() {
    return frontmost_ ? app(*frontmost_) : nullptr;
}

std::optional<platform::RunningApp> Workspace::frontmost() {
    if (auto* front = frontApp()) return front->info();
    return std::nullopt;
}

std::vector<platform::RunningApp> Workspace::running(const QString& bundleId) {
    std::vector<platform::RunningApp> out;
    for (auto& app : apps_) {
        if (app->info().bundleId == bundleId) out.push_back(app->info());
    }
    return out;
}

bool Workspace::openUrl(const QString& url) {
    openedUrls_.append(url);
    return openSucceeds_;
}

bool Workspace::openFile(const QString& path, const QString& bundleId) {
    openedFiles_.emplace_back(path, bundleId);
    return openSucceeds_;
}

bool Workspace::openAccessibilitySettings() {
    ++accessibilitySettingsOpened_;
    return openSucceeds_;
}

std::optional<platform::InstalledApp> Workspace::installed(const QString& bundleId) {
    auto it = installed_.find(bundleId);
    if (it == installed_.end()) return std::nullopt;
    return it->second;
}

bool Workspace::setLoginItem(bool enabled) {
    loginItem_ = enabled;
    return true;
}

std::vector<QString> Workspace::prepareLaunchers(
    const std::function<bool(const QString& bundleId)>& wanted) {
    prepared_.clear();
    for (const auto& [app, name] : flaggedApps_)
        if (wanted(app)) prepared_.push_back(name);
    return prepared_;
}

}  // namespace fake
