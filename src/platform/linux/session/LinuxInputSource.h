#pragma once
// platform::InputSource: the input method framework's current engine (Fcitx 5, then IBus)
// when one runs, else the active XKB keyboard layout.

#include <QElapsedTimer>
#include <QStringList>

#include "platform/InputSource.h"

namespace linuxdesk {

class LinuxInputSource : public platform::InputSource {
public:
    QStringList languages() override;

    // "zh_CN" -> "zh-CN"; a layout name ("us", "cn", "de") -> its language; empty if unknown.
    static QString languageOfLocale(const QString& locale);
    static QString languageOfLayout(const QString& layout);

private:
    QStringList query();
    QStringList last_;
    QElapsedTimer age_;
};

}  // namespace linuxdesk
