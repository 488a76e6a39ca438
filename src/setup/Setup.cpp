#include "setup/Setup.h"

#include <QProcess>
#include <QTimer>

#include "claude/Locate.h"
#include "claude/Profile.h"
#include "setup/UserName.h"

namespace setup {

namespace {

// After "Continue", step 2 opens by itself this much later.
constexpr int kOpenAccessMs = 400;
// refresh starts a verification at most this often (seconds).
constexpr double kCheckSpacing = 6.0;

QString trimmed(const QString& text) {
    return text.trimmed();
}

}  // namespace

std::shared_ptr<Setup> Setup::create(Desk desk, const QString& installCommand) {
    // The last reference may be dropped by a worker thread's hand-over: the object itself is
    // always deleted on its own thread.
    return std::shared_ptr<Setup>(new Setup(desk, installCommand),
                                  [](Setup* s) { s->deleteLater(); });
}

Setup::Setup(Desk desk, QString installCommand)
    : d_(desk), installCommand_(std::move(installCommand)) {
    const claude::Profile profile(d_.defaults);
    const QString savedName = profile.name();
    name_ = savedName.isEmpty() ? fullUserName() : savedName;
    role_ = profile.role();
    const QString savedLanguage = profile.language();
    language_ = savedLanguage.isEmpty() ? claude::defaultLanguage() : savedLanguage;
    aboutDone_ = !savedName.isEmpty();
    access_ = d_.ax.trusted();
    const bool found = claude::claudePath().has_value();
    hasClaude_ = found;
    claudeOK_ = found && d_.defaults.boolValue(QStringLiteral("claudeVerified")).value_or(false);
}

// A running sign-in goes on without the object: its handlers hold it weakly and find it gone.
Setup::~Setup() = default;

void Setup::save() {
    claude::Profile profile(d_.defaults);
    profile.setName(trimmed(name_));
    profile.setRole(trimmed(role_));
    profile.setLanguage(trimmed(language_));
    setAboutDone(!profile.name().isEmpty());
    onSaved();
    if (aboutDone_ && !access_)
        QTimer::singleShot(kOpenAccessMs, this, [this] { openAccessibility(); });
}

void Setup::openAccessibility() {
    setAccessOpened(true);
    d_.ax.requestTrust();
    d_.workspace.openAccessibilitySettings();
}

void Setup::refresh() {
    if (!access_ && d_.ax.trusted()) {
        setAccess(true);
        onProgress();
    }
    const std::vector<QString> restart = d_.ax.restartNeeded();
    setRestartApps(QStringList(restart.begin(), restart.end()));
    const std::vector<QString> prepared = d_.workspace.preparedLaunchers();
    setPreparedApps(QStringList(prepared.begin(), prepared.end()));
    setLogOutDue(d_.workspace.companionAwaitsLogin());
    setDesktopNote(d_.workspace.desktopNote());
    setHasClaude(claude::claudePath().has_value());
    if (hasClaude_ && !claudeOK_ && !checking_ && !installing_ && !signingIn_ &&
        (!lastCheck_ || d_.clock.now() - *lastCheck_ > kCheckSpacing))
        check();
}

void Setup::connect() {
    if (!claude::claudePath()) {
        setWantsSignIn(true);
        if (!installing_) startInstall();
        return;
    }
    signIn();
}

}  // namespace setup
