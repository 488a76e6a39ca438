#include "platform/fake/App.h"

namespace fake {

App::App(platform::RunningApp info)
    : info_(std::move(info)), element_(Node::create(QStringLiteral("AXApplication"))) {
    if (!info_.name.isEmpty()) element_->set(QStringLiteral("AXTitle"), info_.name);
    // Applications built on Chromium and Electron accept these switches.
    element_->setSettable(QStringLiteral("AXManualAccessibility"));
    element_->setSettable(QStringLiteral("AXEnhancedUserInterface"));
}

NodePtr App::addWindow(const QString& title) {
    auto window = element_->add(QStringLiteral("AXWindow"));
    if (!title.isEmpty()) window->set(QStringLiteral("AXTitle"), title);
    return window;
}

void App::focus(const NodePtr& node) {
    const QString focusedName = QStringLiteral("AXFocusedUIElement");
    const QString windowName = QStringLiteral("AXFocusedWindow");
    element_->unset(focusedName).unset(windowName);
    if (!node) return;
    element_->set(focusedName, node->handle());
    for (auto up = node; up; up = up->parent()) {
        if (up->role() == QLatin1String("AXWindow")) {
            element_->set(windowName, up->handle());
            break;
        }
    }
}

NodePtr App::focused() const {
    auto value = element_->stored(QStringLiteral("AXFocusedUIElement"));
    if (!value || !std::holds_alternative<platform::Element>(*value)) return nullptr;
    return Node::from(std::get<platform::Element>(*value));
}

std::shared_ptr<TextField> App::focusedField() const {
    return std::dynamic_pointer_cast<TextField>(focused());
}

}  // namespace fake
