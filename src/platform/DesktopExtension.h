#pragma once

#include <cstdint>
#include <functional>

namespace quillbrook {

/// An extension of ours that some desktops need to tell the application in front and to show our
/// text in the panel. The desktop runs it when the user agrees. Main thread only.
class DesktopExtension {
public:
    enum class State : std::uint8_t {
        notNeeded, ///< this desktop takes none
        missing, ///< it isn't installed
        needsLogin, ///< it is installed, and found at the next login
        off, ///< the desktop waits for `enable`
        allOff, ///< as `off`, and the user has switched all extensions off besides
        on,
        broken, ///< it fails in this version of the desktop
    };

    virtual ~DesktopExtension() = default;

    virtual State state() const = 0;

    /// Asks the desktop to run it, now and in later sessions.
    virtual void enable() = 0;

    /// `body` runs after each change of the state.
    virtual void whenChanged(std::function<void()> body) = 0;
};

} // namespace quillbrook
