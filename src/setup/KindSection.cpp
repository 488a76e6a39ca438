#include "setup/KindSection.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "overlay/Style.h"
#include "setup/InstalledIcon.h"
#include "setup/AppRow.h"
#include "setup/GlimmoSwitch.h"
#include "setup/KindHeader.h"
#include "setup/SecondaryLabel.h"

namespace setup {

namespace {

constexpr int headerPadding = 10;
constexpr int rowGap = 6;
constexpr int listBottom = 12;

}  // namespace

KindSection::KindSection(rules::AppRules& rules, const rules::AppKind& kind,
                         const std::vector<AppIdentity>& apps, bool open, QWidget* parent)
    : QWidget(parent), rules_(rules), kind_(kind) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);

    auto* headerRow = new QHBoxLayout;
    headerRow->setContentsMargins(0, headerPadding, 0, headerPadding);
    headerRow->setSpacing(12);
    header_ = new KindHeader(kind, this);
    headerRow->addWidget(header_, 1);
    if (kind.locked) {
        headerRow->addWidget(secondaryLabel(QStringLiteral("Always off"), 0, this));
    } else {
        auto* sw = new GlimmoSwitch(
            false, [this] { return rules_.isOn(kind_); },
            [this](bool on) { rules_.setKind(kind_, on); }, this);
        sw->setAccessibleName(kind.title);
        switches_.push_back(sw);
        headerRow->addWidget(sw, 0, Qt::AlignVCenter);
    }
    column->addLayout(headerRow);

    list_ = buildList(apps);
    column->addWidget(list_);
    header_->setChecked(open);
    list_->setVisible(open);
    connect(header_, &QAbstractButton::toggled, list_, &QWidget::setVisible);
    connect(&rules_, &rules::AppRules::changed, this, &KindSection::refresh);
}

QWidget* KindSection::buildList(const std::vector<AppIdentity>& apps) {
    auto* list = new QWidget(this);
    auto* rows = new QVBoxLayout(list);
    rows->setContentsMargins(KindHeader::titleIndent, 0, 0, listBottom);
    rows->setSpacing(rowGap);
    const qreal dpr = devicePixelRatioF();
    for (const AppIdentity& app : apps) {
        auto* row = new AppRow(installedIcon(app, AppRow::iconSide, dpr), app.name, list);
        if (!kind_.locked) {
            const QString id = app.id;
            switches_.push_back(row->addSwitch(
                true, [this, id] { return rules_.appState(id); },
                [this, id](bool on) { rules_.setApp(id, on); }));
        }
        rows->addWidget(row);
    }
    for (const QString& site : kind_.sites) {
        auto* row = new AppRow(QStringLiteral("globe"), site, list);
        // A site no rule speaks of shows as on, as a page of it would be treated.
        switches_.push_back(row->addSwitch(
            true, [this, site] { return rules_.siteState(site).value_or(true); },
            [this, site](bool on) { rules_.setSite(site, on); }));
        rows->addWidget(row);
    }
    if (apps.empty() && kind_.sites.isEmpty()) {
        rows->addWidget(
            secondaryLabel(QStringLiteral("None of these apps are on this computer."), 0, list));
    } else if (kind_.locked) {
        rows->addWidget(
            secondaryLabel(QStringLiteral("Glimmo never reads password managers."), 12, list));
    }
    return list;
}

bool KindSection::isOpen() const {
    return header_->isChecked();
}

void KindSection::setOpen(bool open) {
    header_->setChecked(open);
}

void KindSection::refresh() {
    for (GlimmoSwitch* sw : switches_) sw->refresh();
}

}  // namespace setup
