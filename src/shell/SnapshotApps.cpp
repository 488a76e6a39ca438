#include "shell/SnapshotApps.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <optional>

#include "overlay/Style.h"
#include "platform/JsonDefaults.h"
#include "platform/linux/x11/X11Workspace.h"
#include "rules/AppRules.h"
#include "setup/AppsView.h"

namespace shell {

namespace {

// width absent: the view's fitting width. A failure skips the image.
void render(const QString& path, const QSet<QString>& startOpen, std::optional<int> width,
            int height) {
    // The same light look on every desktop theme; the views take their colours when built.
    QApplication::setPalette(overlay::style::light());
    static linuxdesk::X11Workspace workspace;
    setup::AppsView view(rules::AppRules::shared(platform::JsonDefaults::saved()), workspace,
                         startOpen);
    view.setAttribute(Qt::WA_DontShowOnScreen);
    view.ensurePolished();
    // The fitting width: what the content needs, and never less than the window's own.
    const QSize size(
        width.value_or(std::max(setup::AppsView::width, view.minimumSizeHint().width())), height);
    view.resize(size);
    view.show();  // lays out the scroll area's content as the window would
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return;
    image.fill(view.palette().color(QPalette::Window));
    {
        QPainter painter(&image);
        view.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    }
    view.hide();
    image.save(path, "PNG");
}

}  // namespace

void snapshotAppsSetup(const QString& folder) {
    render(folder + QStringLiteral("/apps.png"), {}, setup::AppsView::width, 600);
    render(folder + QStringLiteral("/apps-open.png"),
           {QStringLiteral("browsers"), QStringLiteral("ai")}, setup::AppsView::width, 900);
}

void snapshotAppsUI(const QString& folder) {
    render(folder + QStringLiteral("/ui-apps.png"), {QStringLiteral("ai")}, std::nullopt, 700);
}

}  // namespace shell
