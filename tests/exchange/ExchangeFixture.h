#pragma once
// An Exchange inside a temporary home, pointed at the claude stand-in, with a clock moved by hand.

#include <gtest/gtest.h>
#include <signal.h>

#include <QDir>
#include <QFile>
#include <QStringList>
#include <memory>
#include <optional>

#include "Standin.h"
#include "TempHome.h"
#include "claude/Exchange.h"
#include "main/Paths.h"
#include "platform/Defaults.h"
#include "platform/fake/Clock.h"

namespace claude {
// The one door into the exchange's private part: the watchdog period.
struct ExchangeProbe {
    static int watchdogMs(const Exchange& e) { return e.watchdogMs_; }
    static void setWatchdogMs(Exchange& e, int ms) { e.watchdogMs_ = ms; }
};
}  // namespace claude

namespace exchangetest {

// What one request delivered to its caller.
struct Outcome {
    QStringList partials;
    QStringList done;  // more than one entry would be a fault
};

class ExchangeTest : public ::testing::Test {
protected:
    void SetUp() override {
        testsupport::useStandin(home);
        exchange = std::make_unique<claude::Exchange>(defaults, clock,
                                                      [this](const QString& n) { notes << n; });
    }

    void script(const QByteArray& text) { testsupport::setStandinScript(home, text); }

    // Sends a request and returns at once; the outcome fills in as the answer arrives.
    std::shared_ptr<Outcome> send(const QString& text) {
        auto outcome = std::make_shared<Outcome>();
        exchange->ask(
            text, [outcome](const QString& s) { outcome->partials << s; },
            [outcome](const QString& s) { outcome->done << s; });
        return outcome;
    }

    // Sends a request and waits until it is no longer in flight.
    std::shared_ptr<Outcome> ask(const QString& text, int timeoutMs = 5000) {
        auto outcome = send(text);
        testsupport::waitUntil([this] { return !exchange->requestInFlight(); }, timeoutMs);
        return outcome;
    }

    // Log lines without their time stamps.
    QStringList logLines() const {
        QFile file(glimmo::logFile());
        if (!file.open(QIODevice::ReadOnly)) return {};
        QStringList lines;
        for (const QString& line :
             QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts))
            lines << line.section(' ', 1);
        return lines;
    }

    QStringList runs() const {
        return QString::fromLatin1(testsupport::standinRecord(home, "runs"))
            .split('\n', Qt::SkipEmptyParts);
    }

    static bool alive(const QString& pid) {
        EXPECT_GT(pid.toInt(), 0);
        return pid.toInt() > 0 && ::kill(pid.toInt(), 0) == 0;
    }

    testsupport::TempHome home;
    platform::MemoryDefaults defaults;
    fake::Clock clock;
    QStringList notes;
    std::unique_ptr<claude::Exchange> exchange;
};

}  // namespace exchangetest
