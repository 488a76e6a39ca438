#include "platform/fake/Desktop.h"

namespace fake {

Desktop::Desktop()
    : platform_{ax_,      workspace_,   keyboard_, keyTap_, clipboard_,
                screens_, inputSource_, defaults_, clock_} {}

App& Desktop::addApp(const QString& bundleId, const QString& name, qint64 pid) {
    if (pid == 0) {
        while (workspace_.app(nextPid_)) ++nextPid_;
        pid = nextPid_++;
    }
    return workspace_.add(pid, bundleId, name);
}

std::shared_ptr<TextField> Desktop::openField(const QString& bundleId, const QString& text,
                                              const QString& role) {
    App* app = workspace_.byBundleId(bundleId);
    if (!app) app = &addApp(bundleId);
    auto field = app->addWindow()->add(TextField::create(text, role));
    app->focus(field);
    workspace_.setFrontmost(app->pid());
    return field;
}

std::shared_ptr<TextField> Desktop::focusedField() {
    auto* app = workspace_.frontApp();
    return app ? app->focusedField() : nullptr;
}

}  // namespace fake
