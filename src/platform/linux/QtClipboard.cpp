#include "platform/linux/QtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace linuxdesk {

namespace {

QClipboard* clipboard() {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance())
               ? QGuiApplication::clipboard()
               : nullptr;
}

bool isSelectionProtocol(const QString& format) {
    static const QStringList names{"TARGETS", "MULTIPLE",         "TIMESTAMP",      "SAVE_TARGETS",
                                   "DELETE",  "INSERT_SELECTION", "INSERT_PROPERTY"};
    return names.contains(format);
}

}  // namespace

platform::ClipContents QtClipboard::save() {
    QClipboard* cb = clipboard();
    const QMimeData* data = cb ? cb->mimeData(QClipboard::Clipboard) : nullptr;
    if (!data) return {};
    platform::ClipItem item;
    for (const QString& format : data->formats()) {
        // Qt's own in-process image type is made from the real ones on demand.
        if (format.startsWith(QLatin1String("application/x-qt-"))) continue;
        // X selection requests, not content: a restored copy would be advertised next to the
        // owner's own and a stale TIMESTAMP served.
        if (isSelectionProtocol(format)) continue;
        item.types.emplace_back(format, data->data(format));
    }
    if (item.types.empty()) return {};
    return {item};
}

void QtClipboard::restore(const platform::ClipContents& contents) {
    QClipboard* cb = clipboard();
    if (!cb) return;
    if (contents.empty()) {
        cb->clear(QClipboard::Clipboard);
        return;
    }
    auto* data = new QMimeData;
    for (const auto& item : contents)
        for (const auto& [format, bytes] : item.types)
            if (!data->hasFormat(format)) data->setData(format, bytes);
    cb->setMimeData(data, QClipboard::Clipboard);
}

void QtClipboard::writeTransientText(const QString& text) {
    QClipboard* cb = clipboard();
    if (!cb) return;
    auto* data = new QMimeData;
    data->setText(text);
    // Clipboard managers that honour either marker keep no copy of a paste's content.
    data->setData(QStringLiteral("x-kde-passwordManagerHint"), QByteArrayLiteral("secret"));
    data->setData(QStringLiteral("org.nspasteboard.TransientType"), QByteArray());
    cb->setMimeData(data, QClipboard::Clipboard);
}

void QtClipboard::writeText(const QString& text) {
    if (QClipboard* cb = clipboard()) cb->setText(text, QClipboard::Clipboard);
}

}  // namespace linuxdesk
