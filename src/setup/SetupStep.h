#pragma once
// One numbered step of the setup window: a round badge (a tick once done), the title, and the
// step's content, shown only while the step is the current one.

#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace setup {

class SetupStep : public QWidget {
    Q_OBJECT
public:
    // content is owned by the step.
    SetupStep(int n, const QString& title, QWidget* content, QWidget* parent = nullptr);

    void set(bool done, bool active);
    // A line under the content, shown or hidden by the owner whatever the step's state.
    void addNote(QWidget* note);
    bool done() const { return done_; }
    bool active() const { return active_; }

private:
    class Badge;

    int n_;
    bool done_ = false;
    bool active_ = false;
    Badge* badge_;
    QLabel* title_;
    QWidget* content_;
    QVBoxLayout* column_;
};

}  // namespace setup
