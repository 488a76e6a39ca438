#include "platform/fake/Node.h"

namespace fake {

namespace {

// The handle type of the scripted desktop: weak, so a removed element reads as gone.
class Handle : public platform::ElementHandle {
public:
    explicit Handle(std::weak_ptr<Node> node) : node(std::move(node)) {}
    std::weak_ptr<Node> node;
};

}  // namespace

Node::Node(const QString& role) {
    if (!role.isEmpty()) attributes_.insert_or_assign(QStringLiteral("AXRole"), role);
}

NodePtr Node::create(const QString& role) {
    return std::make_shared<Node>(role);
}

Node& Node::set(const QString& name, const platform::Value& value) {
    attributes_.insert_or_assign(name, value);
    return *this;
}

Node& Node::unset(const QString& name) {
    attributes_.erase(name);
    return *this;
}

std::optional<platform::Value> Node::stored(const QString& name) const {
    auto it = attributes_.find(name);
    if (it == attributes_.end()) return std::nullopt;
    return it->second;
}

Node& Node::setSettable(const QString& name, bool settable) {
    if (settable) {
        settable_.insert(name);
    } else {
        settable_.erase(name);
    }
    return *this;
}

bool Node::settable(const QString& name) const {
    return settable_.count(name) > 0;
}

Node& Node::fail(const QString& name, bool failing) {
    if (failing) {
        failing_.insert(name);
    } else {
        failing_.erase(name);
    }
    return *this;
}

bool Node::failing(const QString& name) const {
    return failing_.count(name) > 0;
}

Node& Node::setReadCost(double seconds) {
    readCost_ = seconds;
    return *this;
}

QString Node::role() const {
    auto value = stored(QStringLiteral("AXRole"));
    if (value && std::holds_alternative<QString>(*value)) return std::get<QString>(*value);
    return {};
}

void Node::adopt(const NodePtr& child) {
    if (auto old = child->parent()) {
        auto& siblings = old->children_;
        std::erase(siblings, child);
    }
    child->parent_ = weak_from_this();
    children_.push_back(child);
}

NodePtr Node::add(const QString& role) {
    return add(create(role));
}

NodePtr Node::addText(const QString& value) {
    auto text = add(QStringLiteral("AXStaticText"));
    text->set(QStringLiteral("AXValue"), value);
    return text;
}

void Node::clearChildren() {
    for (auto& child : children_) child->parent_.reset();
    children_.clear();
}

std::optional<platform::Value> Node::read(const QString& name) {
    if (failing(name)) return std::nullopt;
    if (auto value = stored(name)) return value;
    if (name == QLatin1String("AXParent")) {
        if (auto up = parent()) return up->handle();
        return std::nullopt;
    }
    if (name == QLatin1String("AXChildren")) {
        platform::ElementList list;
        list.reserve(children_.size());
        for (auto& child : children_) list.push_back(child->handle());
        return list;
    }
    return std::nullopt;
}

std::optional<platform::Value> Node::readParameterized(const QString& name,
                                                       const platform::Value& parameter) {
    Q_UNUSED(parameter);
    Q_UNUSED(name);
    return std::nullopt;
}

bool Node::write(const QString& name, const platform::Value& value) {
    if (!settable(name)) return false;
    attributes_.insert_or_assign(name, value);
    return true;
}

platform::Element Node::handle() {
    return std::make_shared<Handle>(weak_from_this());
}

NodePtr Node::from(const platform::Element& element) {
    auto handle = std::dynamic_pointer_cast<Handle>(element);
    return handle ? handle->node.lock() : nullptr;
}

bool Node::same(const platform::Element& a, const platform::Element& b) {
    if (!a || !b) return false;
    auto ha = std::dynamic_pointer_cast<Handle>(a);
    auto hb = std::dynamic_pointer_cast<Handle>(b);
    if (!ha || !hb) return a == b;
    return !ha->node.owner_before(hb->node) && !hb->node.owner_before(ha->node);
}

}  // namespace fake
