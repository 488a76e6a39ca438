#pragma once
// Applying to a native Wayland window without the clipboard. The engine selects the paragraph,
// writes the rewrite to the clipboard and presses Ctrl+V; no synthetic key reaches a native
// window, and GTK 4 does not even take a selection (setting one times out). So for such a
// window the selection is only kept here, the text to paste is held here, and the "paste"
// replaces the kept range through the text box's EditableText interface. The user's
// clipboard is never touched.

#include <QElapsedTimer>
#include <QString>
#include <optional>

#include "platform/Ax.h"

namespace linuxdesk {

class AtspiAx;
class NativeRoute;

class NativeEdit {
public:
    NativeEdit(AtspiAx& ax, NativeRoute& route) : ax_(ax), route_(route) {}

    // A selection asked for; true when the range lies within the element's text.
    bool select(const platform::Element& element, const platform::Range& range);
    // The kept selection of that element, while fresh.
    std::optional<platform::Range> selection(const platform::Element& element);
    // The text the next paste puts in.
    void hold(const QString& text) { held_ = text; }
    // A synthetic key press: Ctrl+V pastes the held text, Ctrl+A selects all; others are
    // dropped (nothing can type into a native window without asking the user).
    void post(int code, quint64 flags);

private:
    struct Kept {
        platform::Element element;
        platform::Range range;
        QElapsedTimer age;
    };
    std::optional<Kept> fresh();
    void paste();

    AtspiAx& ax_;
    NativeRoute& route_;
    std::optional<Kept> kept_;
    std::optional<QString> held_;
};

}  // namespace linuxdesk
