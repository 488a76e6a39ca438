#pragma once
// One element of the scripted desktop's accessibility trees.
//
// A node holds arbitrary attributes (platform::Value) and its place in a tree. "AXParent" and
// "AXChildren" come from the tree; any stored attribute of the same name wins, so a test can
// make a parent read as a string, for example. Handles given to the code under test are fresh
// objects on every read, as on a real desktop: compare them with Ax::same.
//
//     auto window = fake::Node::create("AXWindow");
//     window->add("AXStaticText")->set("AXValue", QStringLiteral("Hi"));
//     auto group = window->add("AXGroup");
//     group->fail("AXChildren");           // reads of AXChildren now fail
//     group->setReadCost(0.2);             // each read moves the fake clock by 0.2 s

#include <QString>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "platform/Ax.h"

namespace fake {

class Node;
using NodePtr = std::shared_ptr<Node>;

class Node : public std::enable_shared_from_this<Node> {
public:
    // Use create (or a subclass's create): nodes must be owned by a shared_ptr.
    explicit Node(const QString& role = {});
    virtual ~Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    static NodePtr create(const QString& role = {});

    // Stored attributes, as the test sets them (not recorded as writes).
    Node& set(const QString& name, const platform::Value& value);
    Node& unset(const QString& name);
    std::optional<platform::Value> stored(const QString& name) const;
    // Attributes the code under test may write (stored as written). Others refuse writes.
    Node& setSettable(const QString& name, bool settable = true);
    bool settable(const QString& name) const;
    // Reads of this attribute fail (absent), whatever the node holds.
    Node& fail(const QString& name, bool failing = true);
    bool failing(const QString& name) const;
    // Seconds each read of this node costs on the desktop's clock: an application that hangs.
    Node& setReadCost(double seconds);
    double readCost() const { return readCost_; }

    QString role() const;

    // The tree. add returns the child so calls can be chained.
    template <class T>
    std::shared_ptr<T> add(std::shared_ptr<T> child) {
        adopt(child);
        return child;
    }
    NodePtr add(const QString& role);
    // A static text child holding value.
    NodePtr addText(const QString& value);
    void clearChildren();
    NodePtr parent() const { return parent_.lock(); }
    const std::vector<NodePtr>& children() const { return children_; }

    // What another process reads and writes. Subclasses add live attributes.
    virtual std::optional<platform::Value> read(const QString& name);
    virtual std::optional<platform::Value> readParameterized(const QString& name,
                                                             const platform::Value& parameter);
    // True when accepted.
    virtual bool write(const QString& name, const platform::Value& value);

    // A new handle naming this node.
    platform::Element handle();
    // The node a handle names; null for a null, foreign or dangling handle.
    static NodePtr from(const platform::Element& element);
    // The same node through two handles (also for handles whose node is gone).
    static bool same(const platform::Element& a, const platform::Element& b);

private:
    void adopt(const NodePtr& child);

    std::map<QString, platform::Value> attributes_;
    std::set<QString> settable_;
    std::set<QString> failing_;
    std::weak_ptr<Node> parent_;
    std::vector<NodePtr> children_;
    double readCost_ = 0;
};

}  // namespace fake
