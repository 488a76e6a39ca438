#pragma once
// Key codes and modifier flags in the engine's vocabulary; backends map them to real keys.

#include <QtGlobal>

namespace platform {

namespace key {
constexpr int A = 0;
constexpr int V = 9;
constexpr int Tab = 48;
constexpr int Esc = 53;
constexpr int ForwardDelete = 117;
constexpr int Right = 124;
constexpr int Down = 125;
constexpr int Up = 126;
}  // namespace key

namespace flag {
constexpr quint64 Shift = 0x20000;
constexpr quint64 Control = 0x40000;
constexpr quint64 Option = 0x80000;
constexpr quint64 Command = 0x100000;
// A key pressed with any of these is never the engine's.
constexpr quint64 Modifiers = Shift | Control | Option | Command;
}  // namespace flag

}  // namespace platform
