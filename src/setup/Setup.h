#pragma once
// The state behind the setup window: the profile (step 1), the accessibility switch (step 2),
// and installing, signing in and verifying the claude program (step 3). Every observable field
// is a property that announces itself through changed(). It never blocks the main thread: the
// installer and the verification run on threads of their own and hand their outcome back.
//
// Made with create(); a running verification or install holds a reference until its result
// has been handled, so a window closed meanwhile still records a verified claude.

#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

#include "platform/Ax.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"
#include "platform/Workspace.h"

class QProcess;

namespace setup {

class Setup : public QObject, public std::enable_shared_from_this<Setup> {
    Q_OBJECT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    Q_PROPERTY(QString role READ role WRITE setRole NOTIFY changed)
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY changed)
    Q_PROPERTY(bool aboutDone READ aboutDone WRITE setAboutDone NOTIFY changed)
    Q_PROPERTY(bool access READ access WRITE setAccess NOTIFY changed)
    Q_PROPERTY(bool hasClaude READ hasClaude WRITE setHasClaude NOTIFY changed)
    Q_PROPERTY(bool claudeOK READ claudeOK WRITE setClaudeOK NOTIFY changed)
    Q_PROPERTY(bool installing READ installing WRITE setInstalling NOTIFY changed)
    Q_PROPERTY(bool checking READ checking WRITE setChecking NOTIFY changed)
    Q_PROPERTY(bool installFailed READ installFailed WRITE setInstallFailed NOTIFY changed)
    Q_PROPERTY(bool wantsSignIn READ wantsSignIn WRITE setWantsSignIn NOTIFY changed)
    Q_PROPERTY(bool signingIn READ signingIn WRITE setSigningIn NOTIFY changed)
    Q_PROPERTY(bool accessOpened READ accessOpened WRITE setAccessOpened NOTIFY changed)
    Q_PROPERTY(QString code READ code WRITE setCode NOTIFY changed)
    Q_PROPERTY(QStringList restartApps READ restartApps WRITE setRestartApps NOTIFY changed)
    Q_PROPERTY(QStringList preparedApps READ preparedApps WRITE setPreparedApps NOTIFY changed)
    Q_PROPERTY(bool logOutDue READ logOutDue WRITE setLogOutDue NOTIFY changed)
    Q_PROPERTY(QString desktopNote READ desktopNote WRITE setDesktopNote NOTIFY changed)
    Q_PROPERTY(bool allDone READ allDone NOTIFY changed)

public:
    struct Desk {
        platform::Defaults& defaults;
        platform::Ax& ax;
        platform::Workspace& workspace;
        platform::Clock& clock;
    };

    // installCommand: the shell command line that installs claude (tests pass a local one).
    static std::shared_ptr<Setup> create(Desk desk,
                                         const QString& installCommand = defaultInstallCommand());
    ~Setup() override;

    static QString defaultInstallCommand();

    const QString& name() const { return name_; }
    const QString& role() const { return role_; }
    const QString& language() const { return language_; }
    bool aboutDone() const { return aboutDone_; }
    bool access() const { return access_; }
    bool hasClaude() const { return hasClaude_; }
    bool claudeOK() const { return claudeOK_; }
    bool installing() const { return installing_; }
    bool checking() const { return checking_; }
    bool installFailed() const { return installFailed_; }
    bool wantsSignIn() const { return wantsSignIn_; }
    bool signingIn() const { return signingIn_; }
    bool accessOpened() const { return accessOpened_; }
    const std::optional<QString>& loginURL() const { return loginURL_; }
    const QString& code() const { return code_; }
    // Running applications Glimmo cannot read until they are started again.
    const QStringList& restartApps() const { return restartApps_; }
    // The applications whose launchers were made to start them readable.
    const QStringList& preparedApps() const { return preparedApps_; }
    bool logOutDue() const { return logOutDue_; }
    QString desktopNote() const { return desktopNote_; }
    bool allDone() const { return aboutDone_ && access_ && claudeOK_; }

    void setName(const QString& v) { assign(name_, v); }
    void setRole(const QString& v) { assign(role_, v); }
    void setLanguage(const QString& v) { assign(language_, v); }
    void setAboutDone(bool v) { assign(aboutDone_, v); }
    void setAccess(bool v) { assign(access_, v); }
    void setHasClaude(bool v) { assign(hasClaude_, v); }
    void setClaudeOK(bool v) { assign(claudeOK_, v); }
    void setInstalling(bool v) { assign(installing_, v); }
    void setChecking(bool v) { assign(checking_, v); }
    void setInstallFailed(bool v) { assign(installFailed_, v); }
    void setWantsSignIn(bool v) { assign(wantsSignIn_, v); }
    void setSigningIn(bool v) { assign(signingIn_, v); }
    void setAccessOpened(bool v) { assign(accessOpened_, v); }
    void setLoginURL(const std::optional<QString>& v) { assign(loginURL_, v); }
    void setCode(const QString& v) { assign(code_, v); }
    void setRestartApps(const QStringList& v) { assign(restartApps_, v); }
    void setPreparedApps(const QStringList& v) { assign(preparedApps_, v); }
    void setLogOutDue(bool v) { assign(logOutDue_, v); }
    void setDesktopNote(const QString& v) { assign(desktopNote_, v); }

    // Called after the profile was saved, and when step 2 or 3 becomes complete.
    std::function<void()> onSaved = [] {};
    std::function<void()> onProgress = [] {};

    // Step 1's "Continue".
    void save();
    // Step 2's button: switches accessibility on and shows the desktop's settings for it.
    void openAccessibility();
    // Once when the window opens, then every second.
    void refresh();
    // Starts one verification request, unless claude cannot be found.
    void check();
    // Step 3's "Connect Claude".
    void connect();
    void startInstall();
    void signIn();
    void submitCode();
    void cancelSignIn();
    void openLoginPage();

    // The verification request itself; blocks for up to 40 seconds.
    static bool verify(const QString& path);

signals:
    void changed();

private:
    explicit Setup(Desk desk, QString installCommand);

    template <typename T>
    void assign(T& field, const T& value) {
        if (field == value) return;
        field = value;
        emit changed();
    }

    void verified(bool ok);
    void installed();
    void signInOutput(const QByteArray& chunk);
    void signInEnded(int status);

    Desk d_;
    QString installCommand_;

    QString name_;
    QString role_;
    QString language_;
    bool aboutDone_ = false;
    bool access_ = false;
    bool hasClaude_ = false;
    bool claudeOK_ = false;
    bool installing_ = false;
    bool checking_ = false;
    bool installFailed_ = false;
    bool wantsSignIn_ = false;
    bool signingIn_ = false;
    bool accessOpened_ = false;
    std::optional<QString> loginURL_;
    QString code_;
    QStringList restartApps_;
    QStringList preparedApps_;
    bool logOutDue_ = false;
    QString desktopNote_;

    // The running sign-in process (its standard input is loginIn); not owned by this object,
    // since it outlives a closed window until it ends or times out.
    QProcess* login_ = nullptr;
    std::optional<double> lastCheck_;  // absent: long ago, so the first refresh may check
};

}  // namespace setup
