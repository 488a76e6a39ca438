#pragma once
// A running application of the scripted desktop: its identity and its application element
// (role "AXApplication"), whose children are its windows.
//
//     auto& app = workspace.add(501, "com.tinyspeck.slackmacgap", "Slack");
//     auto window = app.addWindow("general");
//     auto box = window->add(fake::TextField::create("Hello"));
//     app.focus(box);   // "AXFocusedUIElement" = box, "AXFocusedWindow" = window

#include <memory>

#include "platform/Workspace.h"
#include "platform/fake/Node.h"
#include "platform/fake/TextField.h"

namespace fake {

class App {
public:
    explicit App(platform::RunningApp info);

    const platform::RunningApp& info() const { return info_; }
    qint64 pid() const { return info_.pid; }
    const NodePtr& element() const { return element_; }

    // A new window (role "AXWindow", "AXTitle" title) under the application element.
    NodePtr addWindow(const QString& title = {});
    // Stores "AXFocusedUIElement" and, from the nearest "AXWindow" at or above node,
    // "AXFocusedWindow" on the application element. A null node clears both.
    void focus(const NodePtr& node);
    NodePtr focused() const;
    // The focused element when it is a text box.
    std::shared_ptr<TextField> focusedField() const;


private:
    platform::RunningApp info_;
    NodePtr element_;
};

}  // namespace fake
