#include "claude/Warm.h"

#include <QTimer>

namespace claude {
namespace {

// How long a child may ignore the terminate signal before it is killed.
constexpr int killGraceMs = 3000;

void terminateProcess(QProcess* p) {
    if (p->state() == QProcess::NotRunning) return;
    p->terminate();
    QTimer::singleShot(killGraceMs, p, [p] {
        if (p->state() != QProcess::NotRunning) p->kill();
    });
}

}  // namespace

Warm::Warm(double born, QObject* processParent) : p(new QProcess(processParent)), born(born) {
    p->setStandardErrorFile(QProcess::nullDevice());
    connections_.push_back(
        QObject::connect(p, &QProcess::readyReadStandardOutput, [this] { readOutput(); }));
    connections_.push_back(
        QObject::connect(p, &QProcess::readChannelFinished, [this] { endOfOutput(); }));
    connections_.push_back(
        QObject::connect(p, &QProcess::finished, [this](int, QProcess::ExitStatus) {
            const auto keep = shared_from_this();
            finished_ = true;
            endOfOutput();
            if (onFinished) onFinished();
        }));
}

Warm::~Warm() {
    for (const auto& c : connections_) QObject::disconnect(c);
    // The process object goes once the child is reaped, so no zombie and no open pipe is left.
    if (finished_ || p->state() == QProcess::NotRunning) {
        p->deleteLater();
    } else {
        QObject::connect(p, &QProcess::finished, p, &QObject::deleteLater);
        terminateProcess(p);
    }
}

std::optional<QString> Warm::start(const QString& program, const QStringList& arguments,
                                   const QProcessEnvironment& environment,
                                   const QString& directory) {
    p->setProgram(program);
    p->setArguments(arguments);
    p->setProcessEnvironment(environment);
    p->setWorkingDirectory(directory);
    p->start(QIODevice::ReadWrite);
    if (!p->waitForStarted(10000)) return p->errorString();
    return std::nullopt;
}

bool Warm::live() const {
    return p->state() == QProcess::Running && !finished_;
}

void Warm::send(const QByteArray& line) {
    p->write(line);  // a write error is of no interest: the end of output reports the failure
    p->closeWriteChannel();
}

void Warm::terminate() {
    terminateProcess(p);
}

void Warm::armWatchdog(int msec) {
    QProcess* process = p;
    QTimer::singleShot(msec, process, [process] { terminateProcess(process); });
}

void Warm::readOutput() {
    const auto keep = shared_from_this();
    deliver(buffer.feed(p->readAllStandardOutput()));
}

void Warm::endOfOutput() {
    const auto keep = shared_from_this();
    // Bytes still queued are read first; a partial line left at the end is never parsed.
    if (p->bytesAvailable() > 0) deliver(buffer.feed(p->readAllStandardOutput()));
    deliverResult(std::nullopt);
}

void Warm::deliver(StreamBatch batch) {
    if (!batch.text.isEmpty() && !answered && onText) onText(batch.text);
    // Only the first result of a read counts; later ones of the same read are dropped.
    if (!batch.results.empty()) deliverResult(batch.results.front());
}

void Warm::deliverResult(const std::optional<QJsonObject>& record) {
    if (answered || !onResult) return;
    answered = true;
    onResult(record);
}

}  // namespace claude
