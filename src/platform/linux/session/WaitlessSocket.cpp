#include "platform/linux/session/WaitlessSocket.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>

namespace quillbrook {

int connectWithoutWaiting(std::string_view path)
{
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof name.sun_path) {
        return -1;
    }
    std::ranges::copy(path, name.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket >= 0
        && connect(socket, reinterpret_cast<const sockaddr*>(&name), sizeof name) != 0) {
        close(socket);
        return -1;
    }
    return socket;
}

} // namespace quillbrook
