#include "GtkEditor.h"

#include <QThread>
#include <csignal>

#include "TempHome.h"

GtkEditor::GtkEditor(const QStringList& args, const QString& program) {
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(program.isEmpty() ? qEnvironmentVariable("GLIMMO_GTK_EDITOR") : program, args);
    if (!process_.waitForStarted(5000)) return;
    ready_ = testsupport::waitUntil(
        [&] {
            drain();
            return lines_.contains(QStringLiteral("ready"));
        },
        15000);
    // The window manager needs a moment to make the new window the active one.
    testsupport::waitUntil([] { return false; }, 300);
}

GtkEditor::~GtkEditor() {
    process_.terminate();
    if (!process_.waitForFinished(3000)) process_.kill();
    process_.waitForFinished(1000);
}

void GtkEditor::drain() {
    // Lines written while no event loop ran (a check right after a blocking key call) are read
    // here, not left to the next event loop.
    while (process_.waitForReadyRead(0)) {
    }
    while (process_.canReadLine()) lines_ << QString::fromUtf8(process_.readLine()).trimmed();
}

QStringList GtkEditor::keys() {
    drain();
    QStringList out;
    for (const QString& l : lines_)
        if (l.startsWith(QLatin1String("key "))) out << l.mid(4);
    return out;
}

void GtkEditor::clearKeys() {
    drain();
    lines_.clear();
}

std::optional<QRect> GtkEditor::caret() {
    drain();
    for (auto it = lines_.crbegin(); it != lines_.crend(); ++it) {
        const QStringList f = it->split(' ');
        if (f.size() == 5 && f[0] == QLatin1String("caret"))
            return QRect(f[1].toInt(), f[2].toInt(), f[3].toInt(), f[4].toInt());
    }
    return std::nullopt;
}

Stopped::Stopped(qint64 pid) : pid_(pid) {
    ::kill(pid_t(pid_), SIGSTOP);
}

void Stopped::resume() {
    ::kill(pid_t(pid_), SIGCONT);
}
