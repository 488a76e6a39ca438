#pragma once
// The claude exchange: one process started ahead of time waits for the next request; a request
// takes it, writes one stream-json message, streams text back and ends with one result.

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Clock.h"
#include "platform/Defaults.h"

namespace claude {

class Warm;

class Exchange : public QObject {
    Q_OBJECT
public:
    using Why = std::function<void(const QString&)>;
    using OnPartial = std::function<void(const QString& soFar)>;
    using OnDone = std::function<void(const QString& answer)>;

    // defaults: the profile that the system prompt is built from. why: the engine's debug notes.
    Exchange(platform::Defaults& defaults, const platform::Clock& clock, Why why,
             QObject* parent = nullptr);
    ~Exchange() override;

    // Makes sure a live process younger than 600 seconds waits.
    void warmUp();
    // Sends one request. onDone is called at most once, and only on success.
    void ask(const QString& text, OnPartial onPartial, OnDone onDone);
    // Abandons the request in flight: generation moves on, its process is terminated, proc and
    // pendingText are cleared.
    void cancel();
    // Terminates the waiting process, if any.
    void dropWarm();

    bool requestInFlight() const;  // proc present
    bool hasWarm() const;
    qint64 generation() const { return generation_; }
    bool claudeTrouble() const { return claudeTrouble_; }
    // Clearing the flag is the user's "sign in again": the next request is sent at once.
    void setClaudeTrouble(bool value);
    // While claude keeps failing, requests and restarts wait until this time on the clock.
    std::optional<double> retryAt() const;

    // The whole field text whose rewrite is in flight (set by the caller of ask).
    std::optional<QString> pendingText;

private:
    friend struct ExchangeProbe;  // tests shorten the watchdog

    void finish(qint64 generation, double start, const QString& text, const OnDone& onDone,
                double age, const std::optional<QJsonObject>& record);
    void release(const Warm* done);
    void failed();
    void succeeded();
    bool waitingToRetry() const;

    platform::Defaults& defaults_;
    const platform::Clock& clock_;
    Why why_;
    std::shared_ptr<Warm> warm_;
    std::shared_ptr<Warm> proc_;
    // Every asked process until it has exited, so its end of output is still heard after a cancel.
    std::vector<std::shared_ptr<Warm>> running_;
    int watchdogMs_ = 20000;
    qint64 generation_ = 0;
    bool claudeTrouble_ = false;
    int failuresInARow_ = 0;
    double retryAt_ = 0;
};

}  // namespace claude
