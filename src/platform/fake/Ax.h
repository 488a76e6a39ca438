#pragma once
// The accessibility interface of the scripted desktop. Reads go to the nodes (a node's read
// cost moves the clock); every write and every parameterised read is recorded.

#include <QString>
#include <vector>

#include "platform/Ax.h"
#include "platform/fake/Clock.h"
#include "platform/fake/Node.h"
#include "platform/fake/Workspace.h"

namespace fake {

class Ax : public platform::Ax {
public:
    struct Write {
        NodePtr node;  // null when the handle named no node of this desktop
        QString name;
        platform::Value value;
        bool accepted = false;
    };
    struct Query {
        NodePtr node;
        QString name;
        platform::Value parameter;
    };

    Ax(Workspace& workspace, Clock& clock) : workspace_(workspace), clock_(clock) {}

    void setTrusted(bool trusted) { trusted_ = trusted; }
    void setRestartNeeded(std::vector<QString> names) { restartNeeded_ = std::move(names); }
    int trustRequests() const { return trustRequests_; }

    const std::vector<Write>& writes() const { return writes_; }
    // The writes of one attribute, in order.
    std::vector<Write> writes(const QString& name) const;
    const std::vector<Query>& queries() const { return queries_; }
    // Processes whose application element got "AXManualAccessibility" written, in order (one
    // entry a write, so priming twice shows twice).
    std::vector<qint64> primed() const;
    // Attribute reads so far (plain and parameterised), to count a tick's calls.
    qint64 reads() const { return reads_; }
    void clearRecords();

    // platform::Ax
    bool trusted() override { return trusted_; }
    void requestTrust() override { ++trustRequests_; }
    platform::Element application(qint64 pid) override;
    std::optional<platform::Value> attribute(const platform::Element& element,
                                             const QString& name) override;
    std::optional<platform::Value> parameterized(const platform::Element& element,
                                                 const QString& name,
                                                 const platform::Value& parameter) override;
    bool setAttribute(const platform::Element& element, const QString& name,
                      const platform::Value& value) override;
    bool same(const platform::Element& a, const platform::Element& b) override;
    std::vector<QString> restartNeeded() override { return restartNeeded_; }

private:
    Workspace& workspace_;
    Clock& clock_;
    bool trusted_ = true;
    int trustRequests_ = 0;
    qint64 reads_ = 0;
    std::vector<Write> writes_;
    std::vector<Query> queries_;
    std::vector<QString> restartNeeded_;
};

}  // namespace fake
