#include "setup/SetupWindow.h"

#include <QPointer>
#include <QTimer>

#include "claude/Locate.h"
#include "setup/SetupView.h"

namespace setup {

namespace {

constexpr int kStepsPollMs = 1000;

}  // namespace

QWidget* makeSetupWindow(Setup::Desk desk, SetupHooks hooks) {
    auto model = Setup::create(desk);
    model->onSaved = hooks.onSaved;
    SetupActions actions;
    actions.showApps = hooks.showApps;
    actions.tryIt = hooks.tryIt;
    auto* view = new SetupView(model, {});
    const QPointer<QWidget> window(view);
    actions.close = [window] {
        if (window) window->close();
    };
    view->setActions(actions);
    view->setAttribute(Qt::WA_DeleteOnClose);
    // The model may outlive the window while a verification finishes.
    model->onProgress = [window, bring = hooks.bringToFront] {
        if (window) bring(window);
    };

    model->refresh();
    if (!claude::claudePath() && !model->installing()) model->startInstall();
    auto* poll = new QTimer(view);
    QObject::connect(poll, &QTimer::timeout, view, [model] { model->refresh(); });
    poll->start(kStepsPollMs);
    return view;
}

}  // namespace setup
