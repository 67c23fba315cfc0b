#pragma once

#include <string_view>

namespace quillbrook {

/// Whether the X display of that name, as in $DISPLAY, is reached through the network, as one that
/// a remote login forwards is.
bool isDisplayOnNetwork(std::string_view display);

/// Whether a message bus of these addresses, as in $DBUS_SESSION_BUS_ADDRESS, may be reached
/// through the network.
bool isBusOnNetwork(std::string_view addresses);

} // namespace quillbrook
