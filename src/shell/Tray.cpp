#include "shell/Tray.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QSystemTrayIcon>

#include "claude/Locate.h"
#include "engine/Glimmo.h"
#include "rules/AppRules.h"
#include "shell/ProfileDialog.h"
#include "shell/TrayIcon.h"
#include "shell/Windows.h"

namespace shell {

namespace {

constexpr int kIconRefreshMs = 2000;

}  // namespace

Tray::Tray(engine::Glimmo& engine, platform::Platform& platform, rules::AppRules& rules,
           Windows& windows, platform::TopBarMenu* topBar, QObject* parent)
    : QObject(parent),
      engine_(engine),
      platform_(platform),
      rules_(rules),
      windows_(windows),
      menu_(std::make_unique<QMenu>()),
      topBar_(topBar) {
    connect(menu_.get(), &QMenu::aboutToShow, this, &Tray::rebuildMenu);
    iconTimer_.setInterval(kIconRefreshMs);
    connect(&iconTimer_, &QTimer::timeout, this, &Tray::refreshIcon);
    if (!topBar_) return;
    topBar_->onOpening([this] {
        topBarIconState_.reset();
        showInTopBar();
    });
    topBar_->onChosen([this](int index) {
        if (index >= 0 && size_t(index) < topBarRows_.size()) run(topBarRows_[size_t(index)]);
    });
    topBar_->onAvailable([this](bool) {
        topBarIconState_.reset();
        showInTopBar();
    });
}

Tray::~Tray() {
    if (item_) item_->setContextMenu(nullptr);
}

bool Tray::show() {
    if (!item_) {
        item_ = new QSystemTrayIcon(this);
        item_->setToolTip(QStringLiteral("Glimmo"));
        item_->setContextMenu(menu_.get());
        // A click on the icon itself opens the same menu (most panels already do this).
        connect(item_, &QSystemTrayIcon::activated, this, [this](auto reason) {
            if (reason == QSystemTrayIcon::Trigger) menu_->popup(QCursor::pos());
        });
        rebuildMenu();
        refreshIcon();
    }
    item_->show();
    showInTopBar();
    return QSystemTrayIcon::isSystemTrayAvailable() || useTopBar();
}

bool Tray::useTopBar() const {
    return topBar_ && topBar_->available() && !QSystemTrayIcon::isSystemTrayAvailable();
}

void Tray::showInTopBar() {
    if (!topBar_) return;
    if (!useTopBar()) {
        if (topBarIconState_) topBar_->hide();
        topBarIconState_.reset();
        return;
    }
    const bool dimmed = !suggestionsEnabled(platform_.defaults) || !platform_.ax.trusted();
    const bool attention = engine_.claudeTrouble() || !setupFinished();
    const int iconState = (dimmed ? 1 : 0) | (attention ? 2 : 0);
    if (topBarIconState_ == iconState) return;
    topBarIconState_ = iconState;
    topBarRows_ = menuRows(state(), rules_);
    std::vector<platform::MenuItem> items;
    for (const MenuRow& row : topBarRows_)
        items.push_back({row.title, row.separator, row.checkable, row.checked, row.enabled});
    // The bar is light text on dark: the glyph in the bar's own colour, at its icon size.
    topBar_->show(glyphImage(attention, 32, dimmed ? QColor(255, 255, 255, 110) : Qt::white),
                  items);
}

void Tray::startIconTimer() {
    iconTimer_.start();
}

bool Tray::setupFinished() const {
    return shell::setupFinished(platform_.defaults, platform_.ax.trusted(),
                                claude::claudePath().has_value());
}

MenuState Tray::state() const {
    MenuState s;
    s.setupFinished = setupFinished();
    s.claudeTrouble = engine_.claudeTrouble();
    s.enabled = suggestionsEnabled(platform_.defaults);
    s.frontApp = engine_.frontApp;
    s.frontHost = engine_.frontHost;
    s.loginEnabled = platform_.workspace.loginItemEnabled();
    return s;
}

void Tray::refreshIcon() {
    showInTopBar();
    if (!item_) return;
    const bool dimmed = !suggestionsEnabled(platform_.defaults) || !platform_.ax.trusted();
    const bool attention = engine_.claudeTrouble() || !setupFinished();
    item_->setIcon(trayIcon(attention, dimmed, qApp->devicePixelRatio()));
}

void Tray::rebuildMenu() {
    menu_->clear();
    for (const MenuRow& row : menuRows(state(), rules_)) {
        if (row.separator) {
            menu_->addSeparator();
            continue;
        }
        QAction* action = menu_->addAction(row.title);
        action->setCheckable(row.checkable);
        action->setChecked(row.checked);
        action->setEnabled(row.enabled);
        if (row.action == MenuAction::Quit)
            action->setShortcut(QKeySequence(QStringLiteral("Ctrl+Q")));
        if (row.action != MenuAction::None)
            connect(action, &QAction::triggered, this, [this, row] { run(row); });
    }
}

void Tray::run(const MenuRow& row) {
    switch (row.action) {
        case MenuAction::ShowSetup:
            windows_.showSetup();
            break;
        case MenuAction::SignInClaude:
            signInClaude();
            break;
        case MenuAction::Toggle:
            toggle();
            break;
        case MenuAction::ToggleApp:
            toggleApp(row.value);
            break;
        case MenuAction::ToggleSite:
            toggleSite(row.value);
            break;
        case MenuAction::ShowApps:
            windows_.showApps();
            break;
        case MenuAction::EditProfile:
            editProfile();
            break;
        case MenuAction::ToggleLogin:
            toggleLogin();
            break;
        case MenuAction::Quit:
            emit quitRequested();
            break;
        case MenuAction::None:
            break;
    }
}

void Tray::toggle() {
    const bool on = !suggestionsEnabled(platform_.defaults);
    platform_.defaults.setBool(QStringLiteral("enabled"), on);
    if (!on) {
        engine_.clearShown();
        engine_.lastText.clear();
        engine_.lastEl.reset();
        engine_.cancel();
        engine_.claude.dropWarm();
    }
    refreshIcon();
}

void Tray::toggleApp(const QString& app) {
    if (app.isEmpty()) return;
    rules_.setApp(app, !rules_.appState(app));
}

void Tray::toggleSite(const QString& host) {
    if (host.isEmpty() || !engine_.frontApp || engine_.frontApp->bundleId.isEmpty()) return;
    const QString app = engine_.frontApp->bundleId;
    rules_.setSite(host, !rules_.isOn(app, host));
}

void Tray::toggleLogin() {
    // A failure shows as the real state the next time the menu opens.
    platform_.workspace.setLoginItem(!platform_.workspace.loginItemEnabled());
}

void Tray::signInClaude() {
    engine_.claude.setClaudeTrouble(false);
    windows_.showSetup();
}

void Tray::editProfile() {
    ProfileDialog dialog(platform_.defaults);
    dialog.show();
    Windows::bringToFront(&dialog);
    dialog.nameField()->setFocus();
    if (dialog.exec() != QDialog::Accepted) return;
    dialog.save();
    endWarm();
}

void Tray::endWarm() {
    engine_.claude.dropWarm();
}

}  // namespace shell
