#include "platform/linux/bus/LocalSocket.h"

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace quillbrook {

namespace {

constexpr timeval kLimit{.tv_sec = 1, .tv_usec = 0};

} // namespace

LocalSocket::~LocalSocket()
{
    if (socket >= 0) {
        close(socket);
    }
}

bool LocalSocket::connectTo(std::string_view path, bool isAbstract)
{
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    const std::size_t begin = isAbstract ? 1 : 0;
    if (path.size() + 1 > sizeof name.sun_path) {
        return false;
    }
    std::ranges::copy(path, name.sun_path + begin);
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size() + 1);
    socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0) {
        return false;
    }
    // The limit for sending holds for the connecting too, where a queue of others is full.
    setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &kLimit, sizeof kLimit);
    setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &kLimit, sizeof kLimit);
    if (connect(socket, reinterpret_cast<const sockaddr*>(&name), size) == 0) {
        return true;
    }
    keptWaiting = errno == EAGAIN;
    close(socket);
    socket = -1;
    return false;
}

bool LocalSocket::send(std::string_view bytes) const
{
    const auto sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    return sent >= 0 && static_cast<std::size_t>(sent) == bytes.size();
}

std::optional<std::string> LocalSocket::receive(std::size_t count) const
{
    std::string bytes(count, '\0');
    const auto received = recv(socket, bytes.data(), count, MSG_WAITALL);
    if (received < 0 || static_cast<std::size_t>(received) != count) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace quillbrook
