#pragma once
// The apps window, "Where Glimmo helps": the seven kinds with their installed applications and
// websites, the switch for every other application, and the applications and websites of no
// kind that the user switched from the tray menu. It holds no setting: every switch reads and
// writes the rules, and every change of the rules, from here or from the menu, shows at once.

#include <QSet>
#include <QStringList>
#include <QWidget>
#include <map>
#include <vector>

#include "platform/Workspace.h"
#include "rules/AppRules.h"
#include "setup/AppIdentity.h"

class QVBoxLayout;

namespace setup {

class GlimmoSwitch;
class KindSection;

class AppsView : public QWidget {
    Q_OBJECT

public:
    // The kinds' installed applications are looked up once, here; startOpen names the kinds
    // whose sections start open.
    AppsView(rules::AppRules& rules, platform::Workspace& workspace,
             const QSet<QString>& startOpen = {}, QWidget* parent = nullptr);

    static constexpr int width = 520;
    static constexpr int height = 600;

    // The window opens at 520 × 600; the list scrolls within.
    QSize sizeHint() const override { return {width, height}; }

    const std::vector<KindSection*>& sections() const { return sections_; }
    // The applications of no kind with a switch of their own, and the websites of no kind.
    QStringList otherApps() const;
    QStringList otherSites() const;

private:
    QWidget* buildOthers();
    void refresh();

    rules::AppRules& rules_;
    platform::Workspace& workspace_;
    std::map<QString, std::vector<AppIdentity>> lists_;
    std::vector<KindSection*> sections_;
    GlimmoSwitch* everyOther_ = nullptr;
    QVBoxLayout* othersSlot_ = nullptr;
    QWidget* others_ = nullptr;
    std::pair<QStringList, QStringList> othersShown_;
};

}  // namespace setup
