#pragma once
// The built program started as a user starts it (no mode flag), in a home folder of its own.
// Its claude-path names the scripted claude stand-in, whose files (script, recorded input)
// live under that home's standin/ folder. Its bubble is found among the X windows by its
// title and this process id.

#include <gtest/gtest.h>

#include <QByteArray>
#include <QProcess>
#include <QRect>
#include <QString>
#include <iostream>
#include <optional>

#include "DesktopHelpers.h"
#include "TempHome.h"
#include "platform/linux/atspi/AtspiAx.h"

// A stand-in script that answers every request with text.
inline QByteArray answer(const QString& text) {
    return "answer " + text.toUtf8() + "\n";
}

class GlimmoRun {
public:
    // script: what the stand-in plays for every request (see the stand-in's main.cpp).
    explicit GlimmoRun(const QByteArray& script);
    ~GlimmoRun();
    GlimmoRun(const GlimmoRun&) = delete;
    GlimmoRun& operator=(const GlimmoRun&) = delete;

    // True once the program runs and its key tap is in place.
    bool started() const { return started_; }
    qint64 pid() const { return process_.processId(); }
    bool running() const { return process_.state() == QProcess::Running; }

    // The stand-in reads its script again when a request's input ends, so this steers the
    // process that is already waiting.
    void setScript(const QByteArray& script);
    // A stand-in file (script, stdin, runs, ...); empty when absent.
    QByteArray standinFile(const QString& name) const;
    bool hasStandinFile(const QString& name) const;

    QString log() const;     // the program's log.txt
    QString output() const;  // what it printed on standard output and error

    // The visible bubble window's frame in root coordinates; absent while none is shown.
    std::optional<QRect> bubble() const;

private:
    testsupport::TempFolder home_;
    QProcess process_;
    bool started_ = false;
};

// Cases that share one running program, reading the edited text box through AT-SPI; a failed
// case prints the program's log and output and the box's text.
class WithGlimmo : public ::testing::Test {
protected:
    void TearDown() override {
        if (!HasFailure()) return;
        std::cerr << "--- log.txt\n"
                  << glimmo->log().toStdString() << "--- output\n"
                  << glimmo->output().toStdString() << "--- text\n"
                  << value().toStdString() << "\n";
    }
    QString value() const { return field ? desktop::string(*ax, field, "AXValue") : QString(); }
    // The bubble waits for a pause, the stand-in's answer and a poll: a few seconds at most.
    bool bubbleShown(bool shown, int timeoutMs = 15000) const {
        return testsupport::waitUntil([&] { return glimmo->bubble().has_value() == shown; },
                                      timeoutMs);
    }
    static void pause(int ms) {
        testsupport::waitUntil([] { return false; }, ms);
    }

    static inline GlimmoRun* glimmo = nullptr;
    static inline linuxdesk::AtspiAx* ax = nullptr;
    platform::Element field;
};
