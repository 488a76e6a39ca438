#pragma once
// The engine: polls the focused text box of the frontmost application, decides when to ask
// Claude, holds what is on screen, takes Tab/Esc/arrows while something is shown, applies what
// the user accepts and drafts replies. Everything runs on the main thread.

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>
#include <memory>
#include <optional>
#include <set>

#include "claude/Exchange.h"
#include "engine/Target.h"
#include "main/DebugTrace.h"
#include "overlay/Bubble.h"
#include "platform/Platform.h"

namespace rules {
class AppRules;
}

namespace engine {

class Glimmo : public QObject {
    Q_OBJECT
public:
    Glimmo(platform::Platform& platform, rules::AppRules& rules, QObject* parent = nullptr);
    ~Glimmo() override;

    void start();
    void tick();
    void cancel();
    void clearShown();
    void why(const QString& note);

    // Keyboard tap.
    void installTap();
    bool handleKey(int code, quint64 flags);

    // Applying.
    void apply();
    void paste(const QString& text);
    void postKey(int code, quint64 flags);
    void copyFallback(const Target& target);

    // Replies.
    void insertReply(int index);

    bool claudeTrouble() const { return claude.claudeTrouble(); }
    qint64 generation() const { return claude.generation(); }

    // The engine's state. Read by the menu (frontApp, frontHost) and by tests.
    std::unique_ptr<overlay::Bubble> bubble;
    std::optional<platform::RunningApp> frontApp;
    std::optional<QString> frontHost;
    std::optional<platform::Element> hostEl;
    QString lastText;
    std::optional<platform::Element> lastEl;
    double lastChange = 0;
    QHash<QString, QString> cache;  // paragraph -> rewrite, or "=" for no change
    QSet<QString> dismissed;
    std::optional<Target> shown;
    bool streaming = false;
    std::optional<Replies> replies;
    bool draftingReplies = false;
    std::optional<QString> draftingKey;
    QHash<QString, QStringList> replyCache;
    QSet<QString> dismissedReplies;
    bool tabWhileStreaming = false;
    std::set<qint64> primed;
    bool tap = false;
    bool tapFailed = false;
    claude::Exchange claude;  // the waiting process, the request in flight, generation, trouble

private:
    void forgetField();
    void decide(const QString& text, platform::Range selection, const platform::Element& el,
                const platform::RunningApp& app, const platform::Element& appEl);
    void showSuggestion(const Target& target, qint64 caret);
    bool stillCurrent(const QString& text, qint64 caret, const platform::Element& el);
    void askRewrite(const QString& text, qint64 caret, const platform::Element& el,
                    const platform::Range& range, const QString& paragraph);

    void draftReplies(const platform::RunningApp& app, const platform::Element& appEl,
                      const platform::Element& el, const QString& text, platform::Range selection);
    void keepReplies(const platform::Element& el, platform::Range selection);
    void showReplyList();
    void onDraftPartial(const QString& partial, const QString& text, platform::Range selection,
                        const platform::Element& el, const QString& key, platform::Rect caret);
    void onDraftDone(const QString& answer, const QString& text, platform::Range selection,
                     const platform::Element& el, const QString& key, platform::Rect caret);

    void later(double seconds, std::function<void()> action);
    // Starts the poll again once no clipboard restore waits.
    void resumePolling();
    void hideBubble();
    void syncKeys();
    void wakeIn(double seconds);
    void tickIfPolling();

    platform::Platform& p_;
    rules::AppRules& rules_;
    glimmo::DebugTrace trace_;
    QTimer timer_;
    QTimer wake_;  // the end of the pause
    bool wantsKeys_ = false;
};

}  // namespace engine
