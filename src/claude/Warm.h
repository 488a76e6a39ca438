#pragma once
// One started claude process: it waits on its standard input until a request takes it, then
// answers that one request and exits. Never reused.

#include <QJsonObject>
#include <QMetaObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "claude/StreamParser.h"

namespace claude {

class Warm : public std::enable_shared_from_this<Warm> {
public:
    using OnResult = std::function<void(const std::optional<QJsonObject>& record)>;
    using OnText = std::function<void(const QString& piece)>;

    // processParent outlives every process: destroying it kills and reaps what is still running.
    Warm(double born, QObject* processParent);
    ~Warm();
    Warm(const Warm&) = delete;
    Warm& operator=(const Warm&) = delete;

    // Starts the program; the error description when it cannot be started.
    std::optional<QString> start(const QString& program, const QStringList& arguments,
                                 const QProcessEnvironment& environment, const QString& directory);
    // Running, and its output still open: worth keeping as the waiting process.
    bool live() const;
    // Writes the one input line and closes the input, so the child answers and exits.
    void send(const QByteArray& line);
    // Terminates the child if it still runs; a child that ignores the request is killed later.
    void terminate();
    // Terminates the child if it still runs after msec.
    void armWatchdog(int msec);

    QProcess* p;
    const double born;
    StreamParser buffer;
    OnResult onResult;
    OnText onText;
    bool answered = false;
    // Called once the process has exited and everything it wrote was delivered.
    std::function<void()> onFinished;

private:
    void readOutput();
    void endOfOutput();
    void deliver(StreamBatch batch);
    void deliverResult(const std::optional<QJsonObject>& record);

    std::vector<QMetaObject::Connection> connections_;
    bool finished_ = false;
};

}  // namespace claude
