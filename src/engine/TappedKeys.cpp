// The keyboard tap: Tab, Esc and the arrows belong to the engine while they act on what it shows.
#include "platform/Keys.h"
#include "engine/Glimmo.h"
#include "main/Log.h"

namespace engine {

using namespace platform;

void Glimmo::installTap() {
    const bool ok = p_.keyTap.install([this](int code, quint64 flags) {
        const bool consumed = handleKey(code, flags);
        syncKeys();
        return consumed;
    });
    if (ok) {
        tap = true;
        glimmo::log(QStringLiteral("keyboard tap installed"));
        return;
    }
    if (tapFailed) return;
    tapFailed = true;
    glimmo::log(QStringLiteral("keyboard tap refused; asking for Input Monitoring"));
    p_.keyTap.requestAccess();
}

bool Glimmo::handleKey(int code, quint64 flags) {
    if (flags & flag::Modifiers) return false;

    if (replies) {
        const int count = int(replies->options.size());
        switch (code) {
            case key::Down:
            case key::Up:
                if (count > 0) {
                    replies->index = (replies->index + (code == key::Down ? 1 : count - 1)) % count;
                    showReplyList();
                }
                return true;
            case key::Tab:
                insertReply(replies->index);
                return true;
            case key::Esc:
                dismissedReplies.insert(replies->key);
                clearShown();
                return true;
            default:
                return false;
        }
    }

    if (draftingReplies && code == key::Esc) {
        if (draftingKey) dismissedReplies.insert(*draftingKey);
        cancel();
        return true;
    }

    if (!shown) {
        if (!streaming) return false;
        if (code == key::Esc) {
            cancel();
            return true;
        }
        if (code == key::Tab) {
            tabWhileStreaming = true;
            return true;
        }
        return false;
    }

    if (code == key::Esc) {
        dismissed.insert(shown->original);
        clearShown();
        return true;
    }
    if (code == key::Tab) {
        apply();
        return true;
    }
    return false;
}

}  // namespace engine
