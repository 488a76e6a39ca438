#pragma once
// One kind in the apps window: its header (open or close, the kind's switch or "Always off")
// and, while open, its installed applications and its websites, each with its own switch.
// Every switch reads and writes the rules, and follows them whenever they change.

#include <QWidget>
#include <vector>

#include "rules/AppKind.h"
#include "rules/AppRules.h"
#include "setup/AppIdentity.h"

namespace setup {

class GlimmoSwitch;
class KindHeader;

class KindSection : public QWidget {
    Q_OBJECT

public:
    KindSection(rules::AppRules& rules, const rules::AppKind& kind,
                const std::vector<AppIdentity>& apps, bool open, QWidget* parent = nullptr);

    const rules::AppKind& kind() const { return kind_; }
    bool isOpen() const;
    void setOpen(bool open);
    KindHeader* header() const { return header_; }

private:
    QWidget* buildList(const std::vector<AppIdentity>& apps);
    void refresh();

    rules::AppRules& rules_;
    rules::AppKind kind_;
    KindHeader* header_ = nullptr;
    QWidget* list_ = nullptr;
    std::vector<GlimmoSwitch*> switches_;
};

}  // namespace setup
