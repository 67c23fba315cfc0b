#pragma once

namespace quillbrook {

/// The memory that the process holds and nothing needs while no window is open. Main thread only.
class IdleMemory {
public:
    virtual ~IdleMemory() = default;

    /// Gives it back to the system, which takes some milliseconds. Linux: freed blocks and the
    /// pages of font files, which are read again when text is next drawn; macOS: nothing, as the
    /// system takes it by itself.
    virtual void giveBack() = 0;
};

} // namespace quillbrook
