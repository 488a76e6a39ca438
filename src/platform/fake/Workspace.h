#pragma once
// The scripted desktop's applications, the frontmost one, and what the program asked the
// desktop to open.

#include <QStringList>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Workspace.h"
#include "platform/fake/App.h"

namespace fake {

class Workspace : public platform::Workspace {
public:
    // Adds a running application (replacing one with the same pid).
    App& add(qint64 pid, const QString& bundleId, const QString& name = {});
    // Quits it: gone from running() and from frontmost.
    void remove(qint64 pid);
    App* app(qint64 pid);
    App* byBundleId(const QString& bundleId);
    const std::vector<std::unique_ptr<App>>& apps() const { return apps_; }
    // The frontmost application; none (std::nullopt) when the desktop itself has focus.
    void setFrontmost(std::optional<qint64> pid) { frontmost_ = pid; }
    App* frontApp();

    void setOwnPid(qint64 pid) { ownPid_ = pid; }
    void setInstalled(const platform::InstalledApp& app) { installed_[app.bundleId] = app; }
    // openUrl/openFile answer this (true by default).
    void setOpenSucceeds(bool succeeds) { openSucceeds_ = succeeds; }

    void setTextEditor(std::optional<QString> id) { textEditor_ = std::move(id); }

    // Records.
    int accessibilitySettingsOpened() const { return accessibilitySettingsOpened_; }
    const QStringList& openedUrls() const { return openedUrls_; }
    // (path, bundle identifier) pairs.
    const std::vector<std::pair<QString, QString>>& openedFiles() const { return openedFiles_; }

    // platform::Workspace
    std::optional<platform::RunningApp> frontmost() override;
    qint64 ownPid() override { return ownPid_; }
    std::vector<platform::RunningApp> running(const QString& bundleId) override;
    bool openUrl(const QString& url) override;
    bool openFile(const QString& path, const QString& bundleId) override;
    std::optional<platform::InstalledApp> installed(const QString& bundleId) override;
    std::optional<QString> textEditor() override { return textEditor_; }
    bool openAccessibilitySettings() override;
    bool loginItemEnabled() override { return loginItem_; }
    bool setLoginItem(bool enabled) override;
    // The installed applications whose pages need the flag, by identifier and name.
    void setFlaggedApps(std::map<QString, QString> apps) { flaggedApps_ = std::move(apps); }
    std::vector<QString> prepareLaunchers(
        const std::function<bool(const QString& bundleId)>& wanted) override;
    std::vector<QString> preparedLaunchers() override { return prepared_; }

private:
    std::map<QString, QString> flaggedApps_;
    std::vector<QString> prepared_;
    std::vector<std::unique_ptr<App>> apps_;
    std::optional<qint64> frontmost_;
    qint64 ownPid_ = 4242;
    std::map<QString, platform::InstalledApp> installed_;
    QStringList openedUrls_;
    std::vector<std::pair<QString, QString>> openedFiles_;
    bool openSucceeds_ = true;
    bool loginItem_ = false;
    std::optional<QString> textEditor_ = QStringLiteral("com.apple.TextEdit");
    int accessibilitySettingsOpened_ = 0;
};

}  // namespace fake
