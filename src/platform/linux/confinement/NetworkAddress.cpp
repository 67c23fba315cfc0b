#include "platform/linux/confinement/NetworkAddress.h"

#include <algorithm>

namespace quillbrook {

bool isDisplayOnNetwork(std::string_view display)
{
    constexpr std::string_view kUnix = "unix";
    if (display.starts_with('/')) {
        return false; // the path of a socket
    }
    const auto colon = display.rfind(':');
    if (colon == std::string_view::npos) {
        return false; // no display at all
    }
    const std::string_view place = display.substr(0, colon);
    const auto slash = place.rfind('/');
    if (slash == std::string_view::npos) {
        return !place.empty() && place != kUnix;
    }
    const std::string_view host = place.substr(slash + 1);
    return place.substr(0, slash) != kUnix && !host.empty() && host != kUnix;
}

bool isBusOnNetwork(std::string_view addresses)
{
    while (!addresses.empty()) {
        const auto end = std::min(addresses.find(';'), addresses.size());
        const std::string_view transport = addresses.substr(0, std::min(addresses.find(':'), end));
        if (transport == "tcp" || transport == "nonce-tcp") {
            return true;
        }
        addresses.remove_prefix(std::min(end + 1, addresses.size()));
    }
    return false;
}

} // namespace quillbrook
