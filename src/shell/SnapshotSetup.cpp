#include "shell/SnapshotSetup.h"

#include <QImage>
#include <QPainter>

#include "overlay/Style.h"
#include "platform/JsonDefaults.h"
#include "platform/linux/session/Desktop.h"
#include "setup/Setup.h"
#include "setup/SetupView.h"
#include "shell/SnapshotApps.h"

namespace shell {

namespace {

// The sign-in page's address stands in as the site's own front page.
const QString kSampleSignIn = QStringLiteral("https://claude.ai/");

struct Sources {
    platform::JsonDefaults defaults{platform::JsonDefaults::standardPath()};
    platform::SystemClock clock;
    linuxdesk::Desktop desktop;
};

Sources& sources() {
    static Sources s;
    return s;
}

}  // namespace

void snapshotSetup(const QString& path, const std::function<void(setup::Setup&)>& configure) {
    Sources& src = sources();
    const platform::Platform desk = src.desktop.platform(src.defaults, src.clock);
    auto model = setup::Setup::create({desk.defaults, desk.ax, desk.workspace, desk.clock});
    configure(*model);
    setup::SetupView view(model, {});
    view.usePalette(overlay::style::light());
    // Drawn as in the key window: the default button shows as such.
    view.setAttribute(Qt::WA_DontShowOnScreen);
    view.show();
    const QSize size = view.sizeHint();
    view.setFixedSize(size);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return;
    image.fill(overlay::style::light().color(QPalette::Window));
    {
        QPainter painter(&image);
        view.render(&painter);
    }
    image.save(path, "PNG");
    view.hide();
}

int runSnapshotSetup(const QString& folder) {
    snapshotAppsSetup(folder);

    const auto state = [&](const char* name, const std::function<void(setup::Setup&)>& set) {
        snapshotSetup(
            folder + QStringLiteral("/setup-") + QLatin1String(name) + QStringLiteral(".png"), set);
    };
    state("1-fresh", [](setup::Setup& s) {
        s.setName({});
        s.setRole({});
        s.setLanguage({});
        s.setAboutDone(false);
        s.setAccess(false);
        s.setHasClaude(false);
    });
    state("2-access", [](setup::Setup& s) {
        s.setName(QStringLiteral("Alex"));
        s.setAboutDone(true);
        s.setAccess(false);
        s.setHasClaude(false);
    });
    state("2b-access-asked", [](setup::Setup& s) {
        s.setName(QStringLiteral("Alex"));
        s.setAboutDone(true);
        s.setAccess(false);
        s.setAccessOpened(true);
        s.setHasClaude(false);
    });
    state("3-install", [](setup::Setup& s) {
        s.setAboutDone(true);
        s.setAccess(true);
        s.setHasClaude(false);
        s.setInstalling(true);
    });
    state("4-signin", [](setup::Setup& s) {
        s.setAboutDone(true);
        s.setAccess(true);
        s.setHasClaude(true);
        s.setSigningIn(true);
        s.setLoginURL(kSampleSignIn);
    });
    state("4b-connect", [](setup::Setup& s) {
        s.setAboutDone(true);
        s.setAccess(true);
        s.setHasClaude(false);
    });
    state("4c-restart", [](setup::Setup& s) {
        s.setAboutDone(true);
        s.setAccess(true);
        s.setHasClaude(false);
        s.setPreparedApps({QStringLiteral("Google Chrome"), QStringLiteral("Slack")});
        s.setRestartApps({QStringLiteral("Slack"), QStringLiteral("Discord")});
    });
    state("5-done", [](setup::Setup& s) {
        s.setAboutDone(true);
        s.setAccess(true);
        s.setHasClaude(true);
        s.setClaudeOK(true);
    });
    return 0;
}

}  // namespace shell
