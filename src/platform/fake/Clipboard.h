#pragma once
// The scripted desktop's clipboard: items with typed representations, binary ones included.
// Text is held as UTF-8 under textType; transient writes also carry the two marker types.

#include <QString>
#include <optional>
#include <vector>

#include "platform/Clipboard.h"

namespace fake {

class Clipboard : public platform::Clipboard {
public:
    static inline const QString textType = QStringLiteral("text/plain");
    static inline const QString transientType = QStringLiteral("org.nspasteboard.TransientType");
    static inline const QString secretHintType = QStringLiteral("x-kde-passwordManagerHint");

    // What the user copied: set directly, not recorded.
    void setItems(platform::ClipContents items) { items_ = std::move(items); }
    void setText(const QString& text);
    const platform::ClipContents& items() const { return items_; }
    // The first item's text, absent when it has none (what a paste inserts).
    std::optional<QString> text() const;
    // Whether the current content carries the transient marker.
    bool transient() const;

    int saves() const { return saves_; }
    int restores() const { return restores_; }

    // platform::Clipboard
    platform::ClipContents save() override;
    void restore(const platform::ClipContents& contents) override;
    void writeTransientText(const QString& text) override;
    void writeText(const QString& text) override;

private:
    platform::ClipContents items_;
    int saves_ = 0;
    int restores_ = 0;
};

}  // namespace fake
