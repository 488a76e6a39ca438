#pragma once
// The setup window's content: a header, the three steps of Setup and a footer. It holds no
// logic: every control calls one operation of the model (or one of the actions), and every
// text follows from the model's properties, redrawn on each change.

#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>

#include "setup/Setup.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace setup {

class SetupStep;

struct SetupActions {
    std::function<void()> close = [] {};
    std::function<void()> showApps = [] {};  // the apps window
    std::function<void()> tryIt = [] {};     // the sample in the text editor
};

class SetupView : public QWidget {
    Q_OBJECT
public:
    SetupView(std::shared_ptr<Setup> model, SetupActions actions, QWidget* parent = nullptr);

    const std::shared_ptr<Setup>& model() const { return s_; }
    void setActions(SetupActions actions) { actions_ = std::move(actions); }
    // Colours for this view and its controls (the application's palette unless told).
    void usePalette(const QPalette& palette);
    // The button Return triggers now: the current step's, or the footer's once all is done.
    QPushButton* defaultButton() const;

    // 500 wide, as high as the content.
    QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;

private:
    void fit();
    QWidget* header();
    QWidget* aboutContent();
    QWidget* accessContent();
    QWidget* claudeContent();
    QWidget* footer();
    void sync();
    void pressDefault();

    std::shared_ptr<Setup> s_;
    SetupActions actions_;

    QLabel* title_ = nullptr;
    QLabel* subtitle_ = nullptr;
    SetupStep* steps_[3] = {};

    QLineEdit* name_ = nullptr;
    QLineEdit* role_ = nullptr;
    QLineEdit* language_ = nullptr;
    QPushButton* save_ = nullptr;

    QLabel* accessText_ = nullptr;
    QLabel* restartHint_ = nullptr;
    QLabel* restartNote_ = nullptr;
    QPushButton* accessButton_ = nullptr;

    QWidget* preparing_ = nullptr;
    QWidget* signingIn_ = nullptr;
    QWidget* ready_ = nullptr;
    QPushButton* openPage_ = nullptr;
    QLineEdit* code_ = nullptr;
    QPushButton* submit_ = nullptr;
    QPushButton* connect_ = nullptr;
    QWidget* checking_ = nullptr;
    QLabel* failed_ = nullptr;

    QWidget* unfinished_ = nullptr;
    QWidget* finished_ = nullptr;
    QPushButton* tryIt_ = nullptr;
};

}  // namespace setup
