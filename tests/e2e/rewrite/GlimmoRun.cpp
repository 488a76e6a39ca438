#include "GlimmoRun.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>

#include "DesktopHelpers.h"
#include "TempHome.h"

namespace {
const QString kLog = QStringLiteral(".local/share/Glimmo/log.txt");
}

GlimmoRun::GlimmoRun(const QByteArray& script) {
    writeHome(QStringLiteral(".local/share/Glimmo/claude-path"), GLIMMO_STANDIN_PATH "\n");
    // A user who finished setting up: no setup window takes the focus from the editor.
    writeHome(QStringLiteral(".config/Glimmo/defaults.json"), R"({"name": "Alex"})");
    setScript(script);

    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("HOME"), home_.path());
    env.remove(QStringLiteral("XDG_DATA_HOME"));
    env.remove(QStringLiteral("XDG_CONFIG_HOME"));
    process_.setProcessEnvironment(env);
    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.setStandardOutputFile(home_.filePath(QStringLiteral("output.txt")));
    process_.start(QStringLiteral(GLIMMO_BINARY), {});
    if (!process_.waitForStarted(5000)) return;
    started_ = testsupport::waitUntil(
        [&] {
            return process_.state() == QProcess::Running &&
                   log().contains(QLatin1String("keyboard tap installed"));
        },
        15000);
}

GlimmoRun::~GlimmoRun() {
    // SIGTERM quits through the event loop, which ends the waiting stand-in too.
    process_.terminate();
    if (!process_.waitForFinished(5000)) process_.kill();
    process_.waitForFinished(1000);
}

void GlimmoRun::setScript(const QByteArray& script) {
    writeHome(QStringLiteral("standin/script"), script);
}

QByteArray GlimmoRun::standinFile(const QString& name) const {
    return readHome(QStringLiteral("standin/") + name);
}

bool GlimmoRun::hasStandinFile(const QString& name) const {
    return QFileInfo::exists(home_.filePath(QStringLiteral("standin/") + name));
}

QString GlimmoRun::log() const {
    return QString::fromUtf8(readHome(kLog));
}

QString GlimmoRun::output() const {
    return QString::fromUtf8(readHome(QStringLiteral("output.txt")));
}

std::optional<QRect> GlimmoRun::bubble() const {
    return desktop::bubbleFrame(pid());
}

QByteArray GlimmoRun::readHome(const QString& relative) const {
    QFile file(home_.filePath(relative));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.readAll();
}

void GlimmoRun::writeHome(const QString& relative, const QByteArray& content) const {
    const QString full = home_.filePath(relative);
    QDir().mkpath(QFileInfo(full).absolutePath());
    QFile file(full);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) file.write(content);
}
