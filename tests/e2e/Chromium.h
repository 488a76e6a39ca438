#pragma once
// Chromium on the virtual desktop, showing pages served from the test process itself.

#include <gtest/gtest.h>

#include <QProcess>

#include "DesktopHelpers.h"
#include "PageServer.h"
#include "TempHome.h"

namespace desktop {

inline QString chromiumProgram() {
    return firstProgram({"chromium", "chromium-browser"});
}

// For a test that found no Chromium. Call as `return missingChromium();` from the test's body.
inline void missingChromium() {
    missingPackage("BROWSER TEST SKIPPED", "chromium");
}

// A certificate for host and its key, made with openssl in dir; false when that fails.
inline bool makeCertificate(const QString& dir, const QString& host) {
    QProcess openssl;
    openssl.setStandardOutputFile(QProcess::nullDevice());
    openssl.setStandardErrorFile(QProcess::nullDevice());
    openssl.start("openssl", {"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2",
                              "-subj", "/CN=" + host, "-addext", "subjectAltName=DNS:" + host,
                              "-keyout", dir + "/key.pem", "-out", dir + "/cert.pem"});
    return openssl.waitForFinished(60000) && openssl.exitStatus() == QProcess::NormalExit &&
           openssl.exitCode() == 0;
}

// Chromium with its accessibility tree on, a fresh profile and nothing that reaches the network.
// extra: further switches (a host mapping, an application window, a window class); url may be
// empty when one of them names the page. pages false: started as a user would, without the
// switch that shows its pages to assistive technology.
class Chromium : public TestProcess {
public:
    Chromium(const QString& program, const QString& profile, const QString& url,
             const QStringList& extra = {}, bool pages = true)
        : TestProcess(5000) {
        process_.setStandardOutputFile(QProcess::nullDevice());
        process_.setStandardErrorFile(profile + QStringLiteral(".log"));
        // Root has no sandbox to enter; the page is local and trusted.
        QStringList args{"--no-sandbox",
                         "--user-data-dir=" + profile,
                         "--disable-background-networking",
                         "--disable-component-update",
                         "--disable-sync",
                         "--no-first-run",
                         "--no-default-browser-check",
                         "--disable-gpu",
                         "--password-store=basic",
                         "--disable-features=Translate",
                         "--window-size=1000,700"};
        if (pages) args << "--force-renderer-accessibility";
        process_.start(program, args + extra + (url.isEmpty() ? QStringList() : QStringList{url}));
    }
};

}  // namespace desktop
