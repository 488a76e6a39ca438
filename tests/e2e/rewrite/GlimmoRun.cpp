#include "GlimmoRun.h"

#include <QFileInfo>

namespace {
const QString kLog = QStringLiteral(".local/share/Glimmo/log.txt");
}

GlimmoRun::GlimmoRun(const QByteArray& script) {
    home_.write(QStringLiteral(".local/share/Glimmo/claude-path"), GLIMMO_STANDIN_PATH "\n");
    // A user who finished setting up: no setup window takes the focus from the editor.
    home_.write(QStringLiteral(".config/Glimmo/defaults.json"), R"({"name": "Alex"})");
    setScript(script);
    // A failed case prints the log: with the engine's notes it says why.
    home_.write(QStringLiteral(".local/share/Glimmo/debug.flag"), {});

    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.setStandardOutputFile(home_.path() + QStringLiteral("/output.txt"));
    testsupport::startIn(process_, home_.path(), QStringLiteral(GLIMMO_BINARY));
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
    home_.write(QStringLiteral("standin/script"), script);
}

QByteArray GlimmoRun::standinFile(const QString& name) const {
    return home_.read(QStringLiteral("standin/") + name);
}

bool GlimmoRun::hasStandinFile(const QString& name) const {
    return QFileInfo::exists(home_.path() + QStringLiteral("/standin/") + name);
}

QString GlimmoRun::log() const {
    return QString::fromUtf8(home_.read(kLog));
}

QString GlimmoRun::output() const {
    return QString::fromUtf8(home_.read(QStringLiteral("output.txt")));
}

std::optional<QRect> GlimmoRun::bubble() const {
    return desktop::bubbleFrame(pid());
}
