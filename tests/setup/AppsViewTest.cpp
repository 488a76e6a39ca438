// The apps window over the rules: what each switch shows and what a tap on it changes.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>

#include "DataFolder.h"
#include "platform/Defaults.h"
#include "platform/fake/Workspace.h"
#include "platform/linux/x11/X11Workspace.h"
#include "rules/Catalogue.h"
#include "setup/AppsView.h"
#include "setup/GlimmoSwitch.h"
#include "setup/KindHeader.h"
#include "setup/KindSection.h"

using setup::AppsView;
using setup::GlimmoSwitch;

namespace {

// The switch whose row or header is named so; null when there is none.
GlimmoSwitch* switchOf(const QWidget& view, const QString& name) {
    for (GlimmoSwitch* sw : view.findChildren<GlimmoSwitch*>())
        if (sw->accessibleName() == name) return sw;
    return nullptr;
}

setup::KindSection* section(const AppsView& view, const QString& kindId) {
    for (setup::KindSection* s : view.sections())
        if (s->kind().id == kindId) return s;
    return nullptr;
}

bool shows(const QWidget& view, const QString& text) {
    for (QLabel* label : view.findChildren<QLabel*>())
        if (label->text() == text && label->isVisibleTo(&view)) return true;
    return false;
}

}  // namespace

TEST(AppsView, InstalledApplicationsUnderTheirKinds) {
    DataFolder data;
    data.entry("firefox-esr", "Firefox ESR");
    data.entry("chromium", "Chromium");
    data.entry("thunderbird", "Thunderbird");
    platform::MemoryDefaults d;
    rules::AppRules rules(d);
    linuxdesk::X11Workspace workspace;
    AppsView view(rules, workspace, {"email"});

    for (const auto& [name, kind] :
         {std::pair{"Chromium", "browsers"}, std::pair{"Firefox ESR", "browsers"},
          std::pair{"Thunderbird", "email"}}) {
        GlimmoSwitch* sw = switchOf(view, name);
        ASSERT_TRUE(sw) << name;
        EXPECT_TRUE(section(view, kind)->isAncestorOf(sw)) << name;
        EXPECT_TRUE(sw->isOn()) << name;
    }

    // The kind's switch turns its rows off at once, and switched on again it takes back the
    // rows' own switches.
    GlimmoSwitch* thunderbird = switchOf(view, "Thunderbird");
    GlimmoSwitch* email = switchOf(view, "Email");
    email->click();
    EXPECT_FALSE(thunderbird->isOn());
    EXPECT_FALSE(switchOf(view, "mail.google.com")->isOn());
    email->click();
    thunderbird->click();
    email->click();
    email->click();
    EXPECT_TRUE(thunderbird->isOn());

    // The password managers: "Always off", no switch, and the kind's notes.
    EXPECT_FALSE(switchOf(view, "Password managers"));
    EXPECT_TRUE(shows(view, "Always off"));
    EXPECT_FALSE(shows(view, "None of these apps are on this computer."));
    section(view, "passwords")->setOpen(true);
    EXPECT_TRUE(shows(view, "None of these apps are on this computer."));
}

TEST(AppsView, OtherApplicationsAndWebsites) {
    platform::MemoryDefaults d;
    rules::AppRules rules(d);
    fake::Workspace workspace;
    workspace.setInstalled({"org.inkscape.Inkscape", "Inkscape", "", ""});
    AppsView view(rules, workspace);
    EXPECT_TRUE(view.otherApps().isEmpty());

    // Switched from the menu while open: the rows appear at once.
    rules.setApp("org.inkscape.Inkscape", false);
    rules.setSite("www.linkedin.com", true);
    rules.setApp("thunderbird", false);    // of a kind: not an other application
    rules.setApp("org.gimp.GIMP", false);  // not installed: not listed
    EXPECT_EQ(view.otherApps(), QStringList{"org.inkscape.Inkscape"});
    GlimmoSwitch* inkscape = switchOf(view, "Inkscape");
    GlimmoSwitch* linkedin = switchOf(view, "www.linkedin.com");
    ASSERT_TRUE(inkscape && linkedin);
    EXPECT_FALSE(inkscape->isOn());
    EXPECT_TRUE(linkedin->isOn());

    // A website's switch writes its entry as it is, so the row stays.
    linkedin->click();
    EXPECT_EQ(rules.siteOn().at("www.linkedin.com"), false);
    linkedin->click();
    EXPECT_EQ(rules.siteOn().at("www.linkedin.com"), true);
    EXPECT_EQ(view.otherSites(), QStringList{"www.linkedin.com"});

    // Back to the default of every other application: setApp drops the entry, and the row goes.
    inkscape->click();
    EXPECT_FALSE(rules.appOn().contains("org.inkscape.Inkscape"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(switchOf(view, "Inkscape"));
    ASSERT_TRUE(switchOf(view, "www.linkedin.com"));

    // "Every other app" is otherOn itself, both ways.
    switchOf(view, "Every other app")->click();
    EXPECT_FALSE(rules.otherOn());
    rules.setOtherOn(true);
    EXPECT_TRUE(switchOf(view, "Every other app")->isOn());
}
