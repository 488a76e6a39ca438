// The rewrite decision: when to ask, what to ask, and what to show of the answer.
#include <QPointer>

#include "ax/Conversation.h"
#include "ax/Paragraph.h"
#include "ax/TextField.h"
#include "engine/Glimmo.h"
#include "engine/WorthAsking.h"
#include "main/Constants.h"

namespace engine {

using platform::Element;
using platform::Range;

namespace {

const QString kNoChange = QStringLiteral("=");

bool endsSentence(QChar c) {
    static const QString enders = QStringLiteral(".?!。？！…");
    return enders.contains(c);
}

// Spaces and tabs only: a trailing line break means the sentence is not what was just typed.
QStringView trimBlanks(QStringView s) {
    qsizetype from = 0, to = s.size();
    while (from < to && (s[from] == u' ' || s[from] == u'\t')) ++from;
    while (to > from && (s[to - 1] == u' ' || s[to - 1] == u'\t')) --to;
    return s.mid(from, to - from);
}

}  // namespace

void Glimmo::decide(const QString& text, Range selection, const Element& el,
                    const platform::RunningApp& app, const Element& appEl) {
    const qint64 caret = selection.location;
    // Views, not copies: the text may be a long document, looked at on every tick.
    const QStringView before = QStringView(text).left(qBound<qint64>(0, caret, text.size()));
    if (before.trimmed().isEmpty()) {
        if (!shown) draftReplies(app, appEl, el, text, selection);
        return;
    }

    const ax::Paragraph para = ax::paragraph(text, caret);

    if (shown) {
        const bool same =
            selection.length == 0 && shown->range == para.range && shown->original == para.text;
        if (!same) clearShown();
        return;
    }

    const QStringView tail = trimBlanks(before);
    const double pause =
        !tail.isEmpty() && endsSentence(tail.back()) ? glimmo::pauseShort : glimmo::pauseDefault;
    if (const double waited = p_.clock.now() - lastChange; waited < pause) {
        wakeIn(pause - waited);
        return;
    }
    if (selection.length != 0 || claude.requestInFlight() || dismissed.contains(para.text)) return;

    if (!worthAsking(para.text, text, caret, p_.inputSource)) {
        why(QStringLiteral("not worth asking"));
        return;
    }
    why(QStringLiteral("asking"));

    if (const auto hit = cache.constFind(para.text); hit != cache.constEnd()) {
        if (*hit != kNoChange) showSuggestion(Target{el, para.range, para.text, *hit}, caret);
        return;
    }
    askRewrite(text, caret, el, para.range, para.text);
}

void Glimmo::askRewrite(const QString& text, qint64 caret, const Element& el, const Range& range,
                        const QString& paragraph) {
    claude.pendingText = text;
    QPointer<Glimmo> self(this);
    auto onPartial = [self, text, caret, el](const QString& partial) {
        if (!self || partial.startsWith(kNoChange) || ax::graphemeCount(partial) < 3) return;
        if (!self->stillCurrent(text, caret, el)) return;
        const auto caretBounds = ax::bounds(self->p_.ax, el, caret);
        if (!caretBounds) return;
        self->streaming = true;
        self->syncKeys();
        self->bubble->show(partial + QStringLiteral(" …"), overlay::defaultHint, *caretBounds,
                           [self] {
                               if (self) self->apply();
                           });
    };
    auto onDone = [self, text, caret, el, range, paragraph](const QString& answer) {
        if (!self) return;
        const QString value =
            (answer == kNoChange || answer == paragraph.trimmed()) ? kNoChange : answer;
        const bool tabPressed = self->tabWhileStreaming;
        self->streaming = false;
        self->tabWhileStreaming = false;
        self->cache.insert(paragraph, value);
        if (value != kNoChange && self->stillCurrent(text, caret, el)) {
            self->showSuggestion(Target{el, range, paragraph, value}, caret);
            if (self->shown) {
                if (tabPressed) self->apply();
                return;
            }
        }
        // Nothing shown after all: the streamed text must not stay up without its keys.
        self->hideBubble();
    };
    claude.ask(QStringLiteral("<text>\n") + paragraph + QStringLiteral("\n</text>"), onPartial,
               onDone);
}

bool Glimmo::stillCurrent(const QString& text, qint64 caret, const Element& el) {
    if (shown || lastText != text) return false;
    const auto selection = ax::selectedRange(p_.ax, el);
    return selection && *selection == Range{caret, 0};
}

void Glimmo::showSuggestion(const Target& target, qint64 caret) {
    const auto caretBounds = ax::bounds(p_.ax, target.el, caret);
    if (!caretBounds) return;
    shown = target;
    // The keys are taken before the bubble shows: a Tab pressed on sight must be ours.
    syncKeys();
    QPointer<Glimmo> self(this);
    bubble->show(target.suggestion, overlay::defaultHint, *caretBounds, [self] {
        if (self) self->apply();
    });
}

}  // namespace engine
