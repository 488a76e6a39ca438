#pragma once
// platform::Clipboard over QClipboard (needs a QGuiApplication). X11's clipboard holds one
// item offered in any number of formats, so a saved clipboard is one item with every format.
//
// A paste's text is fetched by the application whenever it gets round to it: a busy office
// suite may ask a second after the keys arrived. Putting the user's clipboard back before then
// would paste that instead of the rewrite, so a restore waits (briefly) until the transient
// text has been handed out; if another program takes the clipboard meanwhile, its content stays.
//
// A stopped holder of the clipboard answers no request: its clipboard is then neither copied
// nor replaced, and the paste's text is held here for a paste made without the clipboard.

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <optional>

#include "platform/Clipboard.h"
#include "platform/linux/x11/ClipboardOwner.h"

class QMimeData;

namespace linuxdesk {

class QtClipboard : public platform::Clipboard {
public:
    QtClipboard();

    platform::ClipContents save() override;
    void restore(const platform::ClipContents& contents) override;
    bool restoreWaiting() const override { return pending_.has_value(); }
    void writeTransientText(const QString& text) override;
    void writeText(const QString& text) override;
    // The paste key was just pressed. Only a read after it is the paste: a clipboard manager
    // (GNOME's keeps a copy of every new clipboard) reads it at once, before any paste.
    void pastePressed();
    // The text of a paste that must go in without the clipboard; taken once.
    std::optional<QString> takeHeld();

private:
    bool ownsTransient() const;
    // The transient text is still on the clipboard and nobody has read it yet.
    bool awaitingPaste() const;
    void put(const platform::ClipContents& contents);
    void cancelPending();

    QPointer<QMimeData> transient_;
    QElapsedTimer written_;
    std::optional<platform::ClipContents> pending_;  // the restore that waits
    QTimer retry_;
    x11::ClipboardOwner owner_;
    bool bypass_ = false;  // the last save found the holder stopped
    std::optional<QString> held_;
    qint64 reportedStopped_ = 0;
};

}  // namespace linuxdesk
