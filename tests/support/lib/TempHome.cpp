#include "TempHome.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

namespace testsupport {

TempHome::TempHome() {
    for (const char* name : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
        saved_[name] =
            qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt;
    }
    qputenv("HOME", path().toLocal8Bit());
    qunsetenv("XDG_DATA_HOME");
    qunsetenv("XDG_CONFIG_HOME");
}

TempHome::~TempHome() {
    for (const auto& [name, value] : saved_) {
        if (value)
            qputenv(name.constData(), *value);
        else
            qunsetenv(name.constData());
    }
}

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
