// Applying a suggestion: select the paragraph, paste the rewrite through the clipboard, and put
// the user's clipboard back.
#include <QPointer>

#include "ax/Conversation.h"
#include "ax/TextField.h"
#include "engine/Glimmo.h"
#include "main/Log.h"
#include "platform/Keys.h"

namespace engine {

using namespace platform;

namespace {

constexpr double kSelectAllSettle = 0.05;
constexpr double kKeyboardSelectionSettle = 0.15;
constexpr double kFirstCharacterCleanUp = 0.25;
constexpr double kClipboardRestore = 0.6;
// How often the poll looks again whether a waiting clipboard restore is done.
constexpr double kRestoreCheck = 0.05;
constexpr double kCopyNotice = 3.0;

QString trimNewlines(const QString& s) {
    auto newline = [](QChar c) { return c == u'\n' || c == u'\r'; };
    qsizetype from = 0, to = s.size();
    while (from < to && newline(s[from])) ++from;
    while (to > from && newline(s[to - 1])) --to;
    return s.mid(from, to - from);
}

// The text without its first user-perceived character.
QString withoutFirstCharacter(const QString& s) {
    return ax::lastGraphemes(s, qMax<qsizetype>(0, ax::graphemeCount(s) - 1));
}

}  // namespace

void Glimmo::apply() {
    if (!shown) return;
    const Target target = *shown;
    clearShown();

    const auto text = ax::stringAttr(p_.ax, target.el, QStringLiteral("AXValue"));
    if (!text) return;
    if (text->size() < target.range.end()) return;
    if (text->mid(target.range.location, target.range.length) != target.original) return;

    // The pasted rewrite comes back as a change; it must not be sent for rewriting again.
    cache.insert(target.suggestion, QStringLiteral("="));

    if (ax::setSelectedRange(p_.ax, target.el, target.range.location, target.range.length)) {
        paste(target.suggestion);
        return;
    }
    if (target.range.location == 0 && target.range.length == text->size()) {
        postKey(key::A, flag::Command);
        later(kSelectAllSettle, [this, s = target.suggestion] { paste(s); });
        return;
    }
    if (ax::graphemeCount(target.original) < 2) {
        copyFallback(target);
        return;
    }

    // The field refuses a selection by range: select by paragraph moves. Starting one character
    // in avoids selecting the previous paragraph's line break in toolkits that put the caret
    // before it.
    postKey(key::Up, flag::Option);
    postKey(key::Right, 0);
    postKey(key::Down, flag::Shift | flag::Option);
    later(kKeyboardSelectionSettle, [this, target] {
        const auto selected = ax::stringAttr(p_.ax, target.el, QStringLiteral("AXSelectedText"));
        const QString expected = withoutFirstCharacter(target.original);
        if (selected && trimNewlines(*selected) == expected) {
            paste(target.suggestion);
            later(kFirstCharacterCleanUp, [this] {
                postKey(key::Up, flag::Option);
                postKey(key::ForwardDelete, 0);
                postKey(key::Down, flag::Option);
            });
            return;
        }
        const qsizetype picked = selected ? ax::graphemeCount(trimNewlines(*selected)) : -1;
        why(QStringLiteral("selection picked %1 of %2 chars")
                .arg(picked)
                .arg(ax::graphemeCount(target.original) - 1));
        postKey(key::Right, 0);
        copyFallback(target);
    });
}

void Glimmo::paste(const QString& text) {
    const ClipContents saved = p_.clipboard.save();
    p_.clipboard.writeTransientText(text);
    postKey(key::V, flag::Command);
    // An application fetching the pasted text may answer no accessibility questions until it
    // has it, while a question of ours holds up our answer: polling waits for the restore,
    // also when the restore itself waits for the paste to be fetched.
    const bool polling = timer_.isActive();
    timer_.stop();
    later(kClipboardRestore, [this, saved, polling] {
        p_.clipboard.restore(saved);
        if (polling) resumePolling();
    });
}

void Glimmo::resumePolling() {
    if (p_.clipboard.restoreWaiting()) {
        later(kRestoreCheck, [this] { resumePolling(); });
        return;
    }
    timer_.start();
}

void Glimmo::postKey(int code, quint64 flags) {
    p_.keyboard.post(code, flags);
}

void Glimmo::copyFallback(const Target& target) {
    p_.clipboard.writeText(target.suggestion);
    glimmo::log(QStringLiteral("could not select the paragraph; rewrite copied to clipboard"));
    const auto selection = ax::selectedRange(p_.ax, target.el);
    if (!selection) return;
    const auto at = ax::bounds(p_.ax, target.el, selection->location);
    if (!at) return;
    bubble->show(target.suggestion, QStringLiteral("Copied · press **Ctrl+V** to paste"), *at,
                 [] {});
    later(kCopyNotice, [this] {
        if (!shown) hideBubble();
    });
}

}  // namespace engine
