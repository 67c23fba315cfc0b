#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quillbrook {

/// The end of a conversation with a program of this machine. Each step waits for one second at
/// most, counted by the kernel, and then fails. Any thread, one at a time.
class LocalSocket {
public:
    LocalSocket() = default;
    ~LocalSocket();

    LocalSocket(const LocalSocket&) = delete;
    LocalSocket& operator=(const LocalSocket&) = delete;

    /// Connects to whoever listens at a path, or at a name that is no file. At most once.
    bool connectTo(std::string_view path, bool isAbstract);

    /// Whether somebody listens there and takes in nobody more.
    bool isKeptWaiting() const { return keptWaiting; }

    bool send(std::string_view bytes) const;

    /// The next `count` bytes, all of them.
    std::optional<std::string> receive(std::size_t count) const;

private:
    int socket = -1;
    bool keptWaiting = false;
};

} // namespace quillbrook
