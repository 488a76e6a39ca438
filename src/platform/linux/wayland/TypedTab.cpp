#include "platform/linux/wayland/TypedTab.h"

namespace linuxdesk {

bool tabTypedAt(const QString& before, qint64 caret, const QString& after) {
    if (caret < 0 || caret > before.size() || after.size() != before.size() + 1) return false;
    return after[caret] == u'\t' &&
           QStringView(after).left(caret) == QStringView(before).left(caret) &&
           QStringView(after).mid(caret + 1) == QStringView(before).mid(caret);
}

}  // namespace linuxdesk
