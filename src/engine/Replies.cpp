// Reply drafting: three short replies for an empty message box, from the conversation on screen.
#include <QPointer>
#include <QRegularExpression>

#include "ax/Conversation.h"
#include "ax/TextField.h"
#include "engine/Glimmo.h"
#include "engine/ReplyOptions.h"
#include "main/Constants.h"
#include "main/Log.h"
#include "rules/Catalogue.h"

namespace engine {

using platform::Element;
using platform::Range;

namespace {

constexpr double kDraftingPause = 0.4;
constexpr qsizetype kMinimumMaterial = 20;
constexpr qsizetype kKeyExcerpt = 300;

const QRegularExpression& lineBreak() {
    static const QRegularExpression re(
        QStringLiteral("\r\n|[\n\v\f\r\\x{85}\\x{2028}\\x{2029}]"));
    return re;
}

// Evolution starts a reply with the caret on the quote's first line: a draft pasted there would
// run into "On ... wrote:", so it is set apart from the quote by a blank line, as a mail reply is.
QString apartFromQuote(platform::Ax& ax, const Element& el, const QString& text) {
    const auto selection = ax::selectedRange(ax, el);
    if (!selection || selection->location >= text.size()) return {};
    const bool atLineEnd = lineBreak()
                               .match(text, selection->location, QRegularExpression::NormalMatch,
                                      QRegularExpression::AnchorAtOffsetMatchOption)
                               .hasMatch();
    return atLineEnd ? QString() : QStringLiteral("\n\n");
}

std::optional<QString> fieldLabel(platform::Ax& ax, const Element& el) {
    for (const char* name : {"AXDescription", "AXTitle", "AXPlaceholderValue"}) {
        const auto value = ax::stringAttr(ax, el, QLatin1String(name));
        if (value && !value->isEmpty()) return value;
    }
    return std::nullopt;
}

// Where the list stands: the caret, or the box's start when only blank lines are before it (the
// box of a line break is no place: Gecko answers an empty paragraph's with its window's corner).
std::optional<platform::Rect> replyCaret(platform::Ax& ax, const Element& el, const QString& text,
                                         Range selection) {
    const bool blankBefore = text.left(selection.location).trimmed().isEmpty();
    return ax::bounds(ax, el, blankBefore ? 0 : selection.location);
}

int keptIndex(const std::optional<Replies>& current, qsizetype count) {
    return int(qMin<qsizetype>(count - 1, current ? current->index : 0));
}

}  // namespace

void Glimmo::draftReplies(const platform::RunningApp& app, const Element& appEl, const Element& el,
                          const QString& text, Range selection) {
    if (selection.length > 0 || claude.requestInFlight() || draftingReplies ||
        p_.clock.now() - lastChange < kDraftingPause)
        return;

    // Absent outside reply applications and the reply sites' pages (where the page is walked
    // once, for the site and the conversation alike).
    const auto context =
        ax::replyContext(p_.ax, p_.clock, app, appEl, el, text, selection.location);
    if (!context) {
        if (!rules::isReplyApp(app.bundleId)) why(QStringLiteral("empty field"));
        return;
    }
    if (ax::graphemeCount(context->conversation) + ax::graphemeCount(context->quoted) <
        kMinimumMaterial) {
        why(QStringLiteral("nothing to reply to"));
        return;
    }

    QString where = app.name;
    if (!context->site.isEmpty()) where += QStringLiteral(" (") + context->site + u')';
    if (const auto label = fieldLabel(p_.ax, el)) where += QStringLiteral(" — ") + *label;
    const QString key = where + u'|' + ax::lastGraphemes(context->conversation, kKeyExcerpt) +
                        u'|' + ax::firstGraphemes(context->quoted, kKeyExcerpt);
    if (dismissedReplies.contains(key)) return;

    const auto caret = replyCaret(p_.ax, el, text, selection);
    if (!caret) return;

    if (const auto hit = replyCache.constFind(key); hit != replyCache.constEnd()) {
        replies = Replies{el, *hit, 0, key, *caret, false};
        showReplyList();
        return;
    }

    why(QStringLiteral("drafting replies"));
    draftingReplies = true;
    draftingKey = key;
    claude.pendingText = text;
    syncKeys();
    QPointer<Glimmo> self(this);
    bubble->show(QStringLiteral("Drafting 3 replies…"), QStringLiteral("keep typing to skip"),
                 *caret, [self] {
                     if (self) self->apply();
                 });

    QString body = QStringLiteral("<reply>\n<where>") + where +
                   QStringLiteral("</where>\n<conversation>\n") + context->conversation +
                   QStringLiteral("\n</conversation>\n");
    if (!context->quoted.isEmpty())
        body += QStringLiteral("<quoted>\n") + context->quoted + QStringLiteral("\n</quoted>\n");
    body += QStringLiteral("</reply>");

    const platform::Rect at = *caret;
    claude.ask(
        body,
        [self, text, selection, el, key, at](const QString& partial) {
            if (self) self->onDraftPartial(partial, text, selection, el, key, at);
        },
        [self, text, selection, el, key, at](const QString& answer) {
            if (self) self->onDraftDone(answer, text, selection, el, key, at);
        });
}

void Glimmo::onDraftPartial(const QString& partial, const QString& text, Range selection,
                            const Element& el, const QString& key, platform::Rect caret) {
    if (lastText != text || ax::selectedRange(p_.ax, el) != std::optional(selection)) return;
    const QStringList options = partialReplyOptions(partial);
    if (options.isEmpty() || (replies && replies->options.size() >= options.size())) return;
    // Asked again: a page that was still laying itself out when drafting began has settled.
    const platform::Rect at = replyCaret(p_.ax, el, text, selection).value_or(caret);
    replies =
        Replies{el, options, keptIndex(replies, options.size()), key, at, options.size() < 3};
    showReplyList();
}

void Glimmo::onDraftDone(const QString& answer, const QString& text, Range selection,
                         const Element& el, const QString& key, platform::Rect caret) {
    draftingReplies = false;
    const auto options = finalReplyOptions(answer);
    if (!options) {
        // Forget any partial list too, so no invisible list keeps taking Tab.
        clearShown();
        glimmo::log(QStringLiteral("reply options unreadable"));
        return;
    }
    replyCache.insert(key, *options);
    if (lastText == text && ax::selectedRange(p_.ax, el) == std::optional(selection)) {
        const platform::Rect at = replyCaret(p_.ax, el, text, selection).value_or(caret);
        replies = Replies{el, *options, keptIndex(replies, options->size()), key, at, false};
        showReplyList();
        return;
    }
    clearShown();
}

void Glimmo::keepReplies(const Element& el, Range selection) {
    if (selection.length == 0 && p_.ax.same(replies->el, el)) return;
    clearShown();
}

void Glimmo::showReplyList() {
    syncKeys();
    QPointer<Glimmo> self(this);
    bubble->showReplies(replies->options, replies->index, replies->more, replies->caret,
                        [self](int row) {
                            if (self) self->insertReply(row);
                        });
}

void Glimmo::insertReply(int index) {
    if (!replies || index < 0 || index >= replies->options.size()) return;
    const QString option = replies->options.at(index);
    const Element el = replies->el;
    clearShown();
    // Any line break, not only a line feed, ends a line of the reply.
    for (const QString& line : option.split(lineBreak())) cache.insert(line, QStringLiteral("="));
    // Until the application has fetched the pasted text the box still reads as empty; restart
    // the drafting pause so the cached list does not flash up again meanwhile.
    lastChange = p_.clock.now();
    paste(option + apartFromQuote(p_.ax, el, lastText));
}

}  // namespace engine
