#include "platform/linux/session/QtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <utility>

#include "main/Log.h"

namespace linuxdesk {

namespace {

// How long a restore waits for the paste to be fetched, counted from the write.
constexpr int kPasteWaitMs = 3000;
constexpr int kRetryMs = 20;

// Paste content that notes when someone (another application) has read it.
class TransientData : public QMimeData {
public:
    bool read() const { return read_; }
    void forgetReads() { read_ = false; }

protected:
    QVariant retrieveData(const QString& format, QMetaType type) const override {
        read_ = true;
        return QMimeData::retrieveData(format, type);
    }

private:
    mutable bool read_ = false;
};

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

QtClipboard::QtClipboard() {
    retry_.setInterval(kRetryMs);
    retry_.callOnTimeout([this] {
        if (awaitingPaste()) return;
        // Something the user copied meanwhile is newer than what was saved: it stays.
        if (pending_ && ownsTransient()) put(*pending_);
        cancelPending();
    });
}

bool QtClipboard::ownsTransient() const {
    QClipboard* cb = clipboard();
    return cb && transient_ && cb->mimeData(QClipboard::Clipboard) == transient_.data();
}

bool QtClipboard::awaitingPaste() const {
    const auto* data = dynamic_cast<const TransientData*>(transient_.data());
    return data && !data->read() && written_.elapsed() < kPasteWaitMs && ownsTransient();
}

void QtClipboard::cancelPending() {
    pending_.reset();
    retry_.stop();
}

void QtClipboard::pastePressed() {
    if (auto* data = dynamic_cast<TransientData*>(transient_.data())) data->forgetReads();
    written_.restart();
}

platform::ClipContents QtClipboard::save() {
    // While a restore waits, the user's clipboard is the one it will put back.
    if (pending_ && ownsTransient()) return *pending_;
    QClipboard* cb = clipboard();
    bypass_ = false;
    if (cb && !cb->ownsClipboard()) {
        if (const auto pid = owner_.stopped()) {
            if (reportedStopped_ != *pid)
                glimmo::log(QStringLiteral("the clipboard's owner (process %1) is stopped: "
                                           "pasting without the clipboard")
                                .arg(*pid));
            reportedStopped_ = *pid;
            bypass_ = true;
            return platform::untouchedClipboard();
        }
    }
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
    if (platform::untouched(contents)) return;
    if (awaitingPaste()) {
        pending_ = contents;
        retry_.start();
        return;
    }
    cancelPending();
    put(contents);
}

void QtClipboard::put(const platform::ClipContents& contents) {
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
    if (bypass_) {
        held_ = text;
        return;
    }
    cancelPending();
    QClipboard* cb = clipboard();
    if (!cb) return;
    auto* data = new TransientData;
    data->setText(text);
    // Clipboard managers that honour either marker keep no copy of a paste's content.
    data->setData(QStringLiteral("x-kde-passwordManagerHint"), QByteArrayLiteral("secret"));
    data->setData(QStringLiteral("org.nspasteboard.TransientType"), QByteArray());
    cb->setMimeData(data, QClipboard::Clipboard);
    transient_ = data;
    written_.start();
}

std::optional<QString> QtClipboard::takeHeld() {
    bypass_ = false;
    return std::exchange(held_, std::nullopt);
}

void QtClipboard::writeText(const QString& text) {
    cancelPending();
    if (QClipboard* cb = clipboard()) cb->setText(text, QClipboard::Clipboard);
}

}  // namespace linuxdesk
