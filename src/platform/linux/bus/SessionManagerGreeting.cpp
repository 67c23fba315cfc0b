#include "platform/linux/bus/SessionManagerGreeting.h"

#include "platform/linux/bus/LocalSocket.h"

#include <bit>
#include <cstddef>
#include <string>

namespace quillbrook {

namespace {

constexpr std::size_t kGreetingSize = 8;

/// What both sides say first: the order of bytes in their numbers.
std::string greeting()
{
    constexpr char kByteOrderMessage = 1;
    constexpr char kOurOrder = std::endian::native == std::endian::little ? 0 : 1;
    std::string message(kGreetingSize, '\0');
    message[1] = kByteOrderMessage;
    message[2] = kOurOrder;
    return message;
}

/// The part of "local/host:path" or "unix/host:path" behind the host; empty for other machines'.
std::string_view localPath(std::string_view networkId)
{
    const bool isLocal = networkId.starts_with("local/") || networkId.starts_with("unix/");
    const auto colon = networkId.find(':');
    return isLocal && colon != std::string_view::npos ? networkId.substr(colon + 1)
                                                      : std::string_view();
}

} // namespace

bool isSessionManagerAnswering(std::string_view networkIds)
{
    while (!networkIds.empty()) {
        const auto comma = networkIds.find(',');
        std::string_view path = localPath(networkIds.substr(0, comma));
        networkIds.remove_prefix(comma == std::string_view::npos ? networkIds.size() : comma + 1);
        const bool isAbstract = path.starts_with('@');
        if (isAbstract) {
            path.remove_prefix(1);
        }
        LocalSocket socket;
        if (!path.empty() && socket.connectTo(path, isAbstract)) {
            return socket.send(greeting()) && socket.receive(kGreetingSize);
        }
    }
    return true;
}

} // namespace quillbrook
