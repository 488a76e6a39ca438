#include "setup/TryIt.h"

#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>
#include <QTimer>

namespace setup {

namespace {

// The editor gets this long after its window appears to show the file and focus its text.
constexpr int kSettleMs = 800;
// An editor that is not running this long after the open never came.
constexpr int kWaitForEditorMs = 10'000;
// How often the editor is looked for while it starts.
constexpr int kEditorPollMs = 200;

void placeCaret(platform::Ax& ax, platform::Workspace& workspace, const QString& editor) {
    const auto apps = workspace.running(editor);
    if (apps.empty()) return;
    const platform::Element app = ax.application(apps.front().pid);
    if (!app) return;
    const auto focused = ax.attribute(app, QStringLiteral("AXFocusedUIElement"));
    if (!focused || !std::holds_alternative<platform::Element>(*focused)) return;
    const platform::Element field = std::get<platform::Element>(*focused);
    if (!field) return;
    ax.setAttribute(field, QStringLiteral("AXSelectedTextRange"),
                    platform::Range{trySample().size(), 0});
}

}  // namespace

QString trySample() {
    return QStringLiteral(
               "Type a sentence below the way you'd normally write it, in any language. Pause for "
               "a second, then press Tab to use Glimmo's version.") +
           QStringLiteral("\n\n");
}

QString tryFile() {
    return QDir::tempPath() + QStringLiteral("/Try Glimmo.txt");
}

void tryIt(platform::Ax& ax, platform::Workspace& workspace, std::function<void()> done) {
    if (!done) done = [] {};
    QSaveFile file(tryFile());
    if (file.open(QIODevice::WriteOnly)) {
        file.write(trySample().toUtf8());
        file.commit();
    }
    const auto editor = workspace.textEditor();
    // The default application for the file first; the editor's own launch where no opener is.
    const bool opened = workspace.openFile(tryFile(), QString()) ||
                        (editor && workspace.openFile(tryFile(), *editor));
    // Without a named editor there is no telling which window shows the file.
    if (!opened || !editor) {
        done();
        return;
    }
    // An open on this desktop completes when the editor's window is there.
    auto* poll = new QTimer(QCoreApplication::instance());
    auto waited = std::make_shared<int>(0);
    QObject::connect(poll, &QTimer::timeout, poll,
                     [&ax, &workspace, editor = *editor, done, poll, waited] {
                         *waited += kEditorPollMs;
                         const bool there = !workspace.running(editor).empty();
                         if (!there && *waited < kWaitForEditorMs) return;
                         poll->stop();
                         poll->deleteLater();
                         if (!there) {
                             done();
                             return;
                         }
                         QTimer::singleShot(kSettleMs, QCoreApplication::instance(),
                                            [&ax, &workspace, editor, done] {
                                                placeCaret(ax, workspace, editor);
                                                done();
                                            });
                     });
    poll->start(kEditorPollMs);
}

}  // namespace setup
