#include "setup/AppsView.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "overlay/Style.h"
#include "rules/Catalogue.h"
#include "setup/InstalledIcon.h"
#include "setup/AppRow.h"
#include "setup/GlimmoSwitch.h"
#include "setup/KindHeader.h"
#include "setup/KindSection.h"
#include "setup/SecondaryLabel.h"

namespace setup {

namespace {

constexpr int padding = 28;
constexpr int windowTitleSize = 22;
constexpr int footerSize = 12;
constexpr int otherTitleSize = 14;

QFrame* divider(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFixedHeight(1);
    line->setAutoFillBackground(true);
    QPalette palette = line->palette();
    palette.setColor(QPalette::Window, overlay::style::border(palette));
    line->setPalette(palette);
    return line;
}

// A slim bar with a rounded thumb, as scroll indicators look on a current desktop.
void styleScrollBar(QScrollBar& bar) {
    const QColor thumb = overlay::style::secondary(bar.palette());
    bar.setStyleSheet(
        QStringLiteral("QScrollBar:vertical { background: transparent; width: 8px; margin: 0; }"
                       "QScrollBar::handle:vertical { background: rgba(%1, %2, %3, 90);"
                       " border-radius: 3px; min-height: 24px; margin: 1px; }"
                       "QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical"
                       " { height: 0; }"
                       "QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical"
                       " { background: none; }")
            .arg(thumb.red())
            .arg(thumb.green())
            .arg(thumb.blue()));
}

QStringList sortedKeys(const platform::BoolMap& map,
                       const std::function<bool(const QString&)>& keep) {
    QStringList keys;
    for (const auto& [key, on] : map)
        if (keep(key)) keys << key;
    std::sort(keys.begin(), keys.end());
    return keys;
}

}  // namespace

AppsView::AppsView(rules::AppRules& rules, platform::Workspace& workspace,
                   const QSet<QString>& startOpen, QWidget* parent)
    : QWidget(parent), rules_(rules), workspace_(workspace) {
    setWindowTitle(QStringLiteral("Where Glimmo helps"));
    resize(width, height);
    for (const rules::AppKind& kind : rules::kinds())
        lists_[kind.id] = installedApps(workspace_, kindApps(kind));

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(0);

    auto* title = new QLabel(QStringLiteral("Where Glimmo helps"), this);
    QFont titleFont = overlay::style::systemFont(windowTitleSize);
    titleFont.setWeight(QFont::DemiBold);
    title->setFont(titleFont);
    column->addWidget(title);
    column->addSpacing(2);
    auto* subtitle = secondaryLabel(
        QStringLiteral(
            "Switch a whole kind of app, or open it to choose apps and websites one by one."),
        0, this);
    subtitle->setWordWrap(true);
    column->addWidget(subtitle);
    column->addSpacing(14);
    column->addWidget(divider(this));

    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    styleScrollBar(*scroll->verticalScrollBar());
    auto* content = new QWidget(scroll);
    auto* list = new QVBoxLayout(content);
    // Room between the rows' switches and the scroll bar.
    list->setContentsMargins(0, 0, 8, 0);
    list->setSpacing(0);
    for (const rules::AppKind& kind : rules::kinds()) {
        auto* section =
            new KindSection(rules_, kind, lists_[kind.id], startOpen.contains(kind.id), content);
        sections_.push_back(section);
        list->addWidget(section);
        list->addWidget(divider(content));
    }

    list->addSpacing(10);
    auto* other =
        new AppRow(QStringLiteral("square.grid.2x2"), QStringLiteral("Every other app"), content);
    other->layout()->setSpacing(12);
    other->layout()->setContentsMargins(KindHeader::symbolIndent, 0, 0, 0);
    QFont otherFont = overlay::style::systemFont(otherTitleSize);
    otherFont.setWeight(QFont::Medium);
    other->label()->setFont(otherFont);
    everyOther_ = other->addSwitch(
        false, [this] { return rules_.otherOn(); }, [this](bool on) { rules_.setOtherOn(on); });
    list->addWidget(other);
    list->addSpacing(10);
    othersSlot_ = new QVBoxLayout;
    othersSlot_->setContentsMargins(0, 0, 0, 0);
    list->addLayout(othersSlot_);
    list->addStretch(1);
    scroll->setWidget(content);
    column->addWidget(scroll, 1);

    column->addWidget(divider(this));
    column->addSpacing(12);
    auto* footer = secondaryLabel(QStringLiteral("To switch the app or website you're using right "
                                                 "now, click the Glimmo icon in the system tray."),
                                  footerSize, this);
    footer->setWordWrap(true);
    column->addWidget(footer);

    refresh();
    connect(&rules_, &rules::AppRules::changed, this, &AppsView::refresh);
}

QStringList AppsView::otherApps() const {
    // Like the kinds, the window lists only applications installed on this computer.
    return sortedKeys(rules_.appOn(), [this](const QString& app) {
        return !rules_.kindOf(app) && !installedApps(workspace_, {app}).empty();
    });
}

QStringList AppsView::otherSites() const {
    return sortedKeys(rules_.siteOn(),
                      [this](const QString& site) { return !rules_.kindOfSite(site); });
}

void AppsView::refresh() {
    everyOther_->refresh();
    std::pair shown{otherApps(), otherSites()};
    if (others_ && shown == othersShown_) {
        for (GlimmoSwitch* sw : others_->findChildren<GlimmoSwitch*>()) sw->refresh();
        return;
    }
    // The list itself changed: built again from the rules.
    othersShown_ = std::move(shown);
    if (others_) {
        // Later: the tap that changed the list may come from a switch inside it.
        others_->hide();
        others_->deleteLater();
        others_ = nullptr;
    }
    if (othersShown_.first.isEmpty() && othersShown_.second.isEmpty()) return;
    others_ = buildOthers();
    othersSlot_->addWidget(others_);
}

QWidget* AppsView::buildOthers() {
    auto* box = new QWidget(this);
    auto* rows = new QVBoxLayout(box);
    rows->setContentsMargins(KindHeader::titleIndent, 0, 0, 12);
    rows->setSpacing(6);
    const qreal dpr = devicePixelRatioF();
    for (const QString& id : othersShown_.first) {
        std::vector<AppIdentity> found = installedApps(workspace_, {id});
        if (found.empty()) continue;  // uninstalled since the list was computed
        const AppIdentity& app = found.front();
        auto* row = new AppRow(installedIcon(app, AppRow::iconSide, dpr), app.name, box);
        row->addSwitch(
            true, [this, id] { return rules_.appState(id); },
            [this, id](bool on) { rules_.setApp(id, on); });
        rows->addWidget(row);
    }
    for (const QString& site : othersShown_.second) {
        auto* row = new AppRow(QStringLiteral("globe"), site, box);
        // Written as it is, even when it equals the default: the entry keeps the row.
        row->addSwitch(
            true,
            [this, site] {
                const auto it = rules_.siteOn().find(site);
                return it == rules_.siteOn().end() || it->second;
            },
            [this, site](bool on) {
                platform::BoolMap map = rules_.siteOn();
                map[site] = on;
                rules_.setSiteOn(map);
            });
        rows->addWidget(row);
    }
    return box;
}

}  // namespace setup
