#pragma once
// Process-wide constants: fixed at start-up, never changed.

#include <QString>
#include <QStringList>

namespace glimmo {

inline const QString claudeModel = QStringLiteral("claude-haiku-5-5");

// Quiet time after the last change before a rewrite is asked for (seconds).
constexpr double pauseDefault = 1.0;
// The shorter pause once the text before the caret ends a sentence.
constexpr double pauseShort = 0.3;
// Longest paragraph worth a request, in UTF-16 code units.
constexpr int maxAskLength = 1200;

// Applications the earlier scheme paused by default (read only by the rules migration).
const QStringList& defaultPaused();
// Desktop applications whose empty message boxes get reply drafts.
const QStringList& replyApps();
// Chromium-family browsers: primed with the enhanced attribute.
const QStringList& chromiumBrowsers();
// chromiumBrowsers followed by the three other browsers.
const QStringList& browsers();

struct Rgba {
    double red, green, blue, alpha;
};
// Accent colour of the windows: a dark golden brown, about #80611A.
constexpr Rgba brand{0.502, 0.38, 0.102, 1.0};

}  // namespace glimmo
