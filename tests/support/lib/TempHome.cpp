#include "TempHome.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

namespace testsupport {

namespace {
void setEnv(const QByteArray& name, const std::optional<QByteArray>& value) {
    if (value)
        qputenv(name.constData(), *value);
    else
        qunsetenv(name.constData());
}
}  // namespace

ScopedEnv::ScopedEnv(const Values& values) {
    for (const auto& [name, value] : values) {
        saved_[name] = qEnvironmentVariableIsSet(name.constData())
                           ? std::optional(qgetenv(name.constData()))
                           : std::nullopt;
        setEnv(name, value);
    }
}

ScopedEnv::~ScopedEnv() {
    for (const auto& [name, value] : saved_) setEnv(name, value);
}

TempHome::TempHome()
    : env_({{"HOME", path().toLocal8Bit()},
            {"XDG_DATA_HOME", std::nullopt},
            {"XDG_CONFIG_HOME", std::nullopt}}) {}

QString TempFolder::write(const QString& relative, const QByteArray& content) const {
    const QString full = dir_.path() + QLatin1Char('/') + relative;
    QDir().mkpath(QFileInfo(full).absolutePath());
    QFile file(full);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) file.write(content);
    return full;
}

QByteArray TempFolder::read(const QString& relative) const {
    QFile file(dir_.path() + QLatin1Char('/') + relative);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.readAll();
}

void startIn(QProcess& process, const QString& home, const QString& program,
             const QStringList& args) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("HOME"), home);
    env.remove(QStringLiteral("XDG_DATA_HOME"));
    env.remove(QStringLiteral("XDG_CONFIG_HOME"));
    process.setProcessEnvironment(env);
    process.start(program, args);
}

bool waitUntil(const std::function<bool()>& pred, int timeoutMs) {
    QDeadlineTimer deadline(timeoutMs);
    while (!pred()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(1);
    }
    return true;
}

}  // namespace testsupport
