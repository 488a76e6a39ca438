#include "platform/fake/Keyboard.h"

#include "platform/Keys.h"

namespace fake {

using namespace platform;

void Keyboard::post(int code, quint64 flags) {
    posted_.push_back({code, flags});
    apply(code, flags);
}

void Keyboard::apply(int code, quint64 flags) {
    auto* app = workspace_.frontApp();
    auto field = app ? app->focusedField() : nullptr;
    if (!field) return;
    const quint64 mods = flags & flag::Modifiers;
    if (mods == flag::Command && code == key::V) {
        if (auto text = clipboard_.text()) field->insert(*text);
    } else if (mods == flag::Command && code == key::A) {
        field->selectAll();
    } else if (mods == flag::Option && code == key::Up) {
        field->paragraphUp();
    } else if (mods == flag::Option && code == key::Down) {
        field->paragraphDown(false);
    } else if (mods == (flag::Option | flag::Shift) && code == key::Down) {
        field->paragraphDown(true);
    } else if (mods == 0 && code == key::Right) {
        field->right();
    } else if (mods == 0 && code == key::ForwardDelete) {
        field->deleteForward();
    } else if (mods == 0 && code == key::Tab) {
        field->insert(QStringLiteral("\t"));
    }
}

void Keyboard::type(const QString& text) {
    auto* app = workspace_.frontApp();
    if (auto field = app ? app->focusedField() : nullptr) field->insert(text);
}

}  // namespace fake
