#pragma once
// The user's switches (per kind, per application, per website, and for every other
// application), persisted in the settings store, and the decision the engine asks before every
// request. Every change is written at once and announced through changed().

#include <QObject>
#include <QString>
#include <optional>

#include "platform/Defaults.h"
#include "rules/AppKind.h"

namespace rules {

class AppRules : public QObject {
    Q_OBJECT

public:
    // Loads the switches (a stored map with any non-boolean value loads as empty) and migrates
    // the earlier list of paused applications once.
    explicit AppRules(platform::Defaults& defaults, QObject* parent = nullptr);
    // The one instance of the process, created over the store given at the first call.
    static AppRules& shared(platform::Defaults& defaults);

    static bool match(const QString& host, const QString& site);
    std::optional<AppKind> kindOf(const QString& app) const;
    std::optional<AppKind> kindOfSite(const QString& host) const;

    // Off for a locked kind, else the user's switch, else the kind's default.
    bool isOn(const AppKind& kind) const;
    // The application's state regardless of any website.
    bool appState(const QString& app) const;
    // The website's state, absent when no rule speaks of it.
    std::optional<bool> siteState(const QString& host) const;
    // The decision; host is the page's host when app shows one in a browser.
    bool isOn(const QString& app, const std::optional<QString>& host) const;

    // The user's switches; they keep an entry only while it differs from what would apply anyway.
    void setKind(const AppKind& kind, bool on);
    void setApp(const QString& app, bool on);
    void setSite(const QString& host, bool on);

    const platform::BoolMap& kindOn() const { return kindOn_; }
    const platform::BoolMap& appOn() const { return appOn_; }
    const platform::BoolMap& siteOn() const { return siteOn_; }
    bool otherOn() const { return otherOn_; }
    // Direct assignments, each persisted at once.
    void setKindOn(const platform::BoolMap& value);
    void setAppOn(const platform::BoolMap& value);
    void setSiteOn(const platform::BoolMap& value);
    void setOtherOn(bool value);

signals:
    void changed();

private:
    void migrate();
    // The longest siteOn key the host matches, so that the choice does not depend on map order.
    std::optional<QString> matchingSiteKey(const QString& host) const;
    void persist(const QString& key, const platform::BoolMap& value);

    platform::Defaults& d_;
    platform::BoolMap kindOn_;
    platform::BoolMap appOn_;
    platform::BoolMap siteOn_;
    bool otherOn_ = true;
};

}  // namespace rules
