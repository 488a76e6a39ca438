#pragma once
// The built program started as a user starts it (no mode flag), in a home folder of its own.
// Its claude-path names the scripted claude stand-in, whose files (script, recorded input)
// live under that home's standin/ folder. Its bubble is found among the X windows by its
// title and this process id.

#include <QByteArray>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QTemporaryDir>
#include <optional>

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
    QByteArray readHome(const QString& relative) const;
    void writeHome(const QString& relative, const QByteArray& content) const;

    QTemporaryDir home_;
    QProcess process_;
    bool started_ = false;
};
