#include "claude/Exchange.h"

#include <QDir>
#include <QJsonDocument>
#include <QPointer>
#include <QProcess>
#include <algorithm>

#include "claude/Locate.h"
#include "claude/Profile.h"
#include "claude/Warm.h"
#include "main/Constants.h"
#include "main/Graphemes.h"
#include "main/Log.h"
#include "main/Paths.h"

namespace claude {
namespace {

// A waiting process this old is replaced, so the one that answers is never stale.
constexpr double warmLifetime = 600.0;
// A claude that keeps failing (signed out, broken) is retried at once the first time, then
// after 2, 4, 8 ... seconds, at most a minute apart: each try starts a large program.
constexpr double firstRetryWait = 2.0;
constexpr double longestRetryWait = 60.0;

QStringList launchArguments(const QString& prompt) {
    // The empty strings are real arguments: no settings sources, no tools.
    return {QStringLiteral("-p"),
            QStringLiteral("--model"),
            glimmo::claudeModel,
            QStringLiteral("--no-session-persistence"),
            QStringLiteral("--setting-sources"),
            QString(),
            QStringLiteral("--strict-mcp-config"),
            QStringLiteral("--tools"),
            QString(),
            QStringLiteral("--input-format"),
            QStringLiteral("stream-json"),
            QStringLiteral("--output-format"),
            QStringLiteral("stream-json"),
            QStringLiteral("--verbose"),
            QStringLiteral("--include-partial-messages"),
            QStringLiteral("--system-prompt"),
            prompt};
}

// The JSON writer would quietly replace a lone surrogate, sending text the user never wrote.
bool hasUnpairedSurrogate(const QString& s) {
    for (qsizetype i = 0; i < s.size(); ++i) {
        if (s[i].isHighSurrogate()) {
            if (i + 1 < s.size() && s[i + 1].isLowSurrogate()) {
                ++i;
                continue;
            }
            return true;
        }
        if (s[i].isLowSurrogate()) return true;
    }
    return false;
}

QByteArray inputLine(const QString& text) {
    const QJsonObject message{{QStringLiteral("role"), QStringLiteral("user")},
                              {QStringLiteral("content"), text}};
    const QJsonObject record{{QStringLiteral("type"), QStringLiteral("user")},
                             {QStringLiteral("message"), message}};
    return QJsonDocument(record).toJson(QJsonDocument::Compact) + '\n';
}

QString oneDecimal(double seconds) {
    return QString::asprintf("%.1f", seconds);
}

// The answer of a result record, or nothing when the record reports a failure.
std::optional<QString> answerOf(const std::optional<QJsonObject>& record) {
    if (!record || record->isEmpty()) return std::nullopt;
    const QJsonValue isError = record->value(QLatin1String("is_error"));
    if (isError.isBool() && isError.toBool()) return std::nullopt;
    const QJsonValue result = record->value(QLatin1String("result"));
    if (!result.isString()) return std::nullopt;
    const QString answer = result.toString().trimmed();
    if (answer.isEmpty()) return std::nullopt;
    return answer;
}

}  // namespace

Exchange::Exchange(platform::Defaults& defaults, const platform::Clock& clock, Why why,
                   QObject* parent)
    : QObject(parent), defaults_(defaults), clock_(clock), why_(std::move(why)) {}

Exchange::~Exchange() {
    // Silence every callback first, then end and reap whatever still runs.
    warm_.reset();
    proc_.reset();
    running_.clear();
    for (QProcess* p : findChildren<QProcess*>(Qt::FindDirectChildrenOnly)) {
        if (p->state() == QProcess::NotRunning) continue;
        p->kill();
        p->waitForFinished(2000);
    }
}

void Exchange::warmUp() {
    if (warm_ && warm_->live() && clock_.now() - warm_->born < warmLifetime) return;
    if (warm_) {
        // One that ended before it was asked anything could not even start properly.
        if (!warm_->live()) failed();
        warm_->terminate();
        warm_.reset();
    }
    if (waitingToRetry()) return;
    const std::optional<QString> path = claudePath();
    if (!path) {
        claudeTrouble_ = true;
        return;
    }
    const QString directory = glimmo::supportDir();
    QDir().mkpath(directory);
    auto warm = std::make_shared<Warm>(clock_.now(), this);
    const std::optional<QString> error = warm->start(
        *path, launchArguments(Profile(defaults_).prompt()), claudeEnv(*path), directory);
    if (error) {
        glimmo::log(QStringLiteral("cannot start claude at ") + *path + QStringLiteral(": ") +
                    *error);
        claudeTrouble_ = true;
        failed();
        return;
    }
    warm_ = std::move(warm);
}

void Exchange::ask(const QString& text, OnPartial onPartial, OnDone onDone) {
    if (waitingToRetry()) {
        if (why_)
            why_(QStringLiteral("claude failing; next try in ") +
                 oneDecimal(retryAt_ - clock_.now()) + QLatin1Char('s'));
        return;
    }
    const double age = warm_ ? clock_.now() - warm_->born : -1.0;
    warmUp();
    if (!warm_) return;
    if (hasUnpairedSurrogate(text)) {
        // Nothing is sent and the waiting process stays for the next request.
        if (why_) why_(QStringLiteral("request not sent: broken text"));
        return;
    }
    std::shared_ptr<Warm> warm = std::move(warm_);
    warm_.reset();
    const qint64 generation = generation_;
    const double start = clock_.now();
    auto soFar = std::make_shared<QString>();
    const QPointer<Exchange> self(this);

    warm->onText = [self, generation, soFar, onPartial](const QString& piece) {
        if (!self || self->generation_ != generation) return;
        soFar->append(piece);
        if (onPartial) onPartial(soFar->trimmed());
    };
    warm->onResult = [self, generation, start, text, onDone,
                      age](const std::optional<QJsonObject>& record) {
        if (self) self->finish(generation, start, text, onDone, age, record);
    };
    const Warm* raw = warm.get();
    warm->onFinished = [self, raw] {
        if (self) self->release(raw);
    };
    proc_ = warm;
    running_.push_back(warm);
    warm->send(inputLine(text));
    warm->armWatchdog(watchdogMs_);
}

void Exchange::finish(qint64 generation, double start, const QString& text, const OnDone& onDone,
                      double age, const std::optional<QJsonObject>& record) {
    if (generation_ != generation) {
        // proc and pendingText belong to the newer request.
        if (why_) why_(QStringLiteral("stale reply dropped"));
        return;
    }
    proc_.reset();
    pendingText.reset();
    const QString elapsed = oneDecimal(clock_.now() - start);
    const std::optional<QString> answer = answerOf(record);
    if (!answer) {
        glimmo::log(QStringLiteral("claude failed after ") + elapsed + QLatin1Char('s'));
        claudeTrouble_ = true;
        failed();
        return;
    }
    claudeTrouble_ = false;
    succeeded();
    const QString kind = text.startsWith(QLatin1String("<reply>")) ? QStringLiteral("reply options")
                         : *answer == QLatin1String("=")           ? QStringLiteral("no change")
                                                                   : QStringLiteral("suggestion");
    glimmo::log(QString::number(glimmo::graphemeCount(text)) + QStringLiteral(" chars -> ") + kind +
                QStringLiteral(" in ") + elapsed + QStringLiteral("s (process ready for ") +
                oneDecimal(age) + QStringLiteral("s)"));
    if (onDone) onDone(*answer);
}

void Exchange::failed() {
    ++failuresInARow_;
    if (failuresInARow_ < 2) return;
    const int doublings = std::min(failuresInARow_ - 2, 6);
    retryAt_ = clock_.now() + std::min(firstRetryWait * (1 << doublings), longestRetryWait);
}

void Exchange::succeeded() {
    failuresInARow_ = 0;
    retryAt_ = 0;
}

bool Exchange::waitingToRetry() const {
    return failuresInARow_ >= 2 && clock_.now() < retryAt_;
}

std::optional<double> Exchange::retryAt() const {
    if (!waitingToRetry()) return std::nullopt;
    return retryAt_;
}

void Exchange::setClaudeTrouble(bool value) {
    claudeTrouble_ = value;
    if (!value) succeeded();
}

void Exchange::release(const Warm* done) {
    std::erase_if(running_, [done](const std::shared_ptr<Warm>& w) { return w.get() == done; });
}

void Exchange::cancel() {
    ++generation_;
    if (proc_) {
        proc_->terminate();
        proc_.reset();
    }
    pendingText.reset();
}

void Exchange::dropWarm() {
    if (!warm_) return;
    warm_->terminate();
    warm_.reset();
}

bool Exchange::requestInFlight() const {
    return proc_ != nullptr;
}

bool Exchange::hasWarm() const {
    return warm_ != nullptr;
}

}  // namespace claude
