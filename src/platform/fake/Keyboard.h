#pragma once
// The scripted desktop's keyboard. Every post is recorded, then applied to the focused text box
// of the frontmost application:
//   Command-V    pastes the clipboard's text (Clipboard::text) over the selection
//   Command-A    selects all
//   Option-Up    to the start of the paragraph (of the previous one when already there)
//   Option-Down  to the end of the paragraph (of the next one when already there)
//   Shift-Option-Down  extends the selection to the end of the paragraph
//   Right        collapses a selection to its end, else moves one code point
//   Forward Delete     deletes the selection, else one code point
//   Tab          inserts "\t"
// Anything else changes nothing. Posts do not pass through the key tap.

#include <vector>

#include "platform/Keyboard.h"
#include "platform/fake/Clipboard.h"
#include "platform/fake/Workspace.h"

namespace fake {

class Keyboard : public platform::Keyboard {
public:
    struct Press {
        int code = 0;
        quint64 flags = 0;
        friend bool operator==(const Press&, const Press&) = default;
    };

    Keyboard(Workspace& workspace, Clipboard& clipboard)
        : workspace_(workspace), clipboard_(clipboard) {}

    const std::vector<Press>& posted() const { return posted_; }
    void clearPosted() { posted_.clear(); }

    // Applies a key to the focused text box without recording it (what the user types).
    void apply(int code, quint64 flags);
    // Types text at the caret of the focused text box, replacing the selection.
    void type(const QString& text);

    // platform::Keyboard
    void post(int code, quint64 flags) override;

private:
    Workspace& workspace_;
    Clipboard& clipboard_;
    std::vector<Press> posted_;
};

}  // namespace fake
