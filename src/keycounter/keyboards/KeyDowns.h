#pragma once

#include <linux/input.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace quillbrook {

/// Whether a key-down of this code counts: a key that an X server would know as well, and no
/// modifier. Behind the last of these come the buttons of mice and joysticks.
constexpr bool isCountedKey(unsigned code)
{
    constexpr unsigned kLastKey = 247; // an X server adds 8 to reach its own 255
    switch (code) {
    case KEY_RESERVED:
    case KEY_LEFTSHIFT:
    case KEY_RIGHTSHIFT:
    case KEY_LEFTCTRL:
    case KEY_RIGHTCTRL:
    case KEY_LEFTALT:
    case KEY_RIGHTALT:
    case KEY_LEFTMETA:
    case KEY_RIGHTMETA:
    case KEY_CAPSLOCK:
    case KEY_NUMLOCK:
        return false;
    default:
        return code <= kLastKey;
    }
}

/// Counts the key-downs in the bytes of one keyboard, which may come in pieces of any size. Each
/// key code is looked at once, and forgotten.
class KeyDowns {
public:
    /// How many keys went down in these bytes, and in an event that they complete: neither
    /// modifiers nor repeats, nor what came after a loss of events until the next whole report.
    std::uint64_t countIn(std::span<const std::byte> bytes);

private:
    bool isCountedKeyDown(const input_event& event);

    std::array<std::byte, sizeof(input_event)> torn{}; // an event that has come in part
    std::size_t tornSize = 0;
    bool hasLostEvents = false;
};

} // namespace quillbrook
