#pragma once
// Reading reply drafts out of Claude's answer, which should be a JSON array of three strings.

#include <QString>
#include <QStringList>
#include <optional>

namespace engine {

// While streaming: every complete JSON string literal so far, at most three.
QStringList partialReplyOptions(const QString& soFar);

// The final answer: the array between the first "[" and the last "]", its non-blank strings
// trimmed, at most three; absent when unreadable or empty.
std::optional<QStringList> finalReplyOptions(const QString& answer);

}  // namespace engine
