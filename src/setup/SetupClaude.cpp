// Step 3 of Setup: verifying, installing and signing in the claude program.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QTimer>
#include <QUrl>
#include <thread>

#include "claude/Locate.h"
#include "main/Constants.h"
#include "main/Log.h"
#include "main/Paths.h"
#include "setup/Setup.h"

namespace setup {

namespace {

constexpr int kVerifyLimitMs = 40'000;
constexpr int kSignInLimitMs = 900'000;
// How long a terminated child gets before it is killed.
constexpr int kGraceMs = 3'000;

const char kPrompt[] = "Reply with the word OK.";
const QString kVerifiedKey = QStringLiteral("claudeVerified");

// The support folder is the children's working directory: a process cannot start in a
// folder that does not exist yet, as on a fresh profile.
QString workingFolder() {
    const QString folder = glimmo::supportDir();
    QDir().mkpath(folder);
    return folder;
}

// Runs work on a thread of its own, then done(result) on the main thread.
template <typename Work, typename Done>
void offMainThread(Work work, Done done) {
    std::thread([work = std::move(work), done = std::move(done)]() mutable {
        auto result = work();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [done = std::move(done), result]() mutable { done(result); }, Qt::QueuedConnection);
    }).detach();
}

void endProcess(QProcess& p) {
    if (p.state() == QProcess::NotRunning) return;
    p.terminate();
    if (!p.waitForFinished(kGraceMs)) {
        p.kill();
        p.waitForFinished(kGraceMs);
    }
}

}  // namespace

QString Setup::defaultInstallCommand() {
    return QStringLiteral("curl -fsSL https://claude.ai/install.sh | bash");
}

bool Setup::verify(const QString& path) {
    QProcess p;
    p.setProgram(path);
    p.setArguments({QStringLiteral("-p"), QStringLiteral("--model"), glimmo::claudeModel,
                    QStringLiteral("--no-session-persistence"), QStringLiteral("--setting-sources"),
                    QString(), QStringLiteral("--strict-mcp-config"), QStringLiteral("--tools"),
                    QString()});
    p.setProcessEnvironment(claude::claudeEnv(path));
    p.setWorkingDirectory(workingFolder());
    p.setStandardErrorFile(QProcess::nullDevice());
    p.start();
    if (!p.waitForStarted()) return false;
    p.write(kPrompt);
    p.closeWriteChannel();
    if (!p.waitForFinished(kVerifyLimitMs)) endProcess(p);
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString out = utf8(p.readAllStandardOutput());
    if (utf8.hasError()) out.clear();
    return p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0 &&
           out.toUpper().contains(QLatin1String("OK")) &&
           !out.toLower().contains(QLatin1String("log in"));
}

void Setup::check() {
    const auto path = claude::claudePath();
    if (!path) return;
    setChecking(true);
    lastCheck_ = d_.clock.now();
    offMainThread([path = *path] { return verify(path); },
                  [self = shared_from_this()](bool ok) { self->verified(ok); });
}

void Setup::verified(bool ok) {
    setChecking(false);
    if (!ok || claudeOK_) return;
    setClaudeOK(true);
    d_.defaults.setBool(kVerifiedKey, true);
    glimmo::log(QStringLiteral("setup: claude answers"));
    onProgress();
}

void Setup::startInstall() {
    setInstalling(true);
    setInstallFailed(false);
    const QString command = installCommand_;
    const QString logPath = workingFolder() + QStringLiteral("/install-claude.log");
    offMainThread(
        [command, logPath] {
            QProcess p;
            p.setProgram(QStringLiteral("/bin/bash"));
            p.setArguments({QStringLiteral("-c"), command});
            QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
            env.insert(QStringLiteral("PATH"), QStringLiteral("/usr/bin:/bin:/usr/sbin:/sbin"));
            p.setProcessEnvironment(env);
            QFile log(logPath);
            const bool captured = log.open(QIODevice::WriteOnly | QIODevice::Truncate);
            log.close();
            p.setProcessChannelMode(QProcess::MergedChannels);
            p.setStandardOutputFile(captured ? logPath : QProcess::nullDevice());
            p.setStandardInputFile(QProcess::nullDevice());
            p.start();
            p.waitForFinished(-1);
            return true;  // judged afterwards only by whether claude is there
        },
        [self = shared_from_this()](bool) { self->installed(); });
}

void Setup::installed() {
    setInstalling(false);
    setHasClaude(claude::claudePath().has_value());
    glimmo::log(QStringLiteral("setup: install ") +
                (hasClaude_ ? QStringLiteral("done") : QStringLiteral("failed")));
    if (hasClaude_ && wantsSignIn_) {
        setWantsSignIn(false);
        signIn();
    }
    if (!hasClaude_) setInstallFailed(wantsSignIn_);
}

void Setup::signIn() {
    const auto path = claude::claudePath();
    if (!path || login_) return;
    setSigningIn(true);
    setLoginURL(std::nullopt);
    setCode(QString());

    auto* p = new QProcess;  // outlives this object if the window closes; deletes itself
    p->setProgram(*path);
    p->setArguments(
        {QStringLiteral("auth"), QStringLiteral("login"), QStringLiteral("--claudeai")});
    p->setProcessEnvironment(claude::claudeEnv(*path));
    p->setWorkingDirectory(workingFolder());
    p->setProcessChannelMode(QProcess::MergedChannels);
    const std::weak_ptr<Setup> weak = weak_from_this();
    QObject::connect(p, &QProcess::readyReadStandardOutput, p, [p, weak] {
        const QByteArray chunk = p->readAllStandardOutput();
        if (const auto self = weak.lock()) self->signInOutput(chunk);
    });
    QObject::connect(p, &QProcess::finished, p, [p, weak](int status) {
        if (const auto self = weak.lock()) self->signInEnded(status);
        p->deleteLater();
    });
    p->start();
    if (!p->waitForStarted()) {
        setSigningIn(false);
        glimmo::log(QStringLiteral("setup: cannot start sign-in: ") + p->errorString());
        p->deleteLater();
        return;
    }
    login_ = p;
    glimmo::log(QStringLiteral("setup: sign-in started"));
    QTimer::singleShot(kSignInLimitMs, p, [p] {
        if (p->state() != QProcess::NotRunning) p->terminate();
    });
}

void Setup::signInOutput(const QByteArray& chunk) {
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(chunk);
    if (utf8.hasError()) return;
    static const QRegularExpression address(QStringLiteral("https://[^\\s]+"));
    const auto match = address.match(text);
    if (!match.hasMatch()) return;
    const QUrl url(match.captured(0), QUrl::StrictMode);
    if (url.isValid()) setLoginURL(match.captured(0));
}

void Setup::signInEnded(int status) {
    glimmo::log(QStringLiteral("setup: sign-in ended (%1)").arg(status));
    login_ = nullptr;
    setSigningIn(false);
    check();
}

void Setup::submitCode() {
    const QString text = code_.trimmed();
    if (text.isEmpty() || !login_) return;
    login_->write((text + QLatin1Char('\n')).toUtf8());
}

void Setup::cancelSignIn() {
    if (login_) login_->terminate();
}

void Setup::openLoginPage() {
    if (loginURL_) d_.workspace.openUrl(*loginURL_);
}

}  // namespace setup
