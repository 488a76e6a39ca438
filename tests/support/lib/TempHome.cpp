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
    qputenv("HOME", dir_.path().toLocal8Bit());
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

QString TempHome::write(const QString& relative, const QByteArray& content) const {
    const QString full = dir_.path() + QLatin1Char('/') + relative;
    QDir().mkpath(QFileInfo(full).absolutePath());
    QFile file(full);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) file.write(content);
    return full;
}

QByteArray TempHome::read(const QString& relative) const {
    QFile file(dir_.path() + QLatin1Char('/') + relative);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.readAll();
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
