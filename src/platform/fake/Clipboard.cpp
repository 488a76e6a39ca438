#include "platform/fake/Clipboard.h"

namespace fake {

void Clipboard::setText(const QString& text) {
    items_ = {platform::ClipItem{{{textType, text.toUtf8()}}}};
}

std::optional<QString> Clipboard::text() const {
    if (items_.empty()) return std::nullopt;
    for (const auto& [type, data] : items_.front().types) {
        if (type == textType) return QString::fromUtf8(data);
    }
    return std::nullopt;
}

bool Clipboard::transient() const {
    if (items_.empty()) return false;
    for (const auto& [type, data] : items_.front().types) {
        if (type == transientType) return true;
    }
    return false;
}

platform::ClipContents Clipboard::save() {
    ++saves_;
    return items_;
}

void Clipboard::restore(const platform::ClipContents& contents) {
    ++restores_;
    items_ = contents;
}

void Clipboard::writeTransientText(const QString& text) {
    items_ = {platform::ClipItem{{{textType, text.toUtf8()},
                                  {secretHintType, QByteArrayLiteral("secret")},
                                  {transientType, QByteArray()}}}};
}

void Clipboard::writeText(const QString& text) {
    setText(text);
}

}  // namespace fake
