#pragma once

namespace quillbrook {

/// Plays event sounds on a thread of its own, as a sound server may let its clients wait.
///
/// Requests and answers go through a pair of sockets, so that the thread shares nothing with the
/// program, and one that hangs in a server that doesn't answer can be left behind. Each request is
/// a byte, an index into `kEventSounds`, and each answer one, 1 where the sound plays.
class CanberraThread {
public:
    CanberraThread();

    /// Ends the thread, but waits no longer than half a second for that.
    ~CanberraThread();

    CanberraThread(const CanberraThread&) = delete;
    CanberraThread& operator=(const CanberraThread&) = delete;

    /// The socket to be written and read; -1 when there is no thread.
    int socket() const { return ours; }

private:
    int ours = -1;
};

/// The event sounds, by their names in the sound naming convention.
inline constexpr const char* kEventSounds[] = {"bell", "message"};

} // namespace quillbrook
