#pragma once
// platform::KeyTap through the compositor companion: the compositor takes Tab, Esc, Up and Down
// before any native window sees them, for as long as keys are wanted, and a key the engine
// does not use is handed back to go on to the window. Works for every toolkit alike (GTK 4
// forwards no keys to the accessibility bus, so without it Esc and the arrows are lost there).

#include <QObject>

#include "platform/Keyboard.h"

namespace linuxdesk {

class Companion;

class CompanionKeyTap : public QObject, public platform::KeyTap {
public:
    explicit CompanionKeyTap(Companion& companion);
    bool install(Handler handler) override;
    void setWanted(bool wanted) override;

private:
    void pressed(const QString& key);

    Companion& companion_;
    Handler handler_;
};

}  // namespace linuxdesk
