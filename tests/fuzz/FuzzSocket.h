#pragma once

#include "tests/fuzz/FuzzInput.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

namespace quillbrook {

/// A place in the file system where a peer that says anything listens.
class FuzzSocket {
public:
    FuzzSocket()
    {
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        require(mkdtemp(folder.data()) != nullptr);
        std::ranges::copy(path(), name.sun_path);
        require(bind(listener, reinterpret_cast<const sockaddr*>(&name), sizeof name) == 0);
        require(listen(listener, 5) == 0);
    }

    ~FuzzSocket()
    {
        close(listener);
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    FuzzSocket(const FuzzSocket&) = delete;
    FuzzSocket& operator=(const FuzzSocket&) = delete;

    std::string path() const { return folder + "/socket"; }

    /// Whoever has connected, waiting for that.
    int accept() const { return ::accept(listener, nullptr, nullptr); }

    /// Says something short to somebody who was accepted, and nothing more.
    static void sayAndEnd(int peer, std::string_view bytes)
    {
        constexpr std::size_t kMost = 64 * 1024; // what is taken without a reader
        send(peer, bytes.data(), std::min(bytes.size(), kMost), MSG_NOSIGNAL);
        shutdown(peer, SHUT_WR);
    }

private:
    std::string folder = std::filesystem::temp_directory_path() / "quillbrook-fuzz-XXXXXX";
    int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

} // namespace quillbrook
