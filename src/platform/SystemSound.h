#pragma once

#include <functional>
#include <string_view>

namespace quillbrook {

/// The short sounds of the desktop. Main thread only; nothing here waits for the sound server.
class SystemSound {
public:
    using Answer = std::function<void(bool isThere)>;

    virtual ~SystemSound() = default;

    /// Plays the system sound of that name and tells, once `play` has returned, whether there is
    /// such a sound and something to play it on. macOS: a named `NSSound`; Linux: the nearest of
    /// the sound theme, through libcanberra. The answer may never come.
    virtual void play(std::string_view name, Answer answer) = 0;

    /// macOS: `NSBeep`; Linux: the bell of the X server.
    virtual void beep() = 0;
};

} // namespace quillbrook
