#pragma once
// Firefox (ESR) on the virtual desktop in the temporary home, showing pages served from the test
// process, with a profile that asks nothing at its first start and reaches no other machine.

#include <gtest/gtest.h>

#include <QProcess>

#include "DesktopHelpers.h"
#include "TempHome.h"

namespace desktop {

inline QString firefoxProgram() {
    return firstProgram({"firefox-esr", "firefox"});
}

// A proxy that answers nothing for everything but the loopback server.
inline const QByteArray kFirefoxPrefs = R"(
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.startup.homepage_override.mstone", "ignore");
user_pref("startup.homepage_welcome_url", "");
user_pref("browser.aboutwelcome.enabled", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
user_pref("app.normandy.enabled", false);
user_pref("app.update.disabledForTesting", true);
user_pref("network.captive-portal-service.enabled", false);
user_pref("network.connectivity-service.enabled", false);
user_pref("network.trr.mode", 5);
user_pref("network.proxy.type", 1);
user_pref("network.proxy.http", "127.0.0.1");
user_pref("network.proxy.http_port", 9);
user_pref("network.proxy.share_proxy_settings", true);
user_pref("network.proxy.no_proxies_on", "127.0.0.1");
)";

// A host of the internet served by this machine's page server, over plain HTTP: every name
// resolves to the loopback address, and neither the preloaded HTTPS list nor HTTPS-first
// upgrades the address.
inline QByteArray firefoxServesHost(const QString& host) {
    return QStringLiteral(R"(
user_pref("network.dns.forceResolve", "127.0.0.1");
user_pref("network.proxy.no_proxies_on", "127.0.0.1, %1");
user_pref("network.stricttransportsecurity.preloadlist", false);
user_pref("dom.security.https_first", false);
user_pref("dom.security.https_first_schemeless", false);
)")
        .arg(host)
        .toUtf8();
}

class Firefox : public TestProcess {
public:
    // prefs: further lines of user.js.
    Firefox(const QString& program, const testsupport::TempHome& home, const QString& url,
            const QByteArray& prefs = {})
        : TestProcess(8000) {
        const QString h = home.path();
        home.write(QStringLiteral("firefox/user.js"), kFirefoxPrefs + prefs);
        QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
        e.insert("HOME", h);
        e.insert("XDG_CONFIG_HOME", h + "/.config");
        e.insert("XDG_CACHE_HOME", h + "/.cache");
        process_.setProcessEnvironment(e);
        process_.setStandardOutputFile(QProcess::nullDevice());
        process_.setStandardErrorFile(h + "/firefox.log");
        process_.start(program, {"--no-remote", "--new-instance", "--profile", h + "/firefox",
                                 "--width", "1000", "--height", "700", url});
    }
};

}  // namespace desktop
