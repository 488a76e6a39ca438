#include "platform/fake/Ax.h"

namespace fake {

namespace {

// A real desktop hands out a new reference on every read; so does this one, which catches
// code that compares handles by pointer.
platform::Value freshHandles(platform::Value value) {
    if (auto* element = std::get_if<platform::Element>(&value)) {
        if (auto node = Node::from(*element)) *element = node->handle();
    } else if (auto* list = std::get_if<platform::ElementList>(&value)) {
        for (auto& item : *list) {
            if (auto node = Node::from(item)) item = node->handle();
        }
    }
    return value;
}

}  // namespace

std::vector<Ax::Write> Ax::writes(const QString& name) const {
    std::vector<Write> out;
    for (const auto& write : writes_) {
        if (write.name == name) out.push_back(write);
    }
    return out;
}

std::vector<qint64> Ax::primed() const {
    std::vector<qint64> pids;
    for (const auto& write : writes_) {
        if (write.name != QLatin1String("AXManualAccessibility") || !write.node) continue;
        for (const auto& app : workspace_.apps()) {
            if (app->element() == write.node) pids.push_back(app->pid());
        }
    }
    return pids;
}

void Ax::clearRecords() {
    writes_.clear();
    queries_.clear();
    reads_ = 0;
}

platform::Element Ax::application(qint64 pid) {
    auto* app = workspace_.app(pid);
    if (!app || !trusted_) return nullptr;
    return app->element()->handle();
}

std::optional<platform::Value> Ax::attribute(const platform::Element& element,
                                             const QString& name) {
    ++reads_;
    auto node = Node::from(element);
    if (!node || !trusted_) return std::nullopt;
    clock_.advance(node->readCost());
    auto value = node->read(name);
    if (!value) return std::nullopt;
    return freshHandles(std::move(*value));
}

std::optional<platform::Value> Ax::parameterized(const platform::Element& element,
                                                 const QString& name,
                                                 const platform::Value& parameter) {
    ++reads_;
    auto node = Node::from(element);
    queries_.push_back({node, name, parameter});
    if (!node || !trusted_) return std::nullopt;
    clock_.advance(node->readCost());
    auto value = node->readParameterized(name, parameter);
    if (!value) return std::nullopt;
    return freshHandles(std::move(*value));
}

bool Ax::setAttribute(const platform::Element& element, const QString& name,
                      const platform::Value& value) {
    auto node = Node::from(element);
    const bool accepted = node && trusted_ && node->write(name, value);
    writes_.push_back({node, name, value, accepted});
    return accepted;
}

bool Ax::same(const platform::Element& a, const platform::Element& b) {
    return Node::same(a, b);
}

}  // namespace fake
