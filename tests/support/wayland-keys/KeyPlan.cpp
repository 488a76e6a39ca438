#include "KeyPlan.h"

#include <QRegularExpression>
#include <QStringList>
#include <map>

namespace waylandkeys {

namespace {

constexpr quint32 kShift = 0xffe1, kControl = 0xffe3, kReturn = 0xff0d, kTab = 0xff09;

const std::map<QString, quint32>& namedKeys() {
    static const std::map<QString, quint32> keys = {
        {"BackSpace", 0xff08}, {"Tab", kTab},          {"Return", kReturn},
        {"Escape", 0xff1b},    {"Delete", 0xffff},     {"Home", 0xff50},
        {"Left", 0xff51},      {"Up", 0xff52},         {"Right", 0xff53},
        {"Down", 0xff54},      {"Page_Up", 0xff55},    {"Page_Down", 0xff56},
        {"End", 0xff57},       {"Insert", 0xff63},     {"space", 0x20},
        {"shift", kShift},     {"Shift_L", kShift},    {"ctrl", kControl},
        {"Control_L", kControl}, {"alt", 0xffe9},      {"Alt_L", 0xffe9},
        {"super", 0xffeb},     {"Super_L", 0xffeb},
    };
    return keys;
}

std::optional<quint32> keysymOf(const QString& name) {
    const auto& keys = namedKeys();
    if (auto it = keys.find(name); it != keys.end()) return it->second;
    if (name.size() == 1 && name[0].unicode() > 0x20 && name[0].unicode() < 0x7f)
        return name[0].unicode();
    // F1 ... F12
    if (name.size() >= 2 && name[0] == 'F') {
        bool ok = false;
        const int n = name.mid(1).toInt(&ok);
        if (ok && n >= 1 && n <= 12) return 0xffbe + n - 1;
    }
    return std::nullopt;
}

void tap(KeyEvents& out, quint32 keysym) {
    out.push_back({keysym, true});
    out.push_back({keysym, false});
}

}  // namespace

KeyEvents eventsForText(const QString& text) {
    KeyEvents out;
    for (const char32_t c : text.toUcs4()) {
        if (c == '\n')
            tap(out, kReturn);
        else if (c == '\t')
            tap(out, kTab);
        else if (c >= 0x20 && c < 0x7f)
            tap(out, c);
        else {
            out.push_back({kControl, true});
            out.push_back({kShift, true});
            tap(out, 'u');
            out.push_back({kShift, false});
            out.push_back({kControl, false});
            for (const QChar digit : QString::number(quint32(c), 16)) tap(out, digit.unicode());
            tap(out, ' ');
        }
    }
    return out;
}

std::optional<KeyEvents> eventsForKeys(const QString& keys) {
    KeyEvents out;
    for (const QString& combo : keys.split(QRegularExpression("\\s+"), Qt::SkipEmptyParts)) {
        std::vector<quint32> held;
        for (const QString& name : combo.split('+')) {
            const auto keysym = keysymOf(name);
            if (!keysym) return std::nullopt;
            held.push_back(*keysym);
        }
        for (const quint32 k : held) out.push_back({k, true});
        for (auto it = held.rbegin(); it != held.rend(); ++it) out.push_back({*it, false});
    }
    return out;
}

}  // namespace waylandkeys
