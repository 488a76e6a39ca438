#pragma once
// GTK 4 cannot hold back a key for Glimmo: a Tab pressed while a suggestion is shown lands in
// the text as a tab character. Recognising it means comparing the text before and after.

#include <QString>

namespace linuxdesk {

// Whether `after` is `before` with one tab typed at the caret (UTF-16 offset into `before`).
bool tabTypedAt(const QString& before, qint64 caret, const QString& after);

}  // namespace linuxdesk
