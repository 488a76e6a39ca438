#include "rules/AppRules.h"

#include "main/Constants.h"
#include "rules/Catalogue.h"

namespace rules {
namespace {

const QString kKindOn = QStringLiteral("kindOn");
const QString kAppOn = QStringLiteral("appOn");
const QString kSiteOn = QStringLiteral("siteOn");
const QString kOtherOn = QStringLiteral("otherOn");
const QString kPaused = QStringLiteral("paused");
const QString kMigrated = QStringLiteral("rulesMigrated");

// A value the user's choice stores, or removes when it equals what applies anyway.
void storeOrRemove(platform::BoolMap& map, const QString& key, bool on, bool baseline) {
    if (on == baseline)
        map.erase(key);
    else
        map[key] = on;
}

}  // namespace

AppRules::AppRules(platform::Defaults& defaults, QObject* parent) : QObject(parent), d_(defaults) {
    kindOn_ = d_.boolMap(kKindOn).value_or(platform::BoolMap{});
    appOn_ = d_.boolMap(kAppOn).value_or(platform::BoolMap{});
    siteOn_ = d_.boolMap(kSiteOn).value_or(platform::BoolMap{});
    otherOn_ = d_.boolValue(kOtherOn).value_or(true);
    migrate();
}

AppRules& AppRules::shared(platform::Defaults& defaults) {
    // Lives until exit; never destroyed, so nothing depends on the order of static teardown.
    static AppRules* const instance = new AppRules(defaults);
    return *instance;
}

void AppRules::migrate() {
    const std::optional<QStringList> paused = d_.stringList(kPaused);
    if (!paused || d_.boolValue(kMigrated).value_or(false)) return;
    for (const QString& app : *paused) {
        if (appState(app)) {
            appOn_[app] = false;
            persist(kAppOn, appOn_);
        }
    }
    for (const QString& app : glimmo::defaultPaused()) {
        if (paused->contains(app) || appState(app)) continue;
        appOn_[app] = true;
        persist(kAppOn, appOn_);
    }
    d_.setBool(kMigrated, true);
}

bool AppRules::match(const QString& host, const QString& site) {
    return rules::match(host, site);
}

std::optional<AppKind> AppRules::kindOf(const QString& app) const {
    return rules::kindOf(app);
}

std::optional<AppKind> AppRules::kindOfSite(const QString& host) const {
    return rules::kindOfSite(host);
}

bool AppRules::isOn(const AppKind& kind) const {
    if (kind.locked) return false;
    const auto it = kindOn_.find(kind.id);
    return it != kindOn_.end() ? it->second : kind.defaultOn;
}

bool AppRules::appState(const QString& app) const {
    const std::optional<AppKind> kind = kindOf(app);
    if (kind && kind->locked) return false;
    if (const auto it = appOn_.find(app); it != appOn_.end()) return it->second;
    if (!kind) return otherOn_;
    return isOn(*kind);
}

std::optional<QString> AppRules::matchingSiteKey(const QString& host) const {
    std::optional<QString> best;
    for (const auto& [key, on] : siteOn_) {
        if (rules::match(host, key) && (!best || key.size() > best->size())) best = key;
    }
    return best;
}

std::optional<bool> AppRules::siteState(const QString& host) const {
    if (const auto key = matchingSiteKey(host)) return siteOn_.at(*key);
    const std::optional<AppKind> kind = kindOfSite(host);
    if (!kind) return std::nullopt;
    return isOn(*kind);  // off for a locked kind
}

bool AppRules::isOn(const QString& app, const std::optional<QString>& host) const {
    const std::optional<AppKind> kind = kindOf(app);
    if (kind && kind->locked) return false;
    if (host && isBrowser(app)) {
        if (const std::optional<bool> site = siteState(*host)) return *site;
    }
    return appState(app);
}

void AppRules::setKind(const AppKind& kind, bool on) {
    kindOn_[kind.id] = on;
    persist(kKindOn, kindOn_);
    // Every application of the kind: the catalogue's, and the Linux-only ones that the catalogue
    // does not list, whichever of their names the switch was stored under.
    const auto erased = std::erase_if(appOn_, [&](const auto& entry) {
        const std::optional<AppKind> of = kindOf(entry.first);
        return of && of->id == kind.id;
    });
    if (erased) persist(kAppOn, appOn_);
    // Only the listed names: a longer host the user switched keeps its entry.
    for (const QString& site : kind.sites) {
        if (siteOn_.erase(site)) persist(kSiteOn, siteOn_);
    }
    emit changed();
}

void AppRules::setApp(const QString& app, bool on) {
    const std::optional<AppKind> kind = kindOf(app);
    const bool baseline = !kind ? otherOn_ : isOn(*kind);
    storeOrRemove(appOn_, app, on, baseline);
    persist(kAppOn, appOn_);
    emit changed();
}

void AppRules::setSite(const QString& host, bool on) {
    QString key = host;
    if (const auto existing = matchingSiteKey(host)) {
        key = *existing;
    } else if (const std::optional<AppKind> kind = kindOfSite(host)) {
        for (const QString& site : kind->sites) {
            if (rules::match(host, site)) {
                key = site;
                break;
            }
        }
    }
    const std::optional<AppKind> kind = kindOfSite(key);
    if (!kind)
        siteOn_[key] = on;  // an unlisted host is always recorded under its own name
    else if (kind->locked)
        storeOrRemove(siteOn_, key, on, false);
    else
        storeOrRemove(siteOn_, key, on, isOn(*kind));
    persist(kSiteOn, siteOn_);
    emit changed();
}

void AppRules::setKindOn(const platform::BoolMap& value) {
    kindOn_ = value;
    persist(kKindOn, kindOn_);
    emit changed();
}

void AppRules::setAppOn(const platform::BoolMap& value) {
    appOn_ = value;
    persist(kAppOn, appOn_);
    emit changed();
}

void AppRules::setSiteOn(const platform::BoolMap& value) {
    siteOn_ = value;
    persist(kSiteOn, siteOn_);
    emit changed();
}

void AppRules::setOtherOn(bool value) {
    otherOn_ = value;
    d_.setBool(kOtherOn, value);
    emit changed();
}

void AppRules::persist(const QString& key, const platform::BoolMap& value) {
    d_.setBoolMap(key, value);
}

}  // namespace rules
