#pragma once
// The floating panel at the caret: one suggestion (BubbleView) or a list of reply drafts
// (ReplyView). It never takes focus and never activates Glimmo.

#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "platform/Geometry.h"
#include "platform/Screens.h"

namespace overlay {

inline const QString defaultHint = QStringLiteral("**Tab** to use · keep typing to ignore");
inline const QString replyHint =
    QStringLiteral("**↑ ↓** to choose · **Tab** to insert · **Esc** to hide");

// What the panel holds now, for the engine's tests and the end-to-end checks.
struct Shown {
    enum class Kind { Nothing, Suggestion, Replies };
    Kind kind = Kind::Nothing;
    QString text;
    QString hint;
    QStringList options;
    int selected = 0;
    bool more = false;
    platform::Rect frame;  // the panel's frame, desktop coordinates
};

class BubblePanel;

class Bubble {
public:
    explicit Bubble(platform::Screens& screens);
    ~Bubble();

    void show(const QString& text, const QString& hint, const platform::Rect& caret,
              std::function<void()> onApply);
    void showReplies(const QStringList& options, int selected, bool more,
                     const platform::Rect& caret, std::function<void(int)> onPick);
    void hide();
    bool visible() const;

    const Shown& shown() const;
    // A click on the bubble (row -1) or on a reply row, as the user's mouse would do it.
    void click(int row = -1);

private:
    // Puts view, already filled, next to caret and records what is shown; hides the panel
    // when there is no screen to put it on.
    void place(QWidget& view, Shown next, const platform::Rect& caret);

    platform::Screens& screens_;
    std::unique_ptr<BubblePanel> panel_;
    Shown shown_;
    std::function<void()> onApply_;
    std::function<void(int)> onPick_;
};

}  // namespace overlay
