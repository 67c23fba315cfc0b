#pragma once

#include <cstdint>
#include <string_view>

namespace quillbrook {

/// Carries the user's wish to see a window of ours to those who decide about windows. Main thread
/// only.
class WindowActivation {
public:
    virtual ~WindowActivation() = default;

    /// Asks to bring the window before all others and to give it the keys, wherever it is: below
    /// others, minimised or on another workspace. `window` is the system's number of it;
    /// `startupId` what the desktop told the launch that wants it, empty without one. False where
    /// nobody can be asked: then the toolkit's own way is left. macOS: always false.
    virtual bool bring(std::uint64_t window, std::string_view startupId) = 0;
};

} // namespace quillbrook
