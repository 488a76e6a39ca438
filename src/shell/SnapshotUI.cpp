#include "shell/SnapshotUI.h"

#include <QImage>
#include <QPainter>
#include <QWidget>

#include "overlay/Bubble.h"
#include "overlay/BubbleView.h"
#include "overlay/ReplyView.h"
#include "overlay/Style.h"
#include "setup/Setup.h"
#include "shell/SnapshotSetup.h"

namespace shell {

namespace {

// Renders the view alone on a transparent image, as it looks inside the panel without the
// shadow, and writes it as PNG.
void snapshot(QWidget& view, const QString& path) {
    view.setPalette(overlay::style::light());
    const QSize size = view.sizeHint();
    if (size.isEmpty()) return;
    view.resize(size);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return;
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        view.render(&painter, QPoint(), QRegion(), QWidget::DrawChildren);
    }
    image.save(path, "PNG");
}

}  // namespace

int runSnapshotUI(const QString& folder) {
    overlay::BubbleView bubble;
    bubble.set(QStringLiteral("I need the deck before tomorrow. Can you send it to me?"), 400,
               overlay::defaultHint, [] {});
    snapshot(bubble, folder + QStringLiteral("/ui-bubble.png"));

    overlay::ReplyView replies;
    replies.set({QStringLiteral("Yes, I can join the pilot call at 3 tomorrow. Thanks for the "
                                "invite!"),
                 QStringLiteral("I can't make 3 tomorrow, but I can join at [time] or send notes "
                                "after. Would that work?"),
                 QStringLiteral("Is there an agenda for the pilot call I should prep for?")},
                0, false, overlay::replyHint, [](int) {});
    snapshot(replies, folder + QStringLiteral("/ui-replies.png"));

    snapshotSetup(folder + QStringLiteral("/ui-setup.png"), [](setup::Setup& s) {
        s.setName(QStringLiteral("Alex"));
        s.setAboutDone(true);
        s.setAccess(false);
        s.setHasClaude(true);
    });
    return 0;
}

}  // namespace shell
