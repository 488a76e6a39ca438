#pragma once

#include <QByteArray>
#include <QString>
#include <utility>
#include <vector>

namespace platform {

// One clipboard item with every representation it offers (type name, data).
struct ClipItem {
    std::vector<std::pair<QString, QByteArray>> types;
    friend bool operator==(const ClipItem&, const ClipItem&) = default;
};
using ClipContents = std::vector<ClipItem>;

// What a save returns when it took nothing of the user's (the paste goes in another way): its
// restore puts nothing back.
inline ClipContents untouchedClipboard() {
    return {ClipItem{{{QStringLiteral("application/x-glimmo-clipboard-untouched"), {}}}}};
}
inline bool untouched(const ClipContents& contents) {
    return contents == untouchedClipboard();
}

class Clipboard {
public:
    virtual ~Clipboard() = default;
    // A full copy of what the clipboard holds now.
    virtual ClipContents save() = 0;
    // Clears the clipboard and puts the saved items back; nothing saved leaves it empty.
    virtual void restore(const ClipContents& contents) = 0;
    // A restore is still waiting for the paste to be fetched before it puts the items back.
    virtual bool restoreWaiting() const { return false; }
    // Temporary content for a paste: marked so clipboard managers do not keep it.
    virtual void writeTransientText(const QString& text) = 0;
    // Content meant to stay for the user to paste.
    virtual void writeText(const QString& text) = 0;
};

}  // namespace platform
