#pragma once
// The GTK test editor as a child process: started, waited for, and listened to (it prints
// every key press that reaches its window). Another test application that prints "ready" the
// same way (the Qt editor) can be given as the program.

#include <QProcess>
#include <QRect>
#include <QStringList>
#include <optional>

class GtkEditor {
public:
    // program: $GLIMMO_GTK_EDITOR when empty.
    explicit GtkEditor(const QStringList& args = {}, const QString& program = {});
    ~GtkEditor();
    // True once the window is up and focused.
    bool ready() const { return ready_; }
    qint64 pid() const { return process_.processId(); }
    // Key lines seen so far ("key Tab 0", "key ISO_Left_Tab 1", ...), read on demand.
    QStringList keys();
    void clearKeys();
    // The box of the character before the text view's caret as the editor last reported it, in
    // the X server's pixels on the root window; absent before the first report.
    std::optional<QRect> caret();

private:
    void drain();

    QProcess process_;
    QStringList lines_;
    bool ready_ = false;
};

// A test application's process stopped (SIGSTOP), as a hung application is, until resume() or
// until this goes.
class Stopped {
public:
    explicit Stopped(qint64 pid);
    ~Stopped() { resume(); }
    Stopped(const Stopped&) = delete;
    Stopped& operator=(const Stopped&) = delete;
    void resume();

private:
    qint64 pid_;
};
