#pragma once

#include <xcb/xcb.h>

#include <bitset>
#include <cstdint>

namespace quillbrook {

class X11Connection;

/// The keys that are modifiers on this keyboard. A key code that comes from the server is held
/// against them, and goes no further.
class ModifierKeys {
public:
    /// Follows the keyboard's mapping from now on. Lives as long as the connection.
    explicit ModifierKeys(X11Connection& x11);

    ModifierKeys(const ModifierKeys&) = delete;
    ModifierKeys& operator=(const ModifierKeys&) = delete;

    bool contain(std::uint32_t keyCode) const
    {
        return keyCode < keys.size() && keys.test(keyCode);
    }

private:
    void followKeyboardExtension();
    void read();

    X11Connection& x11;
    std::uint8_t xkbEvent = 0; // of the keyboard extension, 0 where there is none
    std::bitset<256> keys{};
};

} // namespace quillbrook
