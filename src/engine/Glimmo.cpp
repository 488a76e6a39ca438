#include "engine/Glimmo.h"

#include <QDir>

#include "ax/Browser.h"
#include "ax/TextField.h"
#include "main/Constants.h"
#include "main/Log.h"
#include "main/Paths.h"
#include "rules/AppRules.h"
#include "rules/Catalogue.h"

namespace engine {

using platform::Element;
using platform::Range;

Glimmo::Glimmo(platform::Platform& platform, rules::AppRules& rules, QObject* parent)
    : QObject(parent),
      bubble(std::make_unique<overlay::Bubble>(platform.screens)),
      lastChange(platform.clock.now()),
      claude(platform.defaults, platform.clock, [this](const QString& note) { why(note); }),
      p_(platform),
      rules_(rules) {
    timer_.setInterval(300);
    connect(&timer_, &QTimer::timeout, this, &Glimmo::tick);
    // The pause runs from the change itself: a tick when it ends, not at the next poll.
    wake_.setSingleShot(true);
    wake_.setTimerType(Qt::PreciseTimer);
    connect(&wake_, &QTimer::timeout, this, &Glimmo::tickIfPolling);
}

Glimmo::~Glimmo() {
    timer_.stop();
    claude.cancel();
    claude.dropWarm();
}

void Glimmo::start() {
    QDir().mkpath(glimmo::supportDir());
    glimmo::log(QStringLiteral("started, accessibility ") +
                (p_.ax.trusted() ? QStringLiteral("on") : QStringLiteral("off")));
    timer_.start();
    // Where the desktop announces changes, they are seen when they happen.
    p_.ax.onChange([this] { tickIfPolling(); });
}

// A tick out of turn, unless polling is paused (while a paste's clipboard round is under way).
void Glimmo::tickIfPolling() {
    if (timer_.isActive()) tick();
}

void Glimmo::wakeIn(double seconds) {
    wake_.start(int(seconds * 1000) + 1);
}

void Glimmo::why(const QString& note) {
    trace_.why(note);
}

void Glimmo::later(double seconds, std::function<void()> action) {
    // The engine is the timer's context: a destroyed engine never runs a late action.
    QTimer::singleShot(int(seconds * 1000), this, std::move(action));
}

void Glimmo::hideBubble() {
    if (bubble->visible()) bubble->hide();
    syncKeys();
}

void Glimmo::clearShown() {
    // A key pressed while something was shown is about what was shown.
    if (shown || replies) p_.keyTap.deliverPending();
    shown.reset();
    replies.reset();
    hideBubble();
}

void Glimmo::cancel() {
    if (streaming || draftingReplies) p_.keyTap.deliverPending();
    if (claude.requestInFlight()) why(QStringLiteral("cancelled request"));
    claude.cancel();
    if (streaming || draftingReplies) hideBubble();
    streaming = false;
    tabWhileStreaming = false;
    draftingReplies = false;
    syncKeys();
}

void Glimmo::forgetField() {
    clearShown();
    lastText.clear();
    lastEl.reset();
}

// The tap only takes keys while the engine has something on screen that they act on.
void Glimmo::syncKeys() {
    const bool want = shown || replies || streaming || draftingReplies;
    if (want == wantsKeys_) return;
    wantsKeys_ = want;
    p_.keyTap.setWanted(want);
}

void Glimmo::tick() {
    // Keys first: while one waits for the engine, the keyboard is held for it, and some
    // toolkits (GTK 4) then report their text box as unfocused.
    p_.keyTap.deliverPending();
    const bool enabled = p_.defaults.boolValue(QStringLiteral("enabled")).value_or(true);
    if (!enabled || !p_.ax.trusted()) {
        why(QStringLiteral("off or no access"));
        forgetField();
        cancel();
        claude.dropWarm();
        return;
    }
    if (!tap) installTap();
    claude.warmUp();

    const auto front = p_.workspace.frontmost();
    if (!front || front->pid == p_.workspace.ownPid()) return;
    frontApp = front;
    const QString& id = front->bundleId;
    const bool browser = rules::isBrowser(id);

    if (!browser) {
        frontHost.reset();
        if (!rules_.isOn(id, std::nullopt)) {
            why(QStringLiteral("off in ") + id);
            forgetField();
            return;
        }
    }

    ax::prime(p_.ax, primed, *front);

    const Element appEl = p_.ax.application(front->pid);
    const auto el =
        appEl ? ax::elementAttr(p_.ax, appEl, QStringLiteral("AXFocusedUIElement")) : std::nullopt;
    std::optional<QString> text;
    std::optional<Range> selection;
    if (el && ax::isTextField(p_.ax, *el)) {
        text = ax::stringAttr(p_.ax, *el, QStringLiteral("AXValue"));
        if (text) selection = ax::selectedRange(p_.ax, *el);
    }
    if (!text || !selection) {
        why(QStringLiteral("no text field in ") + id);
        forgetField();
        return;
    }

    if (browser) {
        // The page's address is read once per focused element, not on every tick.
        if (!hostEl || !p_.ax.same(*hostEl, *el)) {
            hostEl = *el;
            frontHost = ax::pageHost(p_.ax, *el);
        }
    }

    if (!rules_.isOn(id, frontHost)) {
        why(QStringLiteral("off on ") + (frontHost ? *frontHost : id));
        forgetField();
        return;
    }

    // A text read no newer than the last one shares its buffer: no need to compare a long
    // document unit by unit on every tick. An equal text read again takes the place of the
    // old one for the same reason.
    const bool sameText = text->size() == lastText.size() &&
                          (text->constData() == lastText.constData() || *text == lastText);
    if (sameText) lastText = *text;
    const bool unchanged = sameText && lastEl && p_.ax.same(*lastEl, *el);
    if (!unchanged) {
        lastText = *text;
        lastEl = *el;
        lastChange = p_.clock.now();
        wakeIn(glimmo::pauseShort);
        why(QStringLiteral("typing"));
        clearShown();
        claude.warmUp();
        // A paste of our own rewrite, or typing back to the text in flight, keeps the request.
        if (!(claude.pendingText && *claude.pendingText == *text)) cancel();
        return;
    }

    if (const auto marked = ax::markedRange(p_.ax, *el); marked && marked->length > 0) {
        why(QStringLiteral("composing"));
        clearShown();
        return;
    }

    if (replies)
        keepReplies(*el, *selection);
    else
        decide(*text, *selection, *el, *front, appEl);
}

}  // namespace engine
